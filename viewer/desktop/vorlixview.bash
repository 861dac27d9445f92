# SPDX-License-Identifier: MIT
# Written by scripts/write-viewer-pages.
_vorlixview() {
    local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]}
    COMPREPLY=()
    case $previous in
    --format)
        mapfile -t COMPREPLY < <(compgen -W "auto text npy raw wav" -- "$current")
        return ;;
    --sample-type)
        mapfile -t COMPREPLY < <(compgen -W "float64 float32 int32 uint32 int16 uint16 int8 uint8" -- "$current")
        return ;;
    --decimal-point)
        mapfile -t COMPREPLY < <(compgen -W ". ," -- "$current")
        return ;;
    --column | --x-column | --separator | --skip-lines | --start | --step | --bin-width | --unit | --smooth | --range | --size)
        return ;;
    esac
    if [[ $current == -* ]]; then
        mapfile -t COMPREPLY < <(compgen -W "--column --x-column --format --sample-type --separator --decimal-point --skip-lines --follow --start --step --bin-width --unit --line --area --smooth --beneath --difference --log --dark --light --range --png --csv --size --no-settings -h --help -v --version" -- "$current")
    else
        compopt -o filenames
        mapfile -t COMPREPLY < <(compgen -f -- "$current")
    fi
}
complete -F _vorlixview vorlixview
