#include <filesystem>
#include <fstream>

#include <Corvex/platform/UserDefaults.h>
#include <tests/TemporaryDirectory.h>

#include "support/Fuzzer.h"

/// A file where the store of settings is expected, whatever its bytes: it is read as values or refused as a whole.
void corvex::fuzz(std::string_view input) {
    static const test::TemporaryDirectory folder("/dev/shm");
    const UserDefaults store(folder.path() / "settings");
    require((std::ofstream(store.file(), std::ios::binary) << input << std::flush).good(), "no place for a file");
    try {
        for (const auto& entry : store.values()) {
            // A search need not find what a walk does where a damaged file keeps its keys in another order.
            static_cast<void>(store.value(entry.first));
            static_cast<void>(store.boolean(entry.first));
        }
    } catch (const UserDefaultsError& error) {
        require(error.file() == store.file(), "another file is blamed");
    }
}
