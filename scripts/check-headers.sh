#!/bin/bash
# check-headers.sh: every header compiles on its own. Those that a source of their name includes first have proved it
# when that was built; adapters need libraries of their hosts. Reads what build/release generates.
set -eu
cd "$(dirname "$0")/.."
alone=()
for header in $(git ls-files 'Corvex/*.h' 'proto/*.h' 'tools/*.h' ':!*/adapters/*'); do
    source=${header%.h}.cpp
    [ -e "$source" ] && grep -m 1 '^#include' "$source" | grep -qF "<$header>" || alone+=("$header")
done
printf '%s\0' "${alone[@]}" | xargs -0 -r -n 8 -P "$(nproc)" clang++-16 -std=c++20 -fsyntax-only -Wall -Wextra -Werror \
    -Wno-pragma-once-outside-header -I. -Ibuild/release/include -x c++
