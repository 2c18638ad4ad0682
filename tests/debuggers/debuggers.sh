#!/bin/sh
# Holds the files in debuggers/ to a program that runs in gdb: what the printers show of its objects, loaded by hand and
# by gdb itself, and that the expressions of the natvis file can be evaluated on them.
#
#   debuggers.sh printers|natvis SUBJECT DEBUGGERS_FOLDER
#   debuggers.sh installed SUBJECT DEBUGGERS_FOLDER TYPES
#
# SUBJECT is tests/debuggers/subject.cpp, not optimised, with debug information. For `installed` it is compiled as users
# do, and TYPES holds the description of the classes. Exit status 77 where gdb may not trace.
set -eu
task=$1
subject=$2
debuggers=$3
here=$(dirname -- "$(readlink -f -- "$0")")
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT

# Stops the subject in its function LookHere and goes up to main.
look() {
    status=0
    gdb -batch -nx -iex "add-auto-load-safe-path $folder" -iex 'set width 0' -iex 'set disable-randomization off' \
        -ex 'break LookHere' -ex run -ex up "$@" >"$folder/out" 2>"$folder/errors" || status=$?
    if grep -qiE 'could not trace|ptrace.*not permitted' "$folder/errors"; then
        cat "$folder/errors"
        exit 77
    fi
}

if [ "$task" = natvis ]; then
    look -ex "set \$natvis = \"$debuggers/CorvexMaths.natvis\"" -ex "source $here/natvis.py" "$subject"
    cat "$folder/out" "$folder/errors"
    exit "$status"
fi

# The objects are named in the expected text; type and address, which gdb puts before a reference, are of no account,
# and how much room a spline has for its knots is its own affair.
show() {
    set -- "$@" "$folder/subject"
    for object in $(sed 's/ = .*//' "$here/expected.txt" | tac); do
        set -- -ex "printf \"$object = \"" -ex "output $object" -ex 'printf "\n"' "$@"
    done
    look "$@"
    sed -n '/^[A-Za-z0-9]* = /p' "$folder/out" |
        sed -E -e 's/ = (\([^)]*&\) )?@0x[0-9a-f]+: / = /' \
            -e 's/(knots = TList<double> of [0-9]+), capacity [0-9]+/\1/' >"$folder/shown"
    diff -u "$here/expected.txt" "$folder/shown" || {
        cat "$folder/errors"
        exit 1
    }
}

cp "$subject" "$folder/subject"
if [ "$task" = installed ]; then
    mkdir "$folder/CorvexMaths"
    cp "$4" "$folder/CorvexMaths/types.debug"
else
    show -iex "source $debuggers/corvexmaths_gdb.py"
fi
# As an installed library's: gdb looks for the file beside the program or library that it is named after.
cp "$debuggers/corvexmaths_gdb.py" "$folder/subject-gdb.py"
show
