# shellcheck shell=bash
# What hands do at the station: give a command, wait for a sensor, count seconds. For tests/lesson/play.

exact=no
quorin-io status | grep -q '^etat=pause$' && exact=yes

# A person sees, decides, and clicks.
click_s=0.8

# give NAME=VALUE...: commands, each with a click of its own.
give() {
    local command
    if [ "$exact" = no ]; then
        quorin-io set "$@"
        return
    fi
    for command in "$@"; do
        quorin-io step "$click_s"
        quorin-io set "$command"
    done
}

# await CONDITION...: until all hold at once; a person looks for a minute at most.
await() {
    local looks=0
    if [ "$exact" = no ]; then
        quorin-io wait "$@" --timeout 60
        return
    fi
    until quorin-io expect "$@" 2>/dev/null; do
        looks=$((looks + 1))
        if [ "$looks" -gt 1200 ] || ! quorin-io step 0.05; then return; fi
    done
}

simulated_ms() { quorin-io status | sed -n 's/^secondes=\([0-9]*\)\.\(...\)$/\1\2/p'; }

# pass S: so many simulated seconds, whole ones.
pass() {
    local now begin
    if [ "$exact" = yes ]; then
        quorin-io step "$1"
        return
    fi
    begin=$(simulated_ms)
    while now=$(simulated_ms) && [ -n "$now" ] && [ $((10#$now - 10#$begin)) -lt $(($1 * 1000)) ]; do
        sleep 0.01
    done
}

# quickly COMMAND...: what a person does in time, whatever the speed. A session that runs is stepped meanwhile.
quickly() {
    local before=$exact
    [ "$before" = yes ] || quorin-io pause
    exact=yes
    "$@"
    exact=$before
    [ "$before" = yes ] || quorin-io resume
}

# double_click NAME: at 1 for less than half a second.
double_click() {
    quorin-io set "$1=1"
    quorin-io step 0.4
    quorin-io set "$1=0"
}

push() { quorin-io desk "$1=1"; }
release() { quorin-io desk "$1=0"; }
answer() { quorin-io diagnose "$@"; }
give_up() { quorin-io end; }

# Until the exercise ends the session.
to_the_end() {
    if [ "$exact" = yes ]; then
        while quorin-io step 1; do :; done
    else
        quorin-io watch init >/dev/null
    fi 2>/dev/null
}

# A single base waits: nothing is in a hurry.
single_base_to_zone_1() {
    give BZ1=1
    await b1s=1
    give MT=1 MTA=1
    await p1ok=1
    give MTA=0
}

# Others wait behind it: they gather, and one steps over.
next_base_to_zone_1() {
    give BZ1=1
    await b1s=1
    give MT=0 MTA=1
    pass 4
    give MTA=0 MT=1
    quickly double_click MTA
    await p1ok=1
}

glue() {
    give DEPOSE=1
    await colle=1
    give DEPOSE=0
}

zone_1_to_2() {
    give BZ2=1
    await b2s=1
    give BZ1=0
    await p2ok=1
}

# The drawer out, and the cup down on its part.
reach_for_a_part() {
    await te=1 pp=1
    give SORT=1
    await ts=1
    give SORT=0 DESV=1
    await vb=1
}

take_a_part() {
    reach_for_a_part
    give ASPI=1
    await vide=1
    give DESV=0 MONV=1
    await vh=1
    give MONV=0 RENT=1
    await te=1
    give RENT=0
}

put_it_down() {
    give DESV=1
    await vb=1
    give ASPI=0
    await vide=0
    give DESV=0 MONV=1
    await vh=1
    give MONV=0
}

zone_2_to_3() {
    give BZ3=1
    await b3s=1
    give BZ2=0
    await p3ok=1
}

press() {
    give DESP=1
    await timer10_term=1
    give DESP=0 MONP=1
    await ph=1
    give MONP=0
}

let_it_leave() {
    give BZ3=0
    await p3ok=0
    pass 5
}

# From the glue on.
finish_the_base() {
    zone_1_to_2
    take_a_part
    put_it_down
    zone_2_to_3
    press
    let_it_leave
}

good_base() {
    next_base_to_zone_1
    glue
    finish_the_base
}

to_rest() {
    give MT=0
    await init=1
}
