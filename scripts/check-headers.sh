#!/bin/bash
# check-headers.sh: every header compiles on its own. Those that a source of their name includes first have proved it
# when that was built; adapters need libraries of their hosts. Reads what build/release generates. An enumeration is not
# coded without its coding: the JSON library would take its number.
set -eu
cd "$(dirname "$0")/.."
alone=()
for header in $(git ls-files 'Corvex/*.h' 'proto/*.h' 'tools/*.h' ':!*/adapters/*'); do
    source=${header%.h}.cpp
    [ -e "$source" ] && grep -m 1 '^#include' "$source" | grep -qF "<$header>" || alone+=("$header")
done
compile=(clang++-16 -std=c++20 -fsyntax-only -Wall -Wextra -Werror -Wno-pragma-once-outside-header -I.
    -Ibuild/release/include -x c++)
printf '%s\0' "${alone[@]}" | xargs -0 -r -n 8 -P "$(nproc)" "${compile[@]}"

said=$("${compile[@]}" - 2>&1 <<'END'
#include <nlohmann/json.hpp>
#include <Corvex/lut/LutDimensions.h>
const nlohmann::ordered_json coded = corvex::LutDimensions::cube;
END
) || true
grep -q 'error: .*include <Corvex/platform/Json.h>' <<<"$said" || { echo 'an enumeration is coded without Json.h'; exit 1; }
