#!/bin/sh
# check-consumer.sh shared|static: installs the library into a prefix of its own, moves that elsewhere, and builds and
# runs examples/consumer against it, once with the CMake package and once with pkg-config.
set -eu
root=$(cd "$(dirname "$0")/.." && pwd)
kind=$1
cd "$root"
case $kind in
    shared) preset=release; ./scripts/build.sh release ;;
    static) preset=static; ./scripts/build.sh static -DCMAKE_CXX_FLAGS_RELEASE=-O0 ;;  # to link
    *) echo "usage: $0 shared|static" >&2; exit 2 ;;
esac
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cmake --install "build/$preset" --prefix "$work/first" >"$work/install.log" || { cat "$work/install.log" >&2; exit 1; }
mv "$work/first" "$work/moved"  # an installed tree must not know where it was installed
prefix=$work/moved
libraries=$(dirname "$(find "$prefix" -name 'libcorvex.*' | head -n 1)")

cmake -S examples/consumer -B "$work/cmake" -G Ninja -DCMAKE_PREFIX_PATH="$prefix" >"$work/cmake.log" ||
    { cat "$work/cmake.log" >&2; exit 1; }
cmake --build "$work/cmake"
# The same words come back, one a line: the library was not only linked but does its work.
words="-in /media/A001C003.mov -out /proxies/A001C003.mov"
expect() {
    # shellcheck disable=SC2086  # words are what is wanted
    printed=$("$@" $words | sed 1d | sort | tr '\n' ' ')
    wanted=$(printf '%s\n' $words | sort | tr '\n' ' ')
    [ "$printed" = "$wanted" ] || { echo "$*: printed '$printed', not '$wanted'" >&2; exit 1; }
}
expect "$work/cmake/consumer"

option=
[ "$kind" = shared ] || option=--static
export PKG_CONFIG_PATH="$libraries/pkgconfig"
# shellcheck disable=SC2046  # words are what is wanted
c++ -std=c++20 -o "$work/consumer" examples/consumer/main.cpp $(pkg-config $option --cflags --libs corvex)
expect env "LD_LIBRARY_PATH=$libraries" "$work/consumer"

# A component that is not there is named.
echo 'find_package(Corvex REQUIRED COMPONENTS colour)' >"$work/missing.cmake"
! cmake "-DCorvex_DIR=$libraries/cmake/Corvex" -P "$work/missing.cmake" 2>"$work/missing.log" &&
    grep -q "there is no component 'colour'" "$work/missing.log" || { cat "$work/missing.log" >&2; exit 1; }

if [ -x "$prefix/bin/corvex" ]; then
    "$prefix/bin/corvex" --version
fi
