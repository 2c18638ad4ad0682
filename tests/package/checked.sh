#!/bin/sh
# Builds a program that adds matrices of different sizes with the installed library, in the current folder: in the
# configuration Debug of CMake and by pkg-config corvexmaths-debug it ends with a line that names the operation.
set -eu

mkdir -p checked
cd checked
cat >main.cpp <<'END'
#include <CorvexMaths/CorvexMaths.h>

int main()
{
    Halmont::Orrin::CorvexMaths::TMatrixMxN<double> a(2, 3), b(3, 2);
    a += b;
}
END
cat >CMakeLists.txt <<'END'
cmake_minimum_required(VERSION 3.25)
project(checked LANGUAGES CXX)
find_package(CorvexMaths REQUIRED)
add_executable(checked main.cpp)
target_link_libraries(checked PRIVATE CorvexMaths::CorvexMaths)
END

cmake -B build -DCMAKE_BUILD_TYPE=Debug >log && cmake --build build >>log || {
    cat log
    exit 1
}
# shellcheck disable=SC2046  # several flags
g++ -O2 -DNDEBUG main.cpp -o checked $(pkg-config --cflags --libs corvexmaths-debug)
for program in build/checked ./checked; do
    if "$program" 2>said || ! grep -q 'CorvexMaths: TMatrixMxN' said; then
        cat said
        echo "$program does not name the broken precondition"
        exit 1
    fi
done
echo 'a program in its debug configuration names the precondition that it breaks'
