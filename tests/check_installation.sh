#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# What `cmake --install` lays down, under a prefix that was not the configured one.
#   check_installation.sh BUILD_FOLDER
set -eu
build=$1
prefix=$(mktemp -d)
trap 'rm -rf "$prefix"' EXIT
share=$prefix/share
fail() { echo "$1"; exit 1; }
cmake --install "$build" --prefix "$prefix" >/dev/null

for entry in applications/com.example.stowpocket.desktop Thunar/sendto/stowpocket.desktop \
    file-manager/actions/stowpocket.desktop nemo/actions/stowpocket.nemo_action kio/servicemenus/stowpocket.desktop; do
    grep -q "^Exec=$prefix/bin/stowpocket " "$share/$entry" || fail "$entry does not start what was installed"
    ! grep -q @ "$share/$entry" || fail "$entry has a gap"
done
desktop-file-validate "$share/applications/com.example.stowpocket.desktop"
appstreamcli validate --no-net "$share/metainfo/com.example.stowpocket.metainfo.xml"

# Width and height stand at the 17th byte of a PNG file.
for side in 16 22 24 32 48 64 128 256; do
    icon=$share/icons/hicolor/${side}x$side/apps/com.example.stowpocket.png
    [ "$(od -An -tu4 --endian=big -j16 -N8 "$icon" | tr -s ' ')" = " $side $side" ] || fail "$icon has another size"
done
for file in icons/hicolor/scalable/apps/com.example.stowpocket.svg \
    icons/hicolor/symbolic/apps/com.example.stowpocket-symbolic.svg stowpocket/Info.plist doc/stowpocket/LICENSE \
    dbus-1/interfaces/com.example.stowpocket.Shelf1.xml; do
    [ -s "$share/$file" ] || fail "$file is missing"
done
warnings=$(MANROFFSEQ='' MANWIDTH=80 LC_ALL=C.UTF-8 man --warnings -E UTF-8 -l -Tutf8 -Z "$share/man/man1/stowpocket.1" 2>&1 >/dev/null)
[ -z "$warnings" ] || fail "$warnings"

# Whoever adds a verb or an option to the help adds it there too.
help=$("$prefix/bin/stowpocket" --help)
mapfile -t words < <(sed -n 's/^  \([a-z][a-z-]*\) .*/\1/p' <<<"$help"; grep -oE -- '(^| )(--[a-z][a-z-]*|-[a-z0-9])\>' <<<"$help" | tr -d ' ' | sort -u)
[ "${#words[@]}" -ge 13 ] || fail "the help names ${#words[@]} verbs and options"
for page in man/man1/stowpocket.1 bash-completion/completions/stowpocket zsh/site-functions/_stowpocket \
    fish/vendor_completions.d/stowpocket.fish; do
    for word in "${words[@]}"; do
        # A page has "\-" for a hyphen, and fish takes options without theirs.
        sed 's/\\-/-/g; s/ -l / --/g; s/ -s / -/g' "$share/$page" | grep -qE -e "(^|[^a-z-])$word([^a-z-]|\$)" || fail "$page does not know $word"
    done
done
bash -n "$share/bash-completion/completions/stowpocket"
zsh -n "$share/zsh/site-functions/_stowpocket"
fish -n "$share/fish/vendor_completions.d/stowpocket.fish"
