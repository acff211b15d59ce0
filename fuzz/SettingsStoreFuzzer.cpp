#include <fcntl.h>
#include <unistd.h>
#include <cstdlib>
#include <filesystem>

#include <Corvex/platform/Checked.h>
#include <Corvex/platform/UserDefaults.h>

#include "support/Fuzzer.h"

/// A file where the store of settings is expected, whatever its bytes: it is read as values or refused as a whole.
void corvex::fuzz(std::string_view input) {
    static const std::string file = "/dev/shm/corvex-settings-fuzzer-" + std::to_string(getpid());
    static const int atEnd = std::atexit([] { unlink(file.c_str()); });
    require(atEnd == 0, "no place for what is to be done at the end");
    const int descriptor = open(file.c_str(), O_CREAT | O_TRUNC | O_WRONLY | O_CLOEXEC, 0600);
    require(descriptor >= 0 && write(descriptor, input.data(), input.size()) == static_cast<ssize_t>(input.size()),
            "no place for a file");
    close(descriptor);

    const UserDefaults store{std::filesystem::path(file)};
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
