#!/bin/sh
# Builds the first program of README with the installed library, in the current folder, by the very commands that README
# gives for pkg-config and for CMake; each must print what README says.
#
#   readme.sh README
set -eu
readme=$1

# The first fenced block of a language that holds a word.
block() {
    awk -v opening="\`\`\`$1" -v word="$2" '
        $0 == "```" { if (inside && index(text, word)) { printf "%s", text; exit }; inside = 0 }
        inside { text = text $0 "\n" }
        $0 == opening { inside = 1; text = "" }
    ' "$readme" >block
    [ -s block ] || {
        echo "README has no block $1 with $2"
        exit 1
    }
    cat block
}

block cpp 'int main' >plate.cpp
block cmake find_package >CMakeLists.txt
block text vertices >expected

for tool in pkg-config cmake; do
    block sh "$tool" >commands
    sh -eu commands >output 2>&1 || {
        cat output
        echo "README's program does not build or run by $tool"
        exit 1
    }
    # CMake speaks before the program does.
    tail -n "$(wc -l <expected)" output | diff expected - || {
        echo "README's program prints something else by $tool"
        exit 1
    }
    echo "README's program runs by $tool"
done
