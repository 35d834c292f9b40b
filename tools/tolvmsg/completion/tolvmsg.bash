# bash completion for tolvmsg. Commands and options are taken from its --help.

_tolvmsg_commands() {
    "$1" --help 2>/dev/null | sed -n '/^Subcommands:/,/^$/s/^  \([a-z]\{1,\}\) .*/\1/p'
}

# The options of command $2, or of the program if it is empty.
_tolvmsg_options() {
    "$1" ${2:+"$2"} --help 2>/dev/null | grep -oE '^  (-[a-z],)?--[a-z-]+' | grep -oE -- '--[a-z-]+'
}

# The names without their family, since bash treats a colon as the end of a word.
_tolvmsg_classes() {
    "$1" list 2>/dev/null | sed -n 's/^[^ ]* *[^ ]* *[A-Za-z]*::\([A-Za-z]*\).*/\1/p'
}

_tolvmsg_families() {
    "$1" list 2>/dev/null | sed -n 's/^[^ ]* *[^ ]* *\([A-Za-z]*\)::.*/\1/p' | sort -u
}

_tolvmsg() {
    local program=$1 current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]}
    local command='' words='' i
    for ((i = 1; i < COMP_CWORD; ++i)); do
        if [[ ${COMP_WORDS[i]} != -* ]]; then
            command=${COMP_WORDS[i]}
            break
        fi
    done
    case $previous in
    --id) words=$(_tolvmsg_classes "$program") ;;
    --family) words=$(_tolvmsg_families "$program") ;;
    --format) words='csv raw' ;;
    --output | --key-file) ;; # a file
    --from | --to | --line | --path | --x | --size | --tolerance | --relative | --ignore | --max-line)
        compopt +o default 2>/dev/null
        return
        ;;
    *)
        if [[ $current == -* ]]; then
            words=$(_tolvmsg_options "$program" "$command")
        elif [[ -z $command ]]; then
            words=$(_tolvmsg_commands "$program")
        elif [[ $command == example || $command == schema ]]; then
            words=$(_tolvmsg_classes "$program")
        fi
        ;;
    esac
    # Without words, bash completes file names.
    mapfile -t COMPREPLY < <(compgen -W "$words" -- "$current")
}

complete -o default -F _tolvmsg tolvmsg
