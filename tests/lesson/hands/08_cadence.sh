# shellcheck shell=bash
# Five minutes of production.

reference() {
    good_base
    good_base
    good_base
}

# Thinks for half a minute before each base, and for a minute below the press.
trop_lent() {
    for _ in 1 2; do
        pass 30
        next_base_to_zone_1
        glue
        zone_1_to_2
        take_a_part
        put_it_down
        zone_2_to_3
        give DESP=1
        pass 60
        give DESP=0 MONP=1
        await ph=1
        give MONP=0
        let_it_leave
    done
}

# Checks the dispenser before the first base comes.
colle_essayee_a_vide() {
    give DEPOSE=1
    pass 1
    give DEPOSE=0
    reference
}

# Forgets the glue of the second base.
un_support_sans_colle() {
    good_base
    next_base_to_zone_1
    finish_the_base
    good_base
    good_base
}
