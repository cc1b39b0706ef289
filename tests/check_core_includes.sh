#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# The core knows its own rooms and the standard library, and each room only those beneath it.
#   check_core_includes.sh SRC
set -u
cd "$1" || exit 2
failed=0

includes() { grep -HoE '^ *# *include *["<][^">]+[">]' "$@" | tr -d ' ' | sed 's/#include//'; }
refuse() {
    [ -z "$2" ] && return
    printf '%s:\n%s\n' "$1" "$2"
    failed=1
}

mapfile -t core < <(find 2>/dev/null foundation shelf intake updates presentation app cli platform -maxdepth 1 \
    \( -name '*.h' -o -name '*.cpp' \) ! -name StowpocketApp.cpp)
[ "${#core[@]}" -gt 20 ] || { echo "found only ${#core[@]} core files"; exit 2; }

# Standard headers have no dot and no folder, but for the C ones that the standard names with a leading c.
refuse "the core includes a header that is not the standard library's" \
    "$(includes "${core[@]}" | grep '<' | grep -E '<[^>]*[./][^>]*>|<Q[A-Z]')"
refuse "the core includes a platform's adapter" \
    "$(includes "${core[@]}" | grep -E '"(views|platform/(qt|linux|macos))/')"

# room: the rooms beneath it
while read -r room beneath; do
    mapfile -t files < <(find 2>/dev/null "$room" -maxdepth 1 \( -name '*.h' -o -name '*.cpp' \) ! -name StowpocketApp.cpp)
    [ "${#files[@]}" -gt 0 ] || continue
    refuse "$room includes a room that is not beneath it" \
        "$(includes "${files[@]}" | grep '"' | grep -vE "\"(${room}|${beneath// /|})/")"
done <<'ROOMS'
foundation foundation
platform foundation
shelf platform foundation
intake shelf platform foundation
updates platform foundation
presentation shelf intake updates platform foundation
app shelf intake updates platform foundation
cli app shelf intake updates platform foundation
ROOMS
exit $failed
