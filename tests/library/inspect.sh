#!/bin/sh
# The example passes a good part and rejects a bad one, tells where it does not understand a file, and its data can be
# made anew.
#
#   inspect.sh INSPECT_PART MAKE_FLANGE DATA_FOLDER
set -eu
inspect=$1
make=$2
data=$3
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
cd "$folder"

fail() {
    echo "$*"
    exit 1
}

# Runs the example and compares its exit status.
expect() {
    expected=$1
    shift
    status=0
    "$inspect" "$@" >report 2>message || status=$?
    [ "$status" -eq "$expected" ] || fail "status $status, not $expected: $* $(cat message)"
}

expect 0 "$data/flange.txt" "$data/flange_a.txt"
[ "$(tail -n 1 report)" = 'IN TOLERANCE' ] || fail 'the good part is not passed'
# Beside the fits the robust ones are told where they differ, which is at the curve alone.
[ "$(grep -A 8 '^crest .* 7, control' report | grep -c '^ *robust ')" -eq 1 ] || fail 'no robust curve'
[ "$(grep -c '^ *robust ' report)" -eq 1 ] || fail 'another robust fit'
# A face touched along a line has some plane through it, but none that is told by the points.
grep -v '^face' "$data/flange_a.txt" >touched.txt
printf 'face %d 160 -36\n' 190 200 210 220 >>touched.txt
expect 1 "$data/flange.txt" touched.txt
grep -q '^ *robust *degenerate: the points leave the answer open$' report || fail 'a line is taken for a plane'
expect 1 "$data/flange.txt" "$data/flange_b.txt" -o flange.svg
[ "$(tail -n 1 report)" = 'OUT OF TOLERANCE: bolt4 position, crest position, crest form' ] || fail "$(tail -n 1 report)"
grep -q '>bolt4 OUT<' flange.svg || fail 'the picture does not mark the bad hole'
grep -q '>bolt3 ok<' flange.svg || fail 'the picture does not name the good hole'
expect 1 "$data/flange.txt" "$data/flange_a.txt" -o nowhere/flange.svg
grep -q 'nowhere/flange.svg: cannot be written' message || fail "unclear: $(cat message)"

# A line appended to a good file, and what is said of it.
refuse() {
    file=$1
    line=$2
    cp "$data/flange.txt" "$data/flange_a.txt" .
    printf '\n%s # odd\n' "$line" >>"$file.txt"
    expect 2 flange.txt flange_a.txt
    grep -qF "$file.txt:$(wc -l <"$file.txt"): $3, found \"$line # odd\"" message || fail "unclear: $(cat message)"
}
refuse flange 'datum D7 1 2' 'three coordinates expected'
refuse flange 'datum bore 1 2 3' 'a name not used before expected'
refuse flange 'feature hub cone 0 0 0' 'plane, line, circle, sphere or profile expected'
refuse flange 'feature hub plane 0 0 0 0 0 0' 'a direction should not be of length 0'
refuse flange 'feature hub line 0 0 0 1 0 0 size 1' 'form or position expected'
refuse flange 'feature hub sphere 0 0 0 8 form 0' 'a tolerance should be above 0'
refuse flange 'feature lip profile 4.5' '2 to 20 control points expected'
refuse flange 'point bore 1 2 3' 'the name of a profile above expected'
refuse flange 'unit mm inch' 'nothing more expected'
refuse flange_a 'bore 1 2 3x' 'three coordinates expected'
refuse flange_a 'hub 1 2 3' 'the name of a datum or feature of the part expected'
refuse flange_a 'D1 1 2 3' 'a datum is measured once'

# Files that lack something, and what is said of it.
lack() {
    expect 2 "$1" "$2"
    grep -qF "$3" message || fail "unclear: $(cat message)"
}
grep -v '^D6' "$data/flange_a.txt" >few.txt
lack "$data/flange.txt" few.txt 'few.txt: the datum D6 is missing'
grep -v '^bolt2' "$data/flange_a.txt" >few.txt
lack "$data/flange.txt" few.txt 'few.txt: bolt2: 0 points, a circle is judged by 4 at least'
grep -v '^datum D[456]' "$data/flange.txt" >flat.txt
lack flat.txt "$data/flange_a.txt" 'flat.txt: four datum points are needed that do not lie in one plane'
awk '{ print $1, -$2, $3, $4 }' "$data/flange_a.txt" | grep -v '^#' >mirrored.txt
lack "$data/flange.txt" mirrored.txt 'the measured datum points are a mirror image of the drawn ones'

mkdir made
"$make" made
for file in made/*; do
    cmp "$file" "$data/$(basename "$file")"
done
