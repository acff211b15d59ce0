#!/bin/sh
# make-packages.sh: packs what the preset release builds into build/release/packages, as debian/ says.
set -eu
cd "$(dirname "$0")/.."
version=$(sed -n 's/^project(Corvex VERSION \([0-9.]*\).*/\1/p' CMakeLists.txt)
packaged=$(dpkg-parsechangelog -S Version)
[ "${packaged%-*}" = "$version" ] ||
    { echo "debian/changelog is at $packaged, but CMakeLists.txt at $version" >&2; exit 1; }
./scripts/build.sh release -DCMAKE_INSTALL_PREFIX=/usr
rm -rf build/release/packages
log=build/release/packages.log
DEB_BUILD_OPTIONS=noautodbgsym ./debian/rules binary CORVEX_BUILD=build/release >"$log" 2>&1 ||
    { cat "$log" >&2; exit 1; }
rm -rf debian/.debhelper debian/corvex debian/libcorvex*/ debian/*.substvars debian/*.debhelper* debian/files \
    debian/debhelper-build-stamp
ls build/release/packages/*.deb
