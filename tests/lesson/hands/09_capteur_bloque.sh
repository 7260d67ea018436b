# shellcheck shell=bash
# One thing after the other, forth and back; a look at each.

# try COMMAND OPPOSITE
try() {
    give "$1=1"
    pass 2
    give "$1=0" "$2=1"
    pass 2
    give "$2=0"
}

try_all() {
    give BZ1=1 BZ2=1 BZ3=1
    pass 2
    give BZ1=0 BZ2=0 BZ3=0
    try SORT RENT
    try DESV MONV
    try DESP MONP
    pass 5
}

reference() {
    try_all
    answer vb=stuck0
}

# Looks at the lamp only, not at the drawing.
actionneur_accuse() {
    try_all
    answer DESV=dead
}

mauvaise_valeur() {
    try_all
    answer vb=stuck1
}

sans_reponse() {
    try_all
    give_up
}
