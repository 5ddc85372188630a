# Completion of kalmoctl for bash. A test holds it to the program's own table of commands.

_kalmoctl()
{
    local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]}
    local options='--port --storage --log --yes -y --json --quiet -q --help -h --version'
    local words= files= index
    local importValues='@(--for|--against|--separator|--quote|--reading|--encoding|--name|--number|--last-name|--first-name|--home|--mobile|--work|--email|--birthday|--time|--dates|--country|--outside-line|--outside-line-min|--numbers|--compose)'
    local importSwitches='--keep-country --drop-zero --skip-heading --base-letters --no-birthdays --own-birthdays --fill-names --existing-by-number --no-existing --all --shorten --skip-too-long'
    local importOptions="${importValues//[@()|]/ } $importSwitches"
    local -a given=() # what stands ahead of the cursor and is neither an option nor its value

    for ((index = 1; index < COMP_CWORD; ++index)); do
        case ${COMP_WORDS[index]} in
            --port | --storage | --log | --output | -o | --to | --trim | --quality | --family | --from | --columns | --rows | --replace | --template) ((++index)) ;;
            $importValues) ((++index)) ;;
            -*) ;;
            *) given+=("${COMP_WORDS[index]}") ;;
        esac
    done

    COMPREPLY=()
    case $previous in
        --port) files=devices ;;
        --storage) files=folders ;;
        --log | --output | -o) files=all ;;
        --to | --trim | --columns | --rows | --replace) ;;
        --quality) words='60 80 100' ;;
        --family) words='5 6 8 9 10 11 12 13' ;;
        --from) files='tel|prv|json|csv|vcf' ;;
        --template) files='html|htm' ;;
        --for) words='classic vcard' ;;
        --against) files='tel|csv|json' ;;
        --separator)
            words='comma semicolon tab'
            [[ ${given[*]} != *export* ]] || words+=' comma-quoted semicolon-quoted'
            ;;
        --reading) words='auto simple csv' ;;
        --encoding) words='auto ansi utf-8 utf-16' ;;
        --dates) words='day-first month-first' ;;
        $importValues) ;;
        *)
            case ${given[*]} in
                '') words='ports find status clock phonebook providers ringtones calendar notes areacodes files media history undo preview recover' ;;
                clock | ringtones | areacodes) words='set' ;;
                phonebook) words='read write import export add set delete' ;;
                providers) words='read write import export' ;;
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
                'files put'*) options+=' --to --convert --trim --quality' files=all ;;
                media) words='sound melody picture' ;;
                'media sound') options+=' --trim --force' files='wav|mp3' ;;
                'media sound '*) options+=' --trim --force' files=all ;;
                'media melody') options+=' --force' files='mid' ;;
                'media melody '*) options+=' --force' files=all ;;
                'media picture'*) options+=' --family --clip --quality --force' files=all ;;
                'files rm'*) options+=' --force' ;;
                'files attr '*) [[ ${#given[@]} != 3 ]] || words='ro rw' ;;
                'phonebook read' | 'providers read' | 'calendar read' | 'notes read') options+=' --output -o' ;;
                'phonebook write') options+=' --dry-run' files='tel|json|csv|vcf' ;;
                'providers write') options+=' --dry-run' files='prv|json' ;;
                'phonebook write '* | 'providers write '*) options+=' --dry-run' ;;
                preview*) options+=" $importOptions" files='csv|txt|tel|wab|vcf' ;;
                'phonebook import'* | 'providers import'*)
                    options+=" ${importOptions#*--against} --dry-run" files='csv|txt|tel|wab|vcf'
                    ;;
                'phonebook export' | 'providers export')
                    options+=' --from --columns --rows --no-header --empty-line --separator --replace --template --fixed-width --force'
                    files='csv|xlsx|docx|html|htm|vcf'
                    ;;
                'phonebook add') files='csv|json|vcf' ;;
                'phonebook set '*) [[ ${#given[@]} != 3 ]] || files='csv|json|vcf' ;;
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
