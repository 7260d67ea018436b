# Debian packages, by what needs them; sourced by run and check.

build_packages=(g++ cmake ninja-build libfltk1.3-dev libcli11-dev fonts-liberation)
display_packages=(xvfb openbox xdotool imagemagick x11-utils)
test_packages=(libgtest-dev libbenchmark-dev libxtst-dev locales procps util-linux
               poppler-utils mupdf-tools ghostscript qpdf man-db)

# Installs those of the named packages that are missing; says nothing when none is. Without the rights, prints the
# command to type and fails.
install_packages() {
    local missing=() package
    for package in "$@"; do
        dpkg-query -W -f='${db:Status-Status}' "$package" 2>/dev/null | grep -qx installed || missing+=("$package")
    done
    [ ${#missing[@]} -eq 0 ] && return 0

    local as_root=()
    if [ "$(id -u)" -ne 0 ]; then
        if ! command -v sudo >/dev/null || ! sudo -v; then
            printf 'These packages are missing, and installing them needs rights that you do not have here. Type, as root:\n' >&2
            printf '    apt-get install %s\n' "${missing[*]}" >&2
            return 1
        fi
        as_root=(sudo)
    fi
    echo "Installing: ${missing[*]}"
    local log
    log=$(mktemp)
    if ! { "${as_root[@]}" apt-get update -qq && "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
            apt-get install -y -qq --no-install-recommends "${missing[@]}"; } >"$log" 2>&1; then
        tail -n 20 "$log" >&2
        printf 'The installation failed. Type, as root:\n    apt-get install %s\n' "${missing[*]}" >&2
        rm -f "$log"
        return 1
    fi
    rm -f "$log"
}

# Configures and builds one preset; prints the compiler's words only when it fails or warns, and nothing at all when there
# is nothing to do.
build_preset() { # preset
    local preset=$1 log=build/$1.log
    [ -f "build/$preset/build.ninja" ] && ninja -C "build/$preset" -n 2>/dev/null | grep -q 'no work to do' && return
    mkdir -p build
    echo "Building ($preset)"
    if ! { cmake --preset "$preset" && cmake --build --preset "$preset"; } >"$log" 2>&1; then
        # A missing package is one line, which says what to install.
        { grep 'was not found: apt-get' "$log" || grep -E 'error|Error|FAILED' "$log"; } | head -n 20 >&2
        echo "The build failed; all it said is in $log" >&2
        return 1
    fi
    grep -E 'warning:' "$log" >&2 || true
}
