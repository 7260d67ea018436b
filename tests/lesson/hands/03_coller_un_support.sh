# shellcheck shell=bash
# One base, glued at zone 1.

reference() {
    single_base_to_zone_1
    pass 1
    glue
}

# Opens the glue before the base is there.
colle_trop_tot() {
    give BZ1=1
    await b1s=1
    give MT=1 MTA=1 DEPOSE=1
    await p1ok=1
    await colle=1
    give DEPOSE=0
}

# The base goes through zone 1, and out.
bloqueur_oublie() {
    give MT=1 MTA=1
    pass 30
    give_up
}

colle_non_fermee() {
    single_base_to_zone_1
    pass 1
    give DEPOSE=1
    await colle=1
    pass 20
    give DEPOSE=0
}
