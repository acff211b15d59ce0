#!/bin/sh
# check-packages.sh [--update]: makes the Debian packages, has lintian look at them, compares what they install with
# debian/installed-files.txt (--update writes that list instead), and installs them into a Debian that has nothing else:
# there examples/consumer is built against them and the tool transcodes a clip.
# Root: the clean system is a directory under build/, entered with chroot. Only /proc is ever mounted there, in a mount
# namespace that ends with the programs in it.
set -eu
cd "$(dirname "$0")/.."
./scripts/make-packages.sh
packages=$PWD/build/release/packages

echo "Looking at the packages"
lintian --allow-root --fail-on error --suppress-tags initial-upload-closes-no-bugs "$packages"/*.deb

echo "Comparing what they install"
triplet=$(dpkg-architecture -qDEB_HOST_MULTIARCH)
installed=build/release/installed-files.txt
for package in "$packages"/*.deb; do
    name=$(dpkg-deb -f "$package" Package)
    dpkg-deb --fsys-tarfile "$package" | tar -t | sed -n "/\/\$/d; s|^\./|$name: |; s|$triplet|<arch>|; p"
done | LC_ALL=C sort >"$installed"
if [ "${1-}" = --update ]; then
    cp "$installed" debian/installed-files.txt
    exit
fi
diff -u debian/installed-files.txt "$installed" ||
    { echo "The packages install other files than debian/installed-files.txt lists. If that is meant: $0 --update" >&2; exit 1; }

[ "$(id -u)" = 0 ] || { echo "$0: only root can install packages into a clean system" >&2; exit 1; }
root=$PWD/build/release/clean-root
remove_root() {
    if grep -q " $root" /proc/mounts; then
        echo "$0: something is mounted below $root: unmount it first" >&2
        exit 1
    fi
    rm -rf --one-file-system "$root"
}
remove_root
echo "Installing them into a clean system"
# The same release from the same places as here.
. /etc/os-release  # VERSION_CODENAME
apt-get indextargets --format 'deb $(REPO_URI) $(RELEASE) $(COMPONENT)' 'Created-By: Packages' 'Origin: Debian' |
    sort -u >build/release/sources.list
[ -s build/release/sources.list ] || { echo "$0: apt lists no place of Debian's packages here" >&2; exit 1; }
log=build/release/clean-root.log
began=$(date +%s)
mmdebstrap --mode=root --variant=apt --skip=chroot/mount,cleanup --include=g++,cmake,ninja-build,pkg-config \
    --dpkgopt=force-unsafe-io --aptopt='Acquire::Languages "none"' \
    --dpkgopt='path-exclude=/usr/share/doc/*' --dpkgopt='path-exclude=/usr/share/man/*' \
    --dpkgopt='path-exclude=/usr/share/locale/*' --dpkgopt='path-include=/usr/share/locale/*/corvex*' \
    --setup-hook='mkdir -p "$1/var/lib/apt/lists" && cp -a /var/lib/apt/lists/. "$1/var/lib/apt/lists"' \
    --customize-hook="mkdir \"\$1/packages\" && cp '$packages'/*.deb \"\$1/packages\"" \
    --customize-hook='chroot "$1" sh -c "DEBIAN_FRONTEND=noninteractive apt-get install -y --no-install-recommends /packages/*.deb"' \
    "$VERSION_CODENAME" "$root" - <build/release/sources.list >"$log" 2>&1 ||
    { tail -n 40 "$log" >&2; echo "$0: no clean system with the packages; all of its log: $log" >&2; exit 1; }
echo "Took $(($(date +%s) - began)) s"

echo "Using them there"
cp -r examples/consumer "$root/consumer"
ffmpeg -v error -nostdin -f lavfi -i testsrc2=size=320x180:rate=25:duration=1 -c:v libx264 "$root/clip.mov"
printf 'LUT_3D_SIZE 2\n0 0 0\n0.9 0 0\n0 0.9 0\n0.9 0.9 0\n0 0 0.9\n0.9 0 0.9\n0 0.9 0.9\n0.9 0.9 0.9\n' >"$root/look.cube"
cat >"$root/use.sh" <<'END'
set -eu
export LC_ALL=C.UTF-8
cmake -S /consumer -B /build -G Ninja >/build.log || { cat /build.log; exit 1; }
cmake --build /build
/build/consumer -in /media/A001C003.mov -out /proxies/A001C003.mov
/build/pipeline
c++ -std=c++20 -o /consumer/byHand /consumer/main.cpp $(pkg-config --cflags --libs corvex)
c++ -std=c++20 -o /consumer/pipelineByHand /consumer/pipeline.cpp $(pkg-config --cflags --libs corvexproto)
/consumer/byHand -in /media/A001C003.mov >/dev/null
/consumer/pipelineByHand >/dev/null
corvex --version
corvex lut sample /look.cube 0.25 0.5 0.75
if [ -e /proc/self/exe ]; then
    corvex transcode -in /clip.mov -out /proxy.mov -preset orvane_cloud -clut /look.cube
    test -s /proxy.mov
fi
END
inside='mount -t proc proc "$1/proc" && exec chroot "$1" "$2" "$3"'
if unshare --mount sh -c "$inside" sh "$root" true 2>/dev/null; then
    unshare --mount sh -c "$inside" sh "$root" sh /use.sh
else
    echo "Nothing can be mounted here: without /proc, the tool does not transcode"
    chroot "$root" sh /use.sh
fi
remove_root
