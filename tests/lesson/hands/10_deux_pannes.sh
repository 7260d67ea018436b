# shellcheck shell=bash
# One thing after the other, forth and back; times tell.

# try COMMAND OPPOSITE
try() {
    give "$1=1"
    pass 3
    give "$1=0" "$2=1"
    pass 3
    give "$2=0"
}

try_all() {
    give BZ1=1 BZ2=1 BZ3=1
    pass 3
    give BZ1=0 BZ2=0 BZ3=0
    pass 3
    try SORT RENT
    try DESV MONV
    try DESP MONP
    pass 5
}

reference() {
    try_all
    answer BZ2=slow ts=late
}

une_panne_sur_deux() {
    try_all
    answer ts=late
}

# The blocker's sensor comes late because the blocker does.
capteur_au_lieu_du_bloqueur() {
    try_all
    answer b2s=late ts=late
}

# The drawer's sensor comes late though the drawer does not.
tiroir_au_lieu_du_capteur() {
    try_all
    answer BZ2=slow SORT=slow
}
