# Completion for bash.

_ozmira_files() {
    local IFS=$'\n'
    compopt -o filenames 2>/dev/null
    mapfile -t COMPREPLY < <(compgen -d -- "$1"; compgen -f -X '!*.[sS][vV][gG]' -- "$1")
}

_ozmira_words() {
    mapfile -t COMPREPLY < <(compgen -W "$1" -- "$2")
}

_ozmira() {
    local word=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]} command=${COMP_WORDS[1]}
    COMPREPLY=()
    if ((COMP_CWORD == 1)); then
        _ozmira_words 'render check conform info dump --help --version' "$word"
        return
    fi
    if [[ $command == render || $command == conform ]]; then
        case $previous in
        -o | --output)
            compopt -o filenames 2>/dev/null
            mapfile -t COMPREPLY < <(compgen -f -- "$word")
            return
            ;;
        --scale) _ozmira_words '1 2 3 1,2 1,2,3' "$word"; return ;;
        --fill) _ozmira_words 'black white gray red green blue steelblue none' "$word"; return ;;
        --decimals) _ozmira_words '0 1 2 3 4 5' "$word"; return ;;
        -j | --jobs | --timeout | --width | --height) return ;;
        esac
    fi
    case $command:$word in
    render:-*)
        _ozmira_words '-o --output --width --height --scale --fill --debug-frames --timeout -j --jobs --conform --strict -q --quiet -h --help' \
            "$word"
        ;;
    check:-*) _ozmira_words '--json --sarif --github --rules -h --help' "$word" ;;
    conform:-*)
        _ozmira_words '-o --output --in-place --dry-run --decimals --outline-strokes --lossy -j --jobs -q --quiet -h --help' \
            "$word"
        ;;
    info:-* | dump:-*) _ozmira_words '--json -h --help' "$word" ;;
    render:* | check:* | conform:* | info:* | dump:*) _ozmira_files "$word" ;;
    esac
}

complete -F _ozmira ozmira
