# Completion for bash. What may stand at a place is asked of the tool's --help, and so is always what
# the installed tool knows.

# Reads a help text: the choices behind the option $1, otherwise the commands, or where a word $2 that
# begins with a hyphen is asked for, the options.
_tarvo_choices() {
    awk -v previous="$1" -v word="$2" '
        match($0, /--[a-z]+ [^ ]+/) && /^ +(-h,)?--/ {
            split(substr($0, RSTART, RLENGTH), option, " ")
            if (option[1] == previous) {
                gsub(/\|/, "\n", option[2])
                values = option[2] ~ /\n/ ? option[2] : ""
                found = 1
            }
        }
        /^Subcommands:/ { commands = 1; next }
        /^[^ ]|^$/ { commands = 0 }
        commands && word !~ /^-/ { names = names $1 "\n" }
        word ~ /^-/ && match($0, /^ +(-h,)?--[a-z]+/) {
            name = substr($0, RSTART, RLENGTH)
            sub(/.*--/, "--", name)
            names = names name "\n"
        }
        END { printf "%s", found ? values : names }'
}

_tarvo() {
    local word=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]}
    local before=() each help
    for each in "${COMP_WORDS[@]:1:COMP_CWORD-1}"; do
        [[ $each == [-=]* ]] || before+=("$each")
    done
    # Of --option=value bash makes three words.
    if [[ $word == = ]]; then
        word=
    elif [[ $previous == = ]]; then
        previous=${COMP_WORDS[COMP_CWORD - 2]}
    fi
    help=$("$1" "${before[@]}" --help 2>/dev/null) || return 0
    mapfile -t COMPREPLY < <(compgen -W "$(_tarvo_choices "$previous" "$word" <<<"$help")" -- "$word")
}

# Where nothing is known, it completes names of files.
complete -o default -F _tarvo tarvo
