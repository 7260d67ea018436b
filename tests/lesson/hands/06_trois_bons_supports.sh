# shellcheck shell=bash
# Three bases, one after the other.

reference() {
    good_base
    good_base
    good_base
}

# Leaves the waiting belt on until the first base is at zone 1: others follow it, unglued.
deux_a_la_fois() {
    give BZ1=1
    await b1s=1
    give MT=0 MTA=1
    pass 4
    give MT=1
    await p1ok=1
    give MTA=0
    glue
    finish_the_base
    pass 10
    good_base
    good_base
    give_up
}

deux_seulement() {
    good_base
    good_base
    give_up
}

# Tries the press out before the first base comes.
presse_sur_rien() {
    give DESP=1
    await pb=1
    give DESP=0 MONP=1
    await ph=1
    give MONP=0
    reference
}
