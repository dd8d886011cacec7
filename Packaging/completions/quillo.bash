# bash completion for quillo                               -*- shell-script -*-

# The identifiers in the library; each with a title would not fit in bash's list.
_quillo_artifacts() {
    "$1" "${@:2}" list 2>/dev/null | cut -f1
}

_quillo() {
    local cur prev words cword
    _init_completion || return

    local commands='app capture check copy doctor edit evidence list observe paste render show snapshot text trash'
    local i command='' library=()
    for ((i = 1; i < cword; i++)); do
        case ${words[i]} in
            --library) library=(--library "${words[++i]}") ;;
            --library=*) library=("${words[i]}") ;;
            -*) ;;
            *)
                command=${words[i]}
                break
                ;;
        esac
    done

    case $prev in
        --library)
            _filedir -d
            return
            ;;
        --composition)
            mapfile -t COMPREPLY < <(compgen -W \
                'image-then-text text-then-image single-item image-only text-only' -- "$cur")
            return
            ;;
        --pid)
            _pids
            return
            ;;
        --window | --delay | --title | --annotations) return ;;
    esac

    local options='--help --library'
    case $command in
        '') options+=' --version' ;;
        snapshot) options+=' --window' ;;
        capture) options+=' --window --delay --print' ;;
        observe) options+=' --no-application-root --no-inferred-actions' ;;
        list | show) options+=' --json' ;;
        edit) options+=' --title --annotations' ;;
        copy) options+=' --composition --background' ;;
        paste) options+=' --pid --delay' ;;
    esac
    if [[ $cur == -* ]]; then
        mapfile -t COMPREPLY < <(compgen -W "$options" -- "$cur")
        return
    fi

    case $command in
        '') mapfile -t COMPREPLY < <(compgen -W "$commands" -- "$cur") ;;
        check | copy | edit | paste | show | text | trash)
            mapfile -t COMPREPLY < <(compgen -W "$(_quillo_artifacts "${words[0]}" "${library[@]}")" -- "$cur")
            [[ ${#COMPREPLY[@]} -gt 0 ]] || _filedir -d
            ;;
        evidence)
            if [[ $prev == evidence ]]; then
                mapfile -t COMPREPLY < <(compgen -W 'encode decode' -- "$cur")
            else
                _filedir
            fi
            ;;
        observe | render) _filedir ;;
    esac
} &&
    complete -F _quillo quillo
