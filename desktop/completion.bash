# shellcheck shell=bash
# Bash completion of quorin, zk4sim, quorin-io, quorin-lesson and quorin-modbus. What there is to complete is what a
# program's own --help says, so that nothing is missing here; names of signals and exercises are asked of the programs too.

# The program's options, each spelling a line.
_quorin_options() { # program
    "$1" --help 2>/dev/null | sed -nE 's/^  (-[^ ]*).*/\1/p' | tr ',' '\n'
}

# What follows an option, as the help writes it (FICHIER, S, csv|vcd, ...); nothing where nothing does.
_quorin_value_of() { # program option
    "$1" --help 2>/dev/null | sed -nE "s/^  (-[a-z],)?$2 ([^ ]+).*/\2/p"
}

# The program's commands, each a line.
_quorin_commands() { # program
    "$1" --help 2>/dev/null | sed -nE '/^Commandes:/,/^$/s/^  ([a-z]+) .*/\1/p'
}

_quorin_exercises() {
    quorin-lesson list 2>/dev/null | cut -f 1
}

# The inputs and outputs of the session that the command line names so far.
_quorin_signals() { # program word...
    local program=$1 ident=()
    shift
    case ${1:-} in --last | [0-9]*) ident=("$1") ;; esac
    "$program" "${ident[@]}" list 2>/dev/null | awk 'NF == 3 { print $2 }'
}

_quorin_words() { # word: the lines of the standard input that begin with it
    local line
    COMPREPLY=()
    while IFS= read -r line; do
        [[ $line != "$1"* ]] || COMPREPLY+=("$line")
    done
}

# Where this leaves nothing, the shell completes file names.
_quorin_value() { # word value
    case $2 in
        EXERCICE) _quorin_words "$1" < <(_quorin_exercises) ;;
        COMMANDE) _quorin_words "$1" < <(compgen -c -- "$1") ;;
        FICHIER | PROGRAMME) ;;
        CONDITION*) _quorin_words "$1" < <(_quorin_signals "${COMP_WORDS[@]:0:2}") ;;
        *'|'*) _quorin_words "$1" < <(tr '|' '\n' <<<"$2") ;;
        *) compopt -o nospace +o default 2>/dev/null ;; # a number, an address, a name: only its user knows
    esac
}

_quorin_command() { # program word: the arguments of the last command on the line, or the commands
    local command='' each commands
    mapfile -t commands < <(_quorin_commands "$1")
    for each in "${COMP_WORDS[@]:1:COMP_CWORD-1}"; do
        [[ " ${commands[*]} " != *" $each "* ]] || command=$each
    done
    case $command in
        '') _quorin_words "$2" < <(printf '%s\n' "${commands[@]}") ;;
        get | set | wait | expect | pulse | watch | fault | diagnose)
            _quorin_words "$2" < <(_quorin_signals "$1" "${COMP_WORDS[@]:1:1}") ;;
        show | mark) _quorin_words "$2" < <(_quorin_exercises) ;;
        desk) _quorin_words "$2" < <(printf '%s\n' dc= ac= atu=) ;;
    esac
}

_quorin() { # program word previous
    local value
    COMPREPLY=()
    case $3 in -*) value=$(_quorin_value_of "$1" "$3") ;; esac
    if [ -n "${value:-}" ]; then
        _quorin_value "$2" "$value"
    elif [[ $2 == -* ]]; then
        _quorin_words "$2" < <(_quorin_options "$1")
    else
        _quorin_command "$1" "$2"
    fi
}

# The panel has a command line of its own, with one dash.
_quorin_panel() { # program word previous
    COMPREPLY=()
    case $3 in -*) compopt +o default 2>/dev/null ;; *) _quorin_words "$2" <<<$'-automemlink\n-h' ;; esac
}

complete -o default -F _quorin_panel quorin
complete -o default -F _quorin zk4sim quorin-io quorin-lesson quorin-modbus
