#!/bin/bash
# check-checks.sh: shows that the checks find what they are there for. Each fault is planted alone into a copy of what is
# committed, and the check must fail there; without a fault it must pass. Run by hand when a check has changed.
set -u
cd "$(dirname "$0")/.."
top=$PWD
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
git clone -q --shared . "$work/tree"
cd "$work/tree" || exit 1
mkdir build && ln -s "$top/build/release" build/release
wrong=0

# expect STATUS NAME COMMAND...: the last lines that a failing check prints are shown, they must name the fault.
expect() {
    local wanted=$1 name=$2 status=0
    shift 2
    "$@" >"$work/log" 2>&1 || status=1
    if [ "$status" = "$wanted" ]; then
        printf '%-9s %s\n' "$([ "$status" = 0 ] && echo passes || echo finds)" "$name"
        [ "$status" = 0 ] || sed 's/^/          /' "$work/log" | cut -c1-160 | head -n "${LINES_SHOWN:-3}"
    else
        printf '%-9s %s\n' WRONG "$name: status $status"
        wrong=1
    fi
    git checkout -q . && git clean -fdq -e /build
    git reset -q
}

for check in includes.py awaits.py duplicates.py words.py generated.sh; do
    expect 0 "check-$check on the tree" "./scripts/check-$check"
done
expect 0 'check-symbols.py on the libraries' ./scripts/check-symbols.py build/release/lib/libcorvex{,proto}.so

echo '#include <Corvex/cli/CliArgumentStore.h>' >>Corvex/platform/Text.h
expect 1 'an include against the direction' ./scripts/check-includes.py
echo '#include <algorithm>' >>Corvex/platform/Text.h
expect 1 'a heavy include in a public header' ./scripts/check-includes.py
echo '#include <Corvex/platform/internal/FileDates.h>' >>Corvex/platform/Text.h
expect 1 'an internal include in a public header' ./scripts/check-includes.py

printf '#pragma once\nstd::string stray();\n' >Corvex/platform/Stray.h && git add Corvex/platform/Stray.h
expect 1 'a header that does not compile alone' ./scripts/check-headers.sh
sed -i 's/static_assert(!CodedAsRawValue<Enumeration>, /static_assert(true, /' Corvex/platform/CaseTable.h
expect 1 'an enumeration that could be coded as its number' ./scripts/check-headers.sh

printf 'Task<void> stray(int x) { co_await run([x] { return x; }); }\n' >>Corvex/platform/Sleep.cpp
expect 1 'a capturing closure inside co_await' ./scripts/check-awaits.py

head -n 60 Corvex/platform/Text.cpp | sed 's|$|  // again|' >>Corvex/timing/FrameRate.cpp
expect 1 'sixty lines copied to another room' ./scripts/check-duplicates.py

for words in '// TO''DO: round' '// as the spe''c says' '// see Part ''3.2' '<<<<<<''< HEAD' '// for the time ''being' \
    'open("/wor''k/main")' '// iss''ue 12' 'int a; '; do
    echo "$words" >>Corvex/platform/Text.cpp
    expect 1 "the words: $words" ./scripts/check-words.py
done

echo 'const auto stray = localizedText("Never translated");' >>Corvex/platform/Text.cpp
expect 1 'a text without a translation' ./scripts/check-generated.sh
printf '\nmsgid "Nobody says this"\nmsgstr "Das sagt niemand"\n' >>po/de.po
expect 1 'the translation of a text that is gone' ./scripts/check-generated.sh
sed -i '/libhwy-dev/d' debian/control
expect 1 'a build dependency that the packages lack' ./scripts/check-generated.sh

# library FILE SONAME TEXT [SHOWN]: a small shared library.
library() {
    echo "CORVEX_0.1 { global: ${4-*;} };" >"$work/map"
    echo "$3" | g++ -std=c++20 -shared -fPIC "-Wl,-soname,$2" "-Wl,--version-script=$work/map" -x c++ -o "$work/$1" -
}
library libcorvex.so libcorvex.so.0.1 'namespace corvex::inline v0 { int right() { return 1; } }'
expect 0 'a library as it should be' ./scripts/check-symbols.py "$work/libcorvex.so"
library libcorvex.so libcorvex.so.0.1 'int stray() { return 1; }'
expect 1 'a symbol outside the namespace' ./scripts/check-symbols.py "$work/libcorvex.so"
library libcorvex.so libcorvex.so.0.1 '#include <any>
namespace corvex::inline v0 { std::any right() { return std::any(1); } }'
expect 1 'an instance of the standard library'"'"'s' ./scripts/check-symbols.py "$work/libcorvex.so"
library libcorvex.so libcorvex.so.0.1 '#include <atomic>
namespace corvex::inline v0 { void right(std::atomic<int>& value) { value.wait(0); } }' '_ZN6corvex*; local: *;'
expect 1 'state of the process that is hidden' ./scripts/check-symbols.py "$work/libcorvex.so"
library libcorvex.so libcorvex.so.0 'namespace corvex::inline v0 { int right() { return 1; } }'
expect 1 'another soname' ./scripts/check-symbols.py "$work/libcorvex.so"

exit $wrong
