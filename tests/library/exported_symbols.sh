#!/bin/sh
# What the shared library offers is the members, type information and virtual tables of its own classes, and nothing
# else: no free function, nothing of the kernels or the numerical rules. Of the standard library's templates, over the
# classes and over numbers, compilers export what they have not inlined, whatever the visibility asked for; they may.
# clang++ also exports what it has not inlined of the lambdas and local classes of members.
#
#   exported_symbols.sh LIBRARY HEADER_FOLDER
set -eu
library=$1
headers=$2

# The classes of the interface, as mangled names spell them: length and name.
classes=$(grep -rhoE '(class|struct) CORVEX_API [A-Za-z0-9]+' "$headers" |
    awk '{ print length($3) $3 }' | sort -u | paste -sd '|' -)
ours="^_Z(T[VIS])?N[VKRO]*7Halmont5Orrin(11CorvexMaths(6Robust)?|15CorvexUtilities)($classes)"

symbols=$(nm -D --defined-only --format=posix "$library" | cut -d ' ' -f 1)
local='(^| )std::'
if readelf -p .comment "$library" | grep -q clang; then local='\)( const)?::|(^| )std::'; fi
strangers=$(printf '%s\n' "$symbols" | grep -vE "$ours" | c++filt | grep -vE "$local") || :
if [ -n "$strangers" ]; then
    printf 'exported, but no member of a class of the interface:\n%s\n' "$strangers"
    exit 1
fi

# The six families of a method show that neither a scalar nor a vector template hides an instantiation.
members=$(printf '%s\n' "$symbols" | c++filt)
maths=Halmont::Orrin::CorvexMaths
for scalar in float double; do
    for dimension in 2 3 4; do
        member="$maths::TPolygon<$scalar, $maths::TVector$dimension>::Offset($scalar, $scalar)"
        printf '%s\n' "$members" | grep -qxF "$member" || {
            echo "not exported: $member"
            exit 1
        }
    done
done
echo "$(printf '%s\n' "$symbols" | wc -l) symbols, all members of the interface"
