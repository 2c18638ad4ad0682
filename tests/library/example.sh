#!/bin/sh
# The example draws the outlines it ships with, tells where it does not understand one, and can make them anew.
#
#   example.sh OFFSET_OUTLINE MAKE_OUTLINES DATA_FOLDER
set -eu
example=$1
make=$2
data=$3
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
cd "$folder"

fail() {
    echo "$*"
    exit 1
}

"$example" "$data/airfoil_cw.txt" 2 -1 -400 --thin 0.01 -o airfoil.svg >table
grep -qE '^ +\+2 .* clockwise .* true$' table || fail 'no offset by 2 in the table'
grep -qE '^ +-400 .* false$' table || fail 'no failed offset by -400 in the table'
[ "$(grep -c '<path fill="[^"]*" stroke="#[^"]*" stroke-width="[^"]*" stroke-linejoin' airfoil.svg)" -eq 3 ] ||
    fail 'the picture does not hold the outline and two offsets'

printf '0 0 # a corner\n\n1 0\n1 one\n' >broken.txt
status=0
"$example" broken.txt 1 2>message || status=$?
[ "$status" -eq 2 ] || fail "status $status for a broken outline"
grep -qF 'broken.txt:4: two numbers expected, found "1 one"' message || fail "unclear: $(cat message)"

mkdir made
"$make" made
for file in made/*; do
    cmp "$file" "$data/$(basename "$file")"
done
