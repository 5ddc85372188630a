# Completion of kalmoctl for bash. A test holds it to the program's own table of commands.

_kalmoctl()
{
    local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]}
    local options='--port --storage --log --yes -y --json --quiet -q --help -h --version'
    local words= files= index
    local -a given=() # what stands ahead of the cursor and is neither an option nor its value

    for ((index = 1; index < COMP_CWORD; ++index)); do
        case ${COMP_WORDS[index]} in
            --port | --storage | --log | --output | -o) ((++index)) ;;
            -*) ;;
            *) given+=("${COMP_WORDS[index]}") ;;
        esac
    done

    COMPREPLY=()
    case $previous in
        --port) files=devices ;;
        --storage) files=folders ;;
        --log | --output | -o) files=all ;;
        *)
            case ${given[*]} in
                '') words='ports find status clock phonebook providers ringtones' ;;
                clock) words='set' ;;
                phonebook | providers) words='read write' ;;
                ringtones) words='set' ;;
                'ringtones set') words='external internal appointment alarm' ;;
                'ringtones set '*)
                    case ${#given[@]} in
                        3) words='1 2 3 4 5 6 7 8 9 10' ;;
                        4) words='1 2 3 4 5 6 rising' ;;
                    esac
                    ;;
                'phonebook read' | 'providers read') options+=' --output -o' ;;
                'phonebook write') options+=' --dry-run' files='tel|json' ;;
                'providers write') options+=' --dry-run' files='prv|json' ;;
                'phonebook write '* | 'providers write '*) options+=' --dry-run' ;;
            esac
            ;;
    esac

    if [[ $current == -* ]]; then
        mapfile -t COMPREPLY < <(compgen -W "$options" -- "$current")
        return
    fi
    mapfile -t COMPREPLY < <(compgen -W "$words" -- "$current")
    [[ -n $files ]] || return
    compopt -o filenames 2>/dev/null # outside of a completion, as in a test, there is nothing to set
    case $files in
        devices) mapfile -t -O ${#COMPREPLY[@]} COMPREPLY < <(compgen -G "${current:-/dev/tty}*" | grep -E '/tty(USB|ACM|S)|rfcomm|serial') ;;
        folders) mapfile -t -O ${#COMPREPLY[@]} COMPREPLY < <(compgen -d -- "$current") ;;
        all) mapfile -t -O ${#COMPREPLY[@]} COMPREPLY < <(compgen -f -- "$current") ;;
        *) mapfile -t -O ${#COMPREPLY[@]} COMPREPLY < <(
            compgen -d -- "$current"
            compgen -f -- "$current" | grep -Ei "\.($files)\$"
        ) ;;
    esac
}

complete -F _kalmoctl kalmoctl
