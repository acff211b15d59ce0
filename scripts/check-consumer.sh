#!/bin/sh
# check-consumer.sh shared|static: installs the library into a prefix of its own, moves that elsewhere, and builds and
# runs examples/consumer against it, once with the CMake package and once with pkg-config.
set -eu
root=$(cd "$(dirname "$0")/.." && pwd)
kind=$1
case $kind in
    shared) preset=release ;;
    static) preset=static ;;
    *) echo "usage: $0 shared|static" >&2; exit 2 ;;
esac
cd "$root"
if [ "$kind" = static ] || [ ! -e build/release/lib/libcorvex.so ]; then
    ./scripts/build.sh "$preset"
fi
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cmake --install "build/$preset" --prefix "$work/first" >"$work/install.log" || { cat "$work/install.log" >&2; exit 1; }
mv "$work/first" "$work/moved"  # an installed tree must not know where it was installed
prefix=$work/moved
libraries=$(dirname "$(find "$prefix" -name 'libcorvex.*' | head -n 1)")

cmake -S examples/consumer -B "$work/cmake" -G Ninja -DCMAKE_PREFIX_PATH="$prefix" >"$work/cmake.log" ||
    { cat "$work/cmake.log" >&2; exit 1; }
cmake --build "$work/cmake"
"$work/cmake/consumer" -in /media/A001C003.mov -out /proxies/A001C003.mov

option=
[ "$kind" = shared ] || option=--static
export PKG_CONFIG_PATH="$libraries/pkgconfig"
# shellcheck disable=SC2046  # words are what is wanted
c++ -std=c++20 -o "$work/consumer" examples/consumer/main.cpp $(pkg-config $option --cflags --libs corvex)
LD_LIBRARY_PATH=$libraries "$work/consumer" -in /media/A001C003.mov -out /proxies/A001C003.mov

if [ -x "$prefix/bin/corvex" ]; then
    "$prefix/bin/corvex" --version
fi
