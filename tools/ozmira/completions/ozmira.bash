# Completion for bash.

# Folders, drawings, and files with the further extensions.
_ozmira_files() {
    local IFS=$'\n' extension
    compopt -o filenames 2>/dev/null
    mapfile -t COMPREPLY < <(compgen -d -- "$1"; for extension in '[sS][vV][gG]' '[sS][vV][gG][zZ]' "${@:2}"; do
        compgen -f -X "!*.$extension" -- "$1"
    done)
}

_ozmira_words() {
    mapfile -t COMPREPLY < <(compgen -W "$1" -- "$2")
}

_ozmira() {
    local word=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]} command=${COMP_WORDS[1]}
    COMPREPLY=()
    if ((COMP_CWORD == 1)); then
        _ozmira_words 'render check conform report catalogue diff info dump --help --version' "$word"
        return
    fi
    if [[ $command == render || $command == conform || $command == report || $command == catalogue || $command == diff ]]; then
        case $previous in
        -o | --output | --depfile)
            compopt -o filenames 2>/dev/null
            mapfile -t COMPREPLY < <(compgen -f -- "$word")
            return
            ;;
        --scale) _ozmira_words '1 2 3 1,2 1,2,3' "$word"; return ;;
        --fill) _ozmira_words 'black white gray red green blue steelblue none' "$word"; return ;;
        --decimals) _ozmira_words '0 1 2 3 4 5' "$word"; return ;;
        -j | --jobs | --title | --threshold | --timeout | --width | --height) return ;;
        esac
    fi
    case $command:$word in
    render:-*)
        _ozmira_words '-o --output --width --height --scale --fill --debug-frames --timeout -j --jobs --conform --strict --dry-run --depfile -q --quiet -h --help' \
            "$word"
        ;;
    check:-*) _ozmira_words '--json --sarif --github --rules -h --help' "$word" ;;
    conform:-*)
        _ozmira_words '-o --output --in-place --dry-run --decimals --outline-strokes --lossy -j --jobs -q --quiet -h --help' \
            "$word"
        ;;
    report:-*)
        _ozmira_words '-o --output --width --height --scale --fill --title --conform --timeout -j --jobs -q --quiet -h --help' \
            "$word"
        ;;
    catalogue:-*)
        _ozmira_words '-o --output --width --height --template --vector --namespace --prune --dry-run --timeout -j --jobs -q --quiet -h --help' \
            "$word"
        ;;
    diff:-*)
        _ozmira_words '-o --output --threshold --width --height --scale --json --timeout -j --jobs -q --quiet -h --help' "$word"
        ;;
    info:-* | dump:-*) _ozmira_words '--json -h --help' "$word" ;;
    diff:*) _ozmira_files "$word" png ;;
    render:* | check:* | conform:* | report:* | catalogue:* | info:* | dump:*) _ozmira_files "$word" ;;
    esac
}

complete -F _ozmira ozmira
