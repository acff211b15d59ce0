#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

bool replay(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    if (!stream) {
        std::fprintf(stderr, "cannot read %s\n", file.c_str());
        return false;
    }
    const std::vector<char> bytes{std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
    const std::vector<std::uint8_t> input(bytes.begin(), bytes.end());
    std::printf("%s\n", file.c_str());  // before the run: a crash names its input
    std::fflush(stdout);
    LLVMFuzzerTestOneInput(input.data(), input.size());
    return true;
}

}  // namespace

/// Runs the fuzz target once on every file given, and on every file within the directories given.
/// Fails when a file cannot be read or when nothing was run.
int main(int count, char** arguments) {
    std::size_t runs = 0;
    for (int i = 1; i < count; ++i) {
        const std::filesystem::path path = arguments[i];
        if (!std::filesystem::is_directory(path)) {
            if (!replay(path)) return 1;
            ++runs;
            continue;
        }
        for (const auto& entry : std::filesystem::recursive_directory_iterator(path)) {
            if (!entry.is_regular_file()) continue;
            if (!replay(entry.path())) return 1;
            ++runs;
        }
    }
    if (runs == 0) std::fprintf(stderr, "no input was replayed\n");
    return runs == 0 ? 1 : 0;
}
