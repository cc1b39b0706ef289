#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Which room may include which, as one list; what is not in it is refused.
#   check_arrows.sh SRC
set -euo pipefail
cd "$1"

# room: the rooms that it may include besides itself. The core comes first and has the standard library alone.
rooms='
foundation:
services: foundation
shelf: services foundation
intake: shelf services foundation
updates: services foundation
presentation: intake shelf updates services foundation
app: presentation intake shelf updates services foundation
cli: app presentation intake shelf updates services foundation
platform/posix: services foundation
platform/qt: presentation intake shelf updates services foundation
platform/macos: platform/posix presentation intake shelf updates services foundation
platform/linux/x11: platform/qt presentation services foundation
platform/linux/dbus:
platform/linux/files: platform/posix services foundation
platform/linux/preferences: platform/linux/files services foundation
platform/linux/pictures: platform/linux/dbus platform/linux/files platform/qt services foundation
platform/linux/appearance: platform/linux/dbus platform/linux/x11 platform/qt services foundation
platform/linux/session: platform/linux/dbus platform/linux/files services foundation
platform/linux/input: platform/linux/dbus platform/linux/x11 services foundation
platform/linux/hotkeys: platform/linux/dbus platform/linux/input platform/linux/x11 services foundation
platform/linux/quickdrop: platform/linux/x11 intake services foundation
platform/linux/drags: platform/linux/files platform/linux/x11 platform/qt intake services foundation
platform/linux/wayland:
platform/linux/tray: platform/linux/dbus platform/linux/drags platform/linux/wayland platform/linux/x11 platform/qt presentation intake services foundation
platform/linux/opening: platform/linux/dbus services foundation
platform/linux/updates: platform/linux/files platform/linux/preferences platform/linux/session updates services foundation
views/controls: platform/qt presentation services foundation
views/controls/macos: views/controls platform/macos
views/updates: views/controls presentation updates services foundation
views/shelf: views/controls platform/qt presentation shelf services foundation
views/settings: views/controls app presentation updates services foundation
views/onboarding: views/controls app presentation services foundation
views: views/controls views/updates views/shelf views/settings views/onboarding platform/qt services
main/linux: cli app presentation updates services foundation views views/controls views/shelf views/updates platform/posix platform/qt
    platform/linux/appearance platform/linux/dbus platform/linux/drags platform/linux/files platform/linux/hotkeys platform/linux/input
    platform/linux/opening platform/linux/pictures platform/linux/preferences platform/linux/quickdrop platform/linux/session
    platform/linux/tray platform/linux/updates platform/linux/x11
main/macos: app intake services foundation views platform/macos platform/posix platform/qt
'
core=' foundation services shelf intake updates presentation app cli '

check() {
    # shellcheck disable=SC2046  # no name of ours has a space
    awk -v rooms="$rooms" -v core="$core" '
        BEGIN {
            count = split(rooms, lines, "\n")
            for (i = 1; i <= count; ++i) {
                words = split(lines[i], word, " ")
                for (j = 1; j <= words; ++j) {
                    if (word[j] ~ /:$/) { room = substr(word[j], 1, length(word[j]) - 1); may[room, room] = 1 }
                    else may[room, word[j]] = 1
                }
            }
        }
        FNR == 1 { room = FILENAME; sub(/^\.\//, "", room); sub(/\/[^\/]*$/, "", room)
                   if (!((room, room) in may)) refuse("is in a room that is not on the list") }
        function refuse(why) { print FILENAME ": " why; refused = 1 }
        /^ *# *(include|import) *"/ {
            split($0, part, "\""); to = part[2]
            if (to ~ /\.moc$/) next
            if (!sub(/\/[^\/]*$/, "", to)) to = "(none)"
            if (!((room, to) in may)) refuse(room " may not include " part[2])
        }
        # Standard headers have no dot and no folder.
        index(core, " " room " ") && /^ *# *include *</ && (/<[^>]*[.\/][^>]*>/ || /<Q[A-Z]/) { refuse("includes " $0) }
        END { exit refused }' $(find . -name '*.h' -o -name '*.cpp' -o -name '*.mm')
}

check
# The guard itself: each of these is refused in a tree that has nothing else.
cd "$(mktemp -d)"
trap 'rm -rf "$PWD"' EXIT
try() {
    mkdir -p "${1%/*}"
    echo "#include $2" >"$1"
    ! check >/dev/null || { echo "not refused: $2 in $1"; exit 1; }
    rm "$1"
}
try shelf/ShelfManager.cpp '"platform/posix/FileProbe.h"'
try services/Preferences.cpp '"app/Settings.h"'
try foundation/UUID.cpp '<unistd.h>'
try elsewhere/File.cpp '<string>'
