#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# The context-menu entries: placed, run as the file managers run them, removed again.
#   check_file_manager_entries.sh PACKAGING
set -eu
packaging=$1
home=$(mktemp -d)
trap 'rm -rf "$home"' EXIT
export HOME=$home XDG_DATA_HOME=$home/data XDG_CONFIG_HOME=$home/config
fail() { echo "$1"; exit 1; }

program=$home/bin/stowpocket
mkdir "$home/bin"
printf '#!/bin/sh\nprintf "%%s|" "$@" >"%s/said"\n' "$home" >"$program"
chmod 755 "$program"

entries=$packaging/file-managers/add-to-shelf-entries
for unusable in '' relative '/with space' '/a|b' '/a&b'; do
    "$entries" install "$unusable" 2>"$home/message" && fail "took the program name '$unusable'"
    [ -s "$home/message" ] || fail "refused '$unusable' without a word"
done
[ ! -e "$home/data" ] || fail "left something behind after refusing"

"$entries" install "$program"
mapfile -t placed < <(find "$home/data" "$home/config" -type f | sort)
[ "${#placed[@]}" = 6 ] || fail "placed ${#placed[@]} entries"
for entry in "${placed[@]}"; do
    grep -qE "^(Exec=|exec )$program add -- (%F|\"\\\$@\")$" "$entry" || fail "$entry does not run the program"
    ! grep -q '@' <<<"$(grep -v '"\$@"' "$entry")" || fail "$entry has a gap"
done
(cd /tmp && "$home/config/caja/scripts/Add to Shelf" 'a b' -c "d\"\$(e)")
# shellcheck disable=SC2016  # the text is to come as it is
[ "$(cat "$home/said")" = 'add|--|a b|-c|d"$(e)|' ] || fail "the script said $(cat "$home/said")"

"$entries" remove
[ -z "$(find "$home/data" "$home/config" -type f)" ] || fail "left an entry behind"
