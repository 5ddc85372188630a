# Completion of kalmoctl for bash. A test holds it to the program's own table of commands.

_kalmoctl()
{
    local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]}
    local options='--port --storage --log --yes -y --json --quiet -q --help -h --version'
    local words= files= index
    local -a given=() # what stands ahead of the cursor and is neither an option nor its value

    for ((index = 1; index < COMP_CWORD; ++index)); do
        case ${COMP_WORDS[index]} in
            --port | --storage | --log | --output | -o | --to) ((++index)) ;;
            -*) ;;
            *) given+=("${COMP_WORDS[index]}") ;;
        esac
    done

    COMPREPLY=()
    case $previous in
        --port) files=devices ;;
        --storage) files=folders ;;
        --log | --output | -o) files=all ;;
        --to) ;;
        *)
            case ${given[*]} in
                '') words='ports find status clock phonebook providers ringtones calendar notes areacodes files history undo recover' ;;
                clock | ringtones | areacodes) words='set' ;;
                phonebook) words='read write add set delete' ;;
                providers) words='read write' ;;
                calendar | notes) words='read' ;;
                files) words='ls get put rm mkdir mv df attr' ;;
                'undo'*) options+=' --dry-run' ;;
                'ringtones set') words='external internal appointment alarm' ;;
                'ringtones set '*)
                    case ${#given[@]} in
                        3) words='1 2 3 4 5 6 7 8 9 10' ;;
                        4) words='1 2 3 4 5 6 rising' ;;
                    esac
                    ;;
                'files get'*) options+=' --output -o' ;;
                'files put'*) options+=' --to' files=all ;;
                'files rm'*) options+=' --force' ;;
                'files attr '*) [[ ${#given[@]} != 3 ]] || words='ro rw' ;;
                'phonebook read' | 'providers read' | 'calendar read' | 'notes read') options+=' --output -o' ;;
                'phonebook write') options+=' --dry-run' files='tel|json' ;;
                'providers write') options+=' --dry-run' files='prv|json' ;;
                'phonebook write '* | 'providers write '*) options+=' --dry-run' ;;
                'phonebook add') files='csv|json' ;;
                'phonebook set '*) [[ ${#given[@]} != 3 ]] || files='csv|json' ;;
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
