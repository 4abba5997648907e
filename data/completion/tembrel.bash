# Completion for bash. Asks the program itself, so it knows what that version can do.
_tembrel() {
    local word=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]} verb=run
    [[ ${COMP_WORDS[1]} == [a-z]* && COMP_CWORD -gt 1 ]] && verb=${COMP_WORDS[1]}
    case $previous in
    --program | --bank | --events | -o | --output)
        compopt -o filenames
        mapfile -t COMPREPLY < <(compgen -f -- "$word")
        return
        ;;
    --data)
        compopt -o filenames
        mapfile -t COMPREPLY < <(compgen -d -- "$word")
        return
        ;;
    esac
    if [[ $word == -* ]]; then
        mapfile -t COMPREPLY < <(compgen -W "$(tembrel "$verb" --help 2>/dev/null | grep -o -- '--[a-z-]*')" -- "$word")
    elif ((COMP_CWORD == 1)); then
        mapfile -t COMPREPLY < <(compgen -W "$(tembrel --help | sed -n '/^Subcommands:/,$s/^  \([a-z]\+\) .*/\1/p')" -- "$word")
    else
        compopt -o filenames
        mapfile -t COMPREPLY < <(compgen -f -- "$word")
    fi
}
complete -F _tembrel tembrel
