# shellcheck shell=bash
# A first command: the drawer out and in.

out() {
    give SORT=1
    await ts=1
}

reference() {
    out
    give SORT=0
    pass 1
    give RENT=1
    await te=1
    give RENT=0
}

# Waits for the drawer to come back by itself.
sort_reste_a_1() {
    out
    pass 30
    give_up
}

# Does not take SORT back before RENT; finds out.
les_deux_ensemble() {
    out
    give RENT=1
    pass 3
    give RENT=0 SORT=0
    pass 1
    give RENT=1
    await te=1
    give RENT=0
}

tiroir_laisse_dehors() {
    out
    give SORT=0
    pass 10
    give_up
}
