#!/bin/sh
# The gallery draws every picture that its page shows, and nothing in them is without a place.
#
#   gallery.sh GALLERY
set -eu
gallery=$1
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
cd "$folder"

fail() {
    echo "$*"
    exit 1
}

"$gallery" made/here >page
[ "$(cat page)" = made/here/gallery.html ] || fail "the page is not named: $(cat page)"
cd made/here
sed -n 's/.*<img src="\([^"]*\)".*/\1/p' gallery.html | sort >shown
for picture in *.svg; do echo "$picture"; done | sort >drawn
[ "$(wc -l <shown)" -ge 20 ] || fail 'the page shows too few pictures'
cmp shown drawn || fail 'the pictures shown are not those drawn, each once'
for picture in *.svg; do
    [ "$(tail -n 1 "$picture")" = '</svg>' ] || fail "$picture is cut short"
    grep -qE '<(path|circle) ' "$picture" || fail "$picture is empty"
    # Not a number, in whatever spelling, or infinite.
    ! grep -nE '[" MLZ]-?(nan|inf)' "$picture" || fail "$picture has a place that is none"
done

status=0
"$gallery" one two 2>message || status=$?
[ "$status" -eq 2 ] || fail "status $status for two folders"
