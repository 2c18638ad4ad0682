#!/bin/sh
# A release build looks at no precondition: the library may not hold the line that a violation prints.
#
#   no_preconditions.sh LIBRARY
set -eu
library=$1
violation=' needs %s, but (%s) is ('

# The line is held to what the header prints, so that it is not looked for in vain.
grep -qF "$violation" "$(dirname -- "$0")/../../CorvexMaths/Precondition.h" || {
    echo "Precondition.h prints another line than \"$violation\""
    exit 1
}

status=0
grep -qaF "$violation" "$library" || status=$?
if [ "$status" -eq 0 ]; then
    echo "$library checks preconditions"
fi
[ "$status" -eq 1 ]
