# shellcheck shell=bash
# One base at zone 2, and a part on it.

base_to_zone_2() {
    give BZ2=1
    await b2s=1
    give MT=1 MTA=1
    await p2ok=1
    pass 1
}

reference() {
    base_to_zone_2
    take_a_part
    put_it_down
}

# Lets the part go above the base.
piece_lachee_en_haut() {
    base_to_zone_2
    take_a_part
    give ASPI=0
    await vide=0
    pass 5
    give_up
}

# Calls the drawer in while the cup is still low in it; then goes on.
tiroir_bloque() {
    base_to_zone_2
    reach_for_a_part
    give ASPI=1
    await vide=1
    give RENT=1
    pass 2
    give DESV=0 MONV=1
    await te=1
    give RENT=0 MONV=0
    put_it_down
}

# Moves the cup onto the part and up again, without suction.
sans_aspirer() {
    base_to_zone_2
    reach_for_a_part
    give DESV=0 MONV=1
    await vh=1
    give ASPI=1
    pass 5
    give_up
}
