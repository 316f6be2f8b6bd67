# shellcheck shell=bash
# Completion of tessary(1) for bash. It never runs the program.

_tessary() {
    local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]}
    local verb=${COMP_WORDS[1]} words=
    local scopes='all recentlyUsed today last7Days last30Days favorites landscape portrait largeImages
        images textItems trash'
    local sorts='relevance newest oldest recentlyUsed fileSize'
    local verbs='toggle settings pause resume status search show copy paste import tag note favorite
        unfavorite pin unpin trash export restore purge usage watch recognize'
    COMPREPLY=()

    if ((COMP_CWORD == 1)); then
        mapfile -t COMPREPLY < <(compgen -W "$verbs --background --help --version -h -v" -- "$current")
        return
    fi
    case $verb:$previous in
        search:--scope) words=$scopes ;;
        search:--sort) words=$sorts ;;
        search:--limit | search:--offset) return ;;
        show:--output) _tessary_files -f; return ;;
        *)
            case $verb:$current in
                search:-*) words='--scope --sort --limit --offset --json --help' ;;
                show:-*) words='--output --json --help' ;;
                status:-* | usage:-*) words='--json --help' ;;
                purge:-*) words='--all --help' ;;
                recognize:-*) words='--fast --json --help' ;;
                -*) return ;;
                *:-*) words='--help' ;;
                import:* | recognize:*) _tessary_files -f; return ;;
                export:* | restore:*) _tessary_files -d; return ;;
                *) return ;;
            esac
            ;;
    esac
    mapfile -t COMPREPLY < <(compgen -W "$words" -- "$current")
}

_tessary_files() { # _tessary_files -f|-d: completes the names of files or of folders
    compopt -o filenames 2>/dev/null
    local IFS=$'\n'
    mapfile -t COMPREPLY < <(compgen "$1" -- "$current")
}

complete -F _tessary tessary
