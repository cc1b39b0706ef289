#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# What an AppImage does with its contents: unpacked once, by two starts at a time too, kept while in use, removed after.
#   check_appimage_runtime.sh RUNTIME ASSEMBLE
set -eu
runtime=$1 assemble=$2
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cd "$work"
fail() { echo "$1"; exit 1; }
export XDG_CACHE_HOME=$work/cache SOURCE_DATE_EPOCH=1 LC_ALL=C.UTF-8
cache=$XDG_CACHE_HOME/stowpocket/AppImage
mkdir cache contents contents/folder
head -c 3000000 /dev/urandom >contents/folder/large
ln -s folder/large contents/link

# image NAME: an image that tells where it runs, with which words, and ends when it is told to
image() {
    cat >contents/AppRun <<END
#!/bin/sh
echo $1 "\$APPDIR" "\$APPIMAGE" "\$@" >>said
until [ -e go ] || [ ! -d contents ]; do sleep 0.02; done
END
    chmod 755 contents/AppRun
    "$assemble" "$runtime" contents "$1" "$1.AppImage"
}
folders() { find "$cache" -mindepth 1 -maxdepth 1 -type d | wc -l; }
wait_for() {
    for _ in $(seq 500); do
        "$@" && return
        sleep 0.02
    done
    fail "in vain: $*"
}
has_said() { [ "$(grep -c "$1" said 2>/dev/null)" = "$2" ]; }

image one
cp one.AppImage same.AppImage
image one
cmp one.AppImage same.AppImage || fail "the same contents made two images"

mkdir -m 700 "$XDG_CACHE_HOME/stowpocket" "$cache" "$cache/cut-off.new"
./one.AppImage 'a b' & first=$!
./one.AppImage 'a b' & second=$!
wait_for has_said "^one $cache/one-[0-9a-f]* $work/one.AppImage a b\$" 2
[ "$(folders)" = 1 ] || fail "unpacked into $(folders) folders: $(ls "$cache")"
diff -r --no-dereference contents "$cache"/one-* || fail "unpacked something else"

image two
./two.AppImage & third=$!
wait_for has_said '^two' 1
[ "$(folders)" = 2 ] || fail "a folder in use was removed"
touch go
wait "$first" "$second" "$third"
./two.AppImage
[ "$(folders)" = 1 ] || fail "an old version stays"

# A new version beside the one that it replaced. These images end without a word, as a program that crashes.
on_trial() {
    cp two.AppImage app.AppImage
    cp one.AppImage app.AppImage.old
    rm -f said .app.AppImage.started
}
on_trial
./app.AppImage list
./app.AppImage
wait_for has_said '^two' 2
./app.AppImage 'a b' 2>message
has_said '^one.* a b$' 1 || fail "a version that ended at once runs again: $(cat said)"
grep -q 'the one before it is back' message || fail "said: $(cat message)"
cmp app.AppImage one.AppImage || fail "something else was taken back"
[ ! -e app.AppImage.old ] || fail "the version before is there twice"
[ ! -e .app.AppImage.started ] || fail "the mark stays"
on_trial
rm go
./app.AppImage & first=$!
wait_for has_said '^two' 1
./app.AppImage & second=$!
wait_for has_said '^two' 2
touch go
wait "$first" "$second"
on_trial
ln -f app.AppImage app.AppImage.old
./app.AppImage
./app.AppImage 2>message
[ ! -s message ] || fail "the version in place was taken for a new one: $(cat message)"

rm -r "$cache"
sed -i -E 's/(two-[0-9a-f]{16}) 000/\1 999/' two.AppImage
! ./two.AppImage 2>message || fail "started without room"
grep -q 'no room for the 9990000[0-9]* MB' message || fail "said: $(cat message)"
[ "$(folders)" = 0 ] || fail "began without room"

chmod 777 "$cache"
! ./one.AppImage 2>message || fail "started where others may write"
grep -q 'others may write there' message || fail "said: $(cat message)"
chmod 700 "$cache"
truncate -s -1000000 one.AppImage
! ./one.AppImage 2>message || fail "started a part of an image"
grep -q 'the file is damaged' message || fail "said: $(cat message)"
[ "$(folders)" = 0 ] || fail "left a part of an image behind"
