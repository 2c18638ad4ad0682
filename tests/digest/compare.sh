#!/bin/sh
# Holds the digests of all operations to the committed ones: a line that differs names the operation whose bits moved.
#
#   compare.sh PROGRAM [--update]
#
# PROGRAM is corvex_digest, with its emulator before it if it needs one. --update writes the committed list anew; a
# change of bits is a breaking change, so the changelog says why. It also writes the list of what rests on the sine,
# cosine or arc cosine of the C library; that one is compared by scripts/bits alone, since machines may differ.
set -eu

folder=$(dirname -- "$(readlink -f -- "$0")")
committed=$folder/digests.txt
update=
for last; do :; done
if [ "$last" = --update ]; then update=1; fi

found=$(mktemp)
trap 'rm -f "$found" "$found.differences"' EXIT
# Word splitting is meant here: an emulator and its options come before the program.
# shellcheck disable=SC2086
${1} >"$found"

if [ -n "$update" ]; then
    cat "$found" >"$committed"
    # shellcheck disable=SC2086
    ${1} --trigonometric >"$folder/trigonometric.txt"
    echo "$(wc -l <"$committed") digests written"
    exit 0
fi

if diff "$committed" "$found" >"$found.differences"; then
    echo "$(wc -l <"$committed") digests, all as committed"
    exit 0
fi
awk '
    /^</ { was[$2] = $3 }
    /^>/ { is[$2] = $3 }
    END {
        for (name in was)
            if (name in is) print "moved:   " name; else print "missing: " name
        for (name in is) if (!(name in was)) print "new:     " name
    }' "$found.differences" | sort
exit 1
