# shellcheck shell=bash
# The three blockers: out, the middle one in, all in.

out() {
    give BZ1=1 BZ2=1 BZ3=1
    await b1s=1 b2s=1 b3s=1
    pass 3
}

middle_one_in() {
    give BZ2=0
    await b2e=1
}

others_in() {
    give BZ1=0 BZ3=0
    await b1e=1 b3e=1
}

reference() {
    out
    middle_one_in
    others_in
}

mauvais_bloqueur() {
    out
    give BZ1=0
    await b1e=1
    pass 8
    give_up
}

tapis_en_marche() {
    give MT=1
    reference
}

trop_tard() {
    out
    pass 70
    middle_one_in
    others_in
}
