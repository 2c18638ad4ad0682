#!/bin/sh
# Compiles silent_errors.cpp, which must fail at each of its lines that has a comment, and with the words of the comment
# in what the compiler says of that line. In C++17 and C++20.
#
#   silent_errors.sh COMPILER FLAG ...
set -eu
source=$(dirname -- "$(readlink -f -- "$0")")/silent_errors.cpp
output=$(mktemp)
trap 'rm -f "$output"' EXIT

for level in 17 20; do
    "$@" -std=c++$level -fsyntax-only -ferror-limit=0 -x c++ /dev/null 2>/dev/null && limit=-ferror-limit=0 || limit=
    # shellcheck disable=SC2086  # an option or none
    ! "$@" -std=c++$level -w $limit -fsyntax-only "$source" >"$output" 2>&1 || {
        echo "C++$level: it compiles"
        exit 1
    }
    awk -v level=$level '
        FNR == NR && /^    .*;.*\/\/ / { advice[FNR] = $0; sub(/.*\/\/ /, "", advice[FNR]); ++count }
        FNR == NR { next }
        /silent_errors.cpp:[0-9]+:[0-9]+: error: / { split($0, part, ":"); line = part[2] }
        # The compiler shows the line too, comment and all.
        line in advice && index($0, advice[line]) && !index($0, "// " advice[line]) { told[line] = 1 }
        END {
            for (line in advice)
                if (!(line in told)) {
                    print "C++" level ": line " line " is no error that says: " advice[line]
                    failed = 1
                }
            exit failed || count == 0
        }' "$source" "$output"
done
