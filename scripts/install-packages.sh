#!/bin/sh
# install-packages.sh GROUP...: installs the Debian packages that scripts/packages.txt lists under those headings.
# Needs only the base system. Does nothing when everything is there already.
set -eu
list=$(dirname "$0")/packages.txt

[ $# -gt 0 ] || { echo "usage: $0 GROUP... (groups: $(sed -n 's/^\[\(.*\)\]$/\1/p' "$list" | tr '\n' ' '))" >&2; exit 2; }

missing=
for group in "$@"; do
    grep -q "^\[$group\]\$" "$list" || { echo "$0: no group '$group' in $list" >&2; exit 2; }
    for package in $(sed -n "/^\[$group\]\$/,/^\[/{/^\[/d;s/#.*//;p;}" "$list"); do
        status=$(dpkg-query -W -f '${db:Status-Status}' "$package" 2>/dev/null || true)
        [ "$status" = installed ] || missing="$missing $package"
    done
done
[ -n "$missing" ] || exit 0

if ! command -v apt-get >/dev/null; then
    echo "This system has no apt-get. Please install the counterparts of these Debian packages:$missing" >&2
    exit 1
fi
if [ "$(id -u)" -eq 0 ]; then
    asRoot=
elif command -v sudo >/dev/null && { sudo -n true 2>/dev/null || [ -t 0 ]; }; then
    asRoot=sudo
else
    echo "Packages are missing and this user may not install them. Please run as root:" >&2
    echo "    apt-get install --no-install-recommends$missing" >&2
    exit 1
fi

echo "Installing:$missing"
# Package lists that are absent, or too old to know a package or where it is kept, are fetched once and tried again.
install() {
    # shellcheck disable=SC2086  # both are lists of words
    $asRoot env DEBIAN_FRONTEND=noninteractive apt-get install -y -q --no-install-recommends \
        -o DPkg::Lock::Timeout=600 $missing
}
known() {
    # shellcheck disable=SC2086
    apt-cache show --no-all-versions $missing >/dev/null 2>&1
}
if known && install; then
    exit 0
fi
$asRoot apt-get update -q
if install; then
    exit 0
fi
echo "Could not install:$missing" >&2
exit 1
