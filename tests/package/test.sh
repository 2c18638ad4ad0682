#!/bin/bash
# Installs the library, shared and static, and builds programs with it as its users do: by find_package, pkg-config,
# add_subdirectory and FetchContent, with g++ and clang++, under hidden visibility, after the installation was moved;
# and README's first program, and the recipes. Looks at the flags that reach the programs, too. Ends at the first
# failure.
#
#   tests/package/test.sh [BUILD]
#
# BUILD is a build folder of the shared library, as a preset makes it; build/release unless given.
set -euo pipefail

here=$(dirname -- "$(readlink -f -- "$0")")
root=$(dirname -- "$(dirname -- "$here")")
build=${1:-$root/build/release}
work=$(mktemp -d)
log=$work/log
trap 'rm -rf "$work"' EXIT
fused_flags=$([ "$(uname -m)" != x86_64 ] || echo '-mno-fma -mno-avx512f')

stop() {
    echo "tests/package/test.sh: $*" >&2
    exit 1
}
quietly() {
    "$@" >"$log" 2>&1 || {
        cat "$log" >&2
        stop "failed: $*"
    }
}
passed() {
    printf '%4d s  %s\n' $SECONDS "$*"
}

# Whether a program prints what it should: prints PROGRAM [LIBRARY_FOLDER [EXPECTED]]
prints() {
    LD_LIBRARY_PATH=${2-} "$1" | diff "$here/consume/${3-expected}.txt" - || stop "$1 prints something else"
}

# The flags that reach a program are the language where CMake sets it, those that keep bits or not, and nothing of our
# own: no optimisation, no definition, no warning.   flags COMPILER kept|spared COMMAND
flags() {
    local wanted='-ffp-contract=off' flag
    [ "$1" = clang++ ] || wanted+=" $fused_flags"
    for flag in $wanted; do
        case $2,$3 in
            kept,*" $flag "* | spared,*) ;;
            *) stop "$flag is missing: $3" ;;
        esac
    done
    case $2,$3 in
        spared,*-ffp-* | spared,*-mno-*) stop "flags in spite of the switch: $3" ;;
        *' -O'* | *' -D'* | *' -W'* | *-fno-*) stop "flags of the library's own: $3" ;;
    esac
}

# Configures the project consume:   configure NAME COMPILER CMAKE_ARGUMENT ...
configure() {
    local name=$1 compiler=$2
    shift 2
    cmake -S "$here/consume" -B "$work/$name" -G Ninja -DCMAKE_CXX_COMPILER="$compiler" -DCMAKE_BUILD_TYPE= \
        -DCMAKE_EXPORT_COMPILE_COMMANDS=ON -DCMAKE_INSTALL_PREFIX="$work/$name/installed" "$@"
}
# The command that compiles a program of the project consume:   command_of NAME PROGRAM
command_of() {
    grep "\"command\".*CMakeFiles/$2.dir/main.cpp" "$work/$1/compile_commands.json"
}
# Configures, builds and runs it, and looks at its flags; arguments as above.
consume() {
    local name=$1 compiler=$2 program
    quietly configure "$@"
    quietly cmake --build "$work/$name"
    for program in consume hidden spared static; do
        if [ -e "$work/$name/$program" ]; then prints "$work/$name/$program"; fi
    done
    flags "$compiler" kept "$(command_of "$name" consume)"
    flags "$compiler" spared "$(command_of "$name" spared)"
}

# Builds with what pkg-config says, plainly and under hidden visibility:   by_pkg_config COMPILER PREFIX
by_pkg_config() {
    local compiler=$1 folder own cflags libs
    folder=$(dirname "$(find "$2" -name corvexmaths.pc)")
    export PKG_CONFIG_PATH=$folder
    cflags=$(pkg-config --cflags corvexmaths)
    libs=$(pkg-config --libs corvexmaths)
    flags g++ kept " $cflags " # which compiler it is for, pkg-config does not know
    flags g++ spared " $(pkg-config --define-variable=keep_bits= --cflags corvexmaths) "
    case $cflags in *-std=*) stop "pkg-config sets the language: $cflags" ;; esac
    # Not every compiler takes C++17 unasked.
    for own in 17 20; do
        # shellcheck disable=SC2086  # lists of words
        quietly "$compiler" -std=c++$own -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror \
            "$here/consume/conveniences.cpp" -o "$work/program" $cflags $libs
        prints "$work/program" "$(dirname "$folder")" conveniences
    done
    # shellcheck disable=SC2086  # a list of words
    "$here/silent_errors.sh" "$compiler" $cflags || stop 'what should be an error is none'
    cflags+=" $(pkg-config --variable=language corvexmaths)"
    for own in '-O0' '-O2 -fvisibility=hidden -fvisibility-inlines-hidden'; do
        # shellcheck disable=SC2086  # lists of words
        quietly "$compiler" -Wall -Wextra -Werror $own "$here/consume/main.cpp" -o "$work/program" $cflags $libs
        prints "$work/program" "$(dirname "$folder")"
    done
}

# With the static library beside the shared one, for which nothing more is compiled.
quietly cmake -DCORVEX_STATIC_TOO=ON "$build"
quietly cmake --build "$build" --target CorvexMaths CorvexMathsArchive
quietly cmake --install "$build" --prefix "$work/shared"
quietly cmake -DCORVEX_STATIC_TOO=OFF "$build"
quietly cmake -S "$root" -B "$work/build_static" -G Ninja -DBUILD_SHARED_LIBS=OFF -DCMAKE_BUILD_TYPE=Debug \
    -DCORVEX_BUILD_TESTS=OFF -DCORVEX_BUILD_EXAMPLES=OFF
quietly cmake --build "$work/build_static"
quietly cmake --install "$work/build_static" --prefix "$work/static"
passed 'shared and static library installed'

for compiler in g++ clang++; do
    for kind in shared static; do
        consume "$kind-$compiler" "$compiler" -DBY=find_package -DCMAKE_PREFIX_PATH="$work/$kind"
        passed "$compiler finds the $kind library by find_package"
        by_pkg_config "$compiler" "$work/$kind"
        passed "$compiler finds the $kind library by pkg-config"
    done
done
[ -e "$work/shared-g++/static" ] || stop 'the package with both libraries has no target for the static one'
! ldd "$work/shared-g++/static" | grep CorvexMaths || stop 'the static target links the shared library'
passed 'the package with both libraries has a target for each'
# shellcheck disable=SC2046  # lists of words; the last package asked for was the static one
quietly g++ -shared -fPIC "$here/consume/main.cpp" -o "$work/plugin.so" $(pkg-config --cflags --libs corvexmaths)
passed 'the static library goes into shared ones'

quietly configure spared g++ -DBY=find_package -DCMAKE_PREFIX_PATH="$work/shared" -DCORVEX_KEEP_BITS=OFF
flags g++ spared "$(command_of spared consume)"
! configure older g++ -DBY=find_package -DCMAKE_PREFIX_PATH="$work/shared" -DLEAST_VERSION=0.0 >"$log" 2>&1 ||
    stop 'it passes for an earlier minor version'
grep -q 'version: 0\.1' "$log" || stop 'the version is not what was missed'
passed 'the switch spares a whole project, and the version is minded'

# As a part of another project: nothing built but the library, nothing installed but what the project says.
by_source() {
    local name=$1 compiler=$2 others
    consume "$name" "$compiler" -DBY="$name" -DSOURCE="$root"
    others=$(cmake --build "$work/$name" --target help | grep -E '(Test|offset_outline|gallery|benchmarks|fuzz[^/]*):' || :)
    [ -z "$others" ] || stop "also a part of the project: $others"
    quietly cmake --install "$work/$name"
    [ "$(cd "$work/$name/installed" && find . -type f)" = ./bin/consume ] || stop 'the library installs itself unasked'
    passed "$compiler builds the library by $name"
}
by_source add_subdirectory g++
by_source FetchContent clang++

mv "$work/shared" "$work/moved"
consume moved-cmake g++ -DBY=find_package -DCMAKE_PREFIX_PATH="$work/moved"
by_pkg_config g++ "$work/moved"
passed 'the moved installation serves both'

mkdir "$work/readme"
cd "$work/readme"
CMAKE_PREFIX_PATH=$work/moved LD_LIBRARY_PATH=$(dirname "$PKG_CONFIG_PATH") "$here/readme.sh" "$root/README.md"
passed 'README'

if [ -e "$root/examples/recipes/CMakeLists.txt" ]; then
    quietly cmake -S "$root/examples/recipes" -B "$work/recipes" -G Ninja -DCMAKE_PREFIX_PATH="$work/moved"
    quietly cmake --build "$work/recipes"
    quietly ctest --test-dir "$work/recipes" --no-tests=error --output-on-failure
    passed 'recipes'
fi
