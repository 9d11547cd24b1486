# Bash completion of boardctl: verbs, options, names of exported functions.
_boardctl() {
    local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]}
    local words=() i
    COMPREPLY=()
    case $previous in
        --board)
            mapfile -t COMPREPLY < <(compgen -d -- "$current")
            return
            ;;
        --host-library | --platform-library | --output)
            mapfile -t COMPREPLY < <(compgen -f -- "$current")
            return
            ;;
        call | --usage)
            mapfile -t COMPREPLY < <(compgen -W "--list --usage --help $(
                boardctl call --list 2>/dev/null | awk 'NR > 1 { print $1 }')" -- "$current")
            return
            ;;
    esac
    # The verb so far; options' values look like verbs to nobody but us.
    for ((i = 1; i < COMP_CWORD; i++)); do
        case ${COMP_WORDS[i]} in
            --board | --host-library | --platform-library) ((i++)) ;;
            -*) ;;
            *) words+=("${COMP_WORDS[i]}") ;;
        esac
    done
    # What the help of that verb lists: its verbs, and its options where one is begun.
    local help
    help=$(boardctl "${words[@]:0:2}" --help 2>/dev/null) ||
        help=$(boardctl "${words[@]:0:1}" --help 2>/dev/null) || return
    local verbs options
    verbs=$(awk '/^Subcommands:/ { on = 1; next } /^$/ { on = 0 } on && /^  [a-z]/ { print $1 }' <<<"$help")
    options=$(grep -oE -- '^  (-h,)?--[a-z-]+' <<<"$help" | grep -oE -- '--[a-z-]+')
    options+=' --json --verbose --board --host-library --platform-library'
    if [[ $current == -* || -z $verbs ]]; then
        mapfile -t COMPREPLY < <(compgen -W "$options" -- "$current")
    else
        mapfile -t COMPREPLY < <(compgen -W "$verbs" -- "$current")
    fi
}
complete -F _boardctl boardctl
