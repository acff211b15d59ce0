#!/bin/sh
# check-generated.sh: what is kept in the tree but follows from something else there is as fresh as that: the catalogues of
# translated texts from the texts in the sources, the build dependencies of the Debian packages from scripts/packages.txt.
set -eu
cd "$(dirname "$0")/.."
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
stale=0

# Texts that are translated where they stand must be in every catalogue, and a catalogue has no text that is gone.
git ls-files -z 'Corvex/*.cpp' 'Corvex/*.h' 'tools/*.cpp' 'tools/*.h' >"$work/sources"
xargs -0 xgettext -k -klocalizedText:1 -C --from-code=UTF-8 -o "$work/texts.pot" <"$work/sources"
for catalogue in po/*.po; do
    msgcmp "$catalogue" "$work/texts.pot" 2>"$work/missing" || { cat "$work/missing"; stale=1; }
    msgattrib --no-wrap --no-obsolete "$catalogue" | sed -n 's/^msgid \("..*"\)$/\1/p' >"$work/kept"
    while IFS= read -r text; do
        xargs -0 grep -qF -e "$text" <"$work/sources" || { echo "$catalogue: no source says $text any more"; stale=1; }
    done <"$work/kept"
done

# The compiler is part of every Debian build; fonts are used, not built with; the package's own builder comes on top.
{ sed -n '/^\[build\]$/,/^\[/{/^\[/d;s/[ #].*//;p;}' scripts/packages.txt | grep -v -e '^g++$' -e '^fonts-' -e '^$'
    echo debhelper-compat; } | sort >"$work/wanted"
sed -n '/^Build-Depends:/,/^$/p' debian/control | tr ',' '\n' | sed 's/^Build-Depends://; s/(.*)//; s/ //g; /^$/d' |
    sort >"$work/stated"
diff -u --label scripts/packages.txt --label debian/control "$work/wanted" "$work/stated" || stale=1
exit $stale
