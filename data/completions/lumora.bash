# Completes the commands of lumora in bash; the habits and chores are those of the running program.

# _lumora_add WORD...: those that begin with what is typed. Never by compgen -W, which would run what
# stands in an id.
_lumora_add() {
    local word
    for word in "$@"; do
        [[ $word != "$current"* ]] || COMPREPLY+=("$(printf '%q' "$word")")
    done
}

# _lumora_add_items habit|chore
_lumora_add_items() {
    local id
    while IFS=$'\t' read -r id _; do
        _lumora_add "$id"
    done < <("${COMP_WORDS[0]}" "$1" --list 2>/dev/null)
}

_lumora() {
    local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]}
    COMPREPLY=()
    if ((COMP_CWORD == 1)); then
        _lumora_add status agenda join capture habit chore toggle show hide settings refresh quit \
            check doctor --demo --help --version
        return
    fi
    case ${COMP_WORDS[1]}:$previous in
    status:--format) _lumora_add text json waybar polybar i3blocks i3status-rust ;;
    status:*) _lumora_add --follow --format ;;
    agenda:--format) _lumora_add text json ;;
    agenda:*) _lumora_add --format ;;
    habit:habit | chore:chore)
        _lumora_add_items "$previous"
        [[ $current != -* ]] || _lumora_add --list
        ;;
    doctor:doctor) _lumora_add --json ;;
    check:check)
        compopt -o filenames 2>/dev/null || true # which quotes them, and tells folders
        mapfile -t COMPREPLY < <(compgen -f -- "$current")
        ;;
    --demo:--scenario)
        _lumora_add busy empty quiet unauthorized flaky slow malformed html
        ;;
    --demo:--demo) _lumora_add --scenario ;;
    esac
}

complete -F _lumora lumora
