# shellcheck shell=bash
# A single base from its glue to its count.

reference() {
    single_base_to_zone_1
    glue
    finish_the_base
    to_rest
}

sans_colle() {
    single_base_to_zone_1
    finish_the_base
    to_rest
    give_up
}

# Shuts the glue off once the base is on its way.
colle_jusqu_au_depart() {
    single_base_to_zone_1
    give DEPOSE=1
    await colle=1
    give BZ2=1 BZ1=0
    pass 1
    give DEPOSE=0
    await p2ok=1
    finish_the_base
    to_rest
}

# Counts to six where it takes ten.
presse_trop_courte() {
    single_base_to_zone_1
    glue
    zone_1_to_2
    take_a_part
    put_it_down
    zone_2_to_3
    give DESP=1
    await pb=1
    pass 6
    give DESP=0 MONP=1
    await ph=1
    give MONP=0
    let_it_leave
    to_rest
    give_up
}
