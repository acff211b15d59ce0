#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

#include "Fuzzer.h"

/// Runs the fuzzer once on every file of a directory. Fails when a file cannot be read or when nothing was run.
int main(int count, char** arguments) {
    if (count != 2) {
        std::fprintf(stderr, "usage: %s DIRECTORY\n", arguments[0]);
        return 2;
    }
    bool isRun = false;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(arguments[1])) {
        if (!entry.is_regular_file()) continue;
        std::printf("%s\n", entry.path().c_str());  // before the run: a crash names its input
        std::fflush(stdout);
        std::ifstream stream(entry.path(), std::ios::binary);
        if (!stream) {
            std::fprintf(stderr, "cannot read %s\n", entry.path().c_str());
            return 1;
        }
        // In just so much memory, so that reading beyond it is seen.
        const std::vector<char> bytes{std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
        corvex::fuzz({bytes.data(), bytes.size()});
        isRun = true;
    }
    if (!isRun) std::fprintf(stderr, "%s holds no input\n", arguments[1]);
    return isRun ? 0 : 1;
}
