#!/bin/sh
# Compares what the library exports with the list of symbols that programs may already rely on.
#
#   abi.sh LIBRARY SYMBOLS            tells what was added and what was removed, and fails on either
#   abi.sh --update LIBRARY SYMBOLS   writes the list anew
#
# LIBRARY is an optimised build of the shared library, or the .def file that lists the exports of one for Windows, SYMBOLS
# the list, tests/library/symbols.txt.
#
# Every class is instantiated explicitly, so that each compiler must export each of its members, inline or not, with its
# virtual table and type information. Four things differ between compilers, and none is listed:
#   - specialisations of member templates. Each is there or not as inlining left it, and whoever calls one has its body;
#   - the destructors of answers and of pieces of a region, which these leave to the compiler;
#   - lambdas and classes within functions, and the standard library's templates over the classes, as inlining left
#     them;
#   - the several symbols that one constructor or destructor has, for whole objects, bases and deletion. They have one
#     name when demangled, and stand in the list once.
# Names are without their namespace, but for Utilities::, which is short for that of the containers.
set -eu
# sort and comm must agree on an order, whatever the locale.
export LC_ALL=C

update=false
if [ "$1" = --update ]; then
    update=true
    shift
fi
library=$1
symbols=$2

exported() {
    # What stands before the parameters ends in > for a member template, but for an operator of that name and for a
    # conversion to a template.
    case $library in
        *.def) sed 1d "$library" ;;
        *) nm -D --defined-only --format=posix "$library" ;;
    esac | cut -d ' ' -f 1 | c++filt |
        awk '{ name = $0; sub(/\(.*/, "", name) }
             !/\(/ || name !~ />$/ || name ~ /::operator(>|>>|->)$/ || name ~ /::operator [A-Za-z]/' |
        grep -vE '\)( const)?::|(^| )std::' |
        sed 's/Halmont::Orrin::CorvexMaths:://g; s/Halmont::Orrin::CorvexUtilities::/Utilities::/g' |
        grep -vE '^(Robust::.*|TRegion<[a-z]+>::Piece)::~[A-Za-z]+\(\)$' |
        sort -u
}

if $update; then
    exported >"$symbols"
    exit 0
fi

now=$(mktemp)
trap 'rm -f "$now"' EXIT
exported >"$now"
removed=$(comm -23 "$symbols" "$now")
added=$(comm -13 "$symbols" "$now")
[ -n "$removed$added" ] || exit 0
if [ -n "$removed" ]; then
    printf 'removed:\n%s\n' "$removed"
    echo 'This breaks programs that were linked before: SOVERSION moves, see CHANGELOG.md. Then update the list.'
fi
if [ -n "$added" ]; then
    printf 'added:\n%s\n' "$added"
fi
echo "To update the list: tests/library/abi.sh --update $library $symbols"
exit 1
