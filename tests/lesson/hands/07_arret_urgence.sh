# shellcheck shell=bash
# Emergency stop while the press comes down, and going on.

base_below_the_press() {
    give BZ3=1
    await b3s=1
    give MT=1 MTA=1
    await p3ok=1
    pass 1
}

stop_the_press() {
    give DESP=1
    await ph=0
    pass 1
    push atu
    pass 1
}

# Up once more, then pressed.
go_on() {
    pass 2
    give MONP=1
    await ph=1
    give MONP=0
    press
}

reference() {
    base_below_the_press
    quickly stop_the_press
    give DESP=0
    pass 1
    release atu
    go_on
}

# Pushes the stop once the press is low.
arret_trop_tard() {
    base_below_the_press
    give DESP=1
    await pb=1
    push atu
    pass 2
    give DESP=0
    release atu
    go_on
    give_up
}

# The press goes on by itself.
deverrouille_trop_tot() {
    base_below_the_press
    quickly stop_the_press
    release atu
    pass 4
    give DESP=0
    go_on
    give_up
}

# The press goes up by itself.
monp_pendant_l_arret() {
    base_below_the_press
    quickly stop_the_press
    give DESP=0 MONP=1
    pass 1
    release atu
    await ph=1
    give MONP=0
    press
    give_up
}
