# Completion of kzdraw for bash.
shopt -s extglob # for the patterns of names
_kzdraw() {
    local word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD - 1]} command=${COMP_WORDS[1]}
    local options files
    COMPREPLY=()
    if [ "$COMP_CWORD" -eq 1 ]; then
        mapfile -t COMPREPLY < <(compgen -W "info tools attributes select view render prefs script serve window
            --version --help -h" -- "$word")
        return
    fi
    case $command in
    info | tools | attributes) options="--json" files=svg ;;
    select) options="--similar-to --same-color-as --where --within --json" files=svg ;;
    view) options="--hide --show --only --except --output -o --size --background --json" files=svg ;;
    render) options="--output -o --size --area --background --json" files=svg ;;
    prefs) options="--reset --json" ;;
    script) files=any ;;
    window) files=svg ;;
    serve) options="--port --no-open" files=svg ;;
    *) return ;;
    esac
    case $before in
    -o | --output) files=any ;;
    --background) mapfile -t COMPREPLY < <(compgen -W "none white black" -- "$word") && return ;;
    --similar-to | --same-color-as | --where | --within | --hide | --show | --only | --except | --size | --area | --port)
        return
        ;;
    *)
        if [[ $word == -* ]]; then
            mapfile -t COMPREPLY < <(compgen -W "$options --help -h" -- "$word")
            return
        fi
        ;;
    esac
    compopt -o filenames 2>/dev/null
    case $files in
    svg) mapfile -t COMPREPLY < <(compgen -f -X '!*.@(svg|SVG|svgz|SVGZ)' -- "$word"; compgen -d -- "$word") ;;
    any) mapfile -t COMPREPLY < <(compgen -f -- "$word") ;;
    esac
}
complete -F _kzdraw kzdraw
