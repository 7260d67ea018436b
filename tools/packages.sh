# shellcheck shell=bash
# What building, the virtual display, the tests and continuous integration need; sourced by run, check and .ci/run.

# Who needs it, the Debian package, and what shows that the machine has it, wherever it comes from: a program of the
# PATH, a header of the compiler, a module of any python3 of the PATH, or a file.
packages='
build    g++               program  g++
build    cmake             program  cmake
build    ninja-build       program  ninja
build    libfltk1.3-dev    header   FL/forms.H
build    libcli11-dev      header   CLI/CLI.hpp
build    libtomlplusplus-dev  header   toml++/toml.h
build    libmd-dev         header   sha2.h
build    fonts-liberation  file     LiberationSans-Regular.ttf  /usr/share/fonts /usr/local/share/fonts
build    fonts-dejavu-core  file   DejaVuSans.ttf  /usr/share/fonts /usr/local/share/fonts
bridge   libmodbus-dev     header   modbus/modbus.h
display  xvfb              program  Xvfb
display  openbox           program  openbox
display  xdotool           program  xdotool
display  imagemagick       program  import
display  x11-utils         program  xprop
test     python3           program  python3
test     libgtest-dev      header   gtest/gtest.h
test     libbenchmark-dev  header   benchmark/benchmark.h
test     libxtst-dev       header   X11/extensions/XTest.h
test     locales           file     fr_FR  /usr/share/i18n/locales
test     procps            program  ps
test     util-linux        program  unshare
test     gtkwave           program  vcd2fst
test     sigrok-cli        program  sigrok-cli
test     poppler-utils     program  pdftotext
test     mupdf-tools       program  mutool
test     ghostscript       program  gs
test     qpdf              program  qpdf
test     man-db            program  man
test     doxygen           program  doxygen
test     mbpoll            program  mbpoll
test     python3-pymodbus  module   pymodbus
test     shellcheck        program  shellcheck
test     pkg-config        program  pkg-config
ci       clang             program  clang++
ci       libclang-rt-14-dev  file   libclang_rt.asan-*.a  /usr/lib/llvm-14/lib/clang
ci       llvm              program  llvm-symbolizer
ci       clang-format-14   program  clang-format-14
ci       clang-tidy-14     program  clang-tidy-14
package  dpkg-dev          program  dpkg-shlibdeps
package  file              program  file
package  lintian           program  lintian
package  desktop-file-utils  program  desktop-file-validate
'

# Whether the machine has a program, a header, a module, or a file of that name in one of the folders.
has() { # kind name folder...
    local kind=$1 name=$2 python
    shift 2
    case $kind in
        program) command -v "$name" >/dev/null ;;
        header) "${CXX:-c++}" -x c++ -std=c++20 -E -include "$name" /dev/null >/dev/null 2>&1 ;;
        module)
            while IFS= read -r python; do "$python" -c "import $name" 2>/dev/null && return; done < <(hash -r; type -aP python3)
            return 1
            ;;
        file) [ -n "$(find "$@" -name "$name" -print -quit 2>/dev/null)" ] ;;
    esac
}

# The packages of the named groups that bring something which the machine has not.
missing_packages() { # group...
    local group package kind name folders
    while read -r group package kind name folders; do
        case " $* " in *" $group "*) ;; *) continue ;; esac
        # shellcheck disable=SC2086 # the folders are words
        [ -z "$package" ] || has "$kind" "$name" $folders || echo "$package"
    done <<<"$packages"
}

# Installs the packages of the named groups that are missing; says nothing when none is. Without the means or the rights,
# says what is missing and fails.
install_packages() { # group...
    local missing as_root=() log
    mapfile -t missing < <(missing_packages "$@")
    [ ${#missing[@]} -eq 0 ] && return 0

    if ! command -v apt-get >/dev/null; then
        printf 'This is missing, by the names of the Debian packages that bring it: %s\n' "${missing[*]}" >&2
        return 1
    fi
    if [ "$(id -u)" -ne 0 ]; then
        if ! command -v sudo >/dev/null || ! { sudo -n true 2>/dev/null || sudo -v; }; then
            printf 'These packages are missing, and installing them needs rights that you do not have here. Type, as root:\n' >&2
            printf '    apt-get install %s\n' "${missing[*]}" >&2
            return 1
        fi
        as_root=(sudo)
    fi
    echo "Installing: ${missing[*]}"
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

# The same for what one can go on without: asks nobody for rights, and says in a line what is left out where it cannot be had.
install_if_possible() { # group, what is left out
    local missing
    mapfile -t missing < <(missing_packages "$1")
    [ ${#missing[@]} -eq 0 ] && return 0
    if command -v apt-get >/dev/null && { [ "$(id -u)" -eq 0 ] || sudo -n true 2>/dev/null; }; then
        install_packages "$1" 2>/dev/null && return 0
    fi
    echo "Going on without ${missing[*]}: $2"
}

# Whether a preset is configured, with libmodbus if the machine has it by now.
knows_the_libraries() { # preset
    [ -f "build/$1/build.ninja" ] && { grep -q quorin-modbus "build/$1/build.ninja" || ! has header modbus/modbus.h; }
}

# Configures one preset, with the words of QUORIN_CMAKE_OPTIONS as options, and builds it; prints the compiler's words only
# when it fails or warns, and nothing at all when there is nothing to do.
build_preset() { # preset
    local preset=$1 log=build/$1.log fresh=()
    # What was configured before knows nothing of another compiler or of options.
    [ -z "${QUORIN_CMAKE_OPTIONS:-}${CXX:-}" ] || fresh=(--fresh)
    [ "${#fresh[@]}" -eq 0 ] && knows_the_libraries "$preset" && ninja -C "build/$preset" -n 2>/dev/null | grep -q 'no work to do' && return
    mkdir -p build
    echo "Building ($preset)"
    # shellcheck disable=SC2086 # the options are words
    if ! { cmake "${fresh[@]}" --preset "$preset" ${QUORIN_CMAKE_OPTIONS:-} && LC_ALL=C.UTF-8 cmake --build --preset "$preset"; } >"$log" 2>&1; then
        # A missing package is one line, which says what to install.
        { grep 'was not found: apt-get' "$log" || grep -E 'error|Error|FAILED' "$log"; } | head -n 20 >&2
        echo "The build failed; all it said is in $log" >&2
        return 1
    fi
    grep -E 'warning:' "$log" >&2 || true
}
