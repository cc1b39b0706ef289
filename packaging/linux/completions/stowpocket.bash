# SPDX-License-Identifier: MIT
# shellcheck shell=bash
_stowpocket() {
    local cur prev words cword candidate
    _init_completion || return
    if [[ $cword -eq 1 ]]; then
        _filedir
        mapfile -t -O "${#COMPREPLY[@]}" COMPREPLY < <(
            compgen -W "add list remove clear undo copy paste open show toggle quick-drop -h --help --version" -- "$cur")
        return
    fi
    case ${words[1]} in
    list) mapfile -t COMPREPLY < <(compgen -W "-0 --format --json" -- "$cur") ;;
    remove | copy | open)
        # Names with escapes are printed the way the shell reads them.
        while IFS= read -r candidate; do
            [[ $candidate == \$* ]] || printf -v candidate %q "$candidate"
            [[ $candidate == "$cur"* ]] && COMPREPLY+=("$candidate")
        done < <(stowpocket list 2>/dev/null) ;;
    clear | undo | paste | show | toggle | quick-drop | -*) ;;
    *) _filedir ;;
    esac
} && complete -F _stowpocket stowpocket
