#pragma once

#include <cstdlib>
#include <filesystem>
#include <string>
#include <string_view>

#include <Corvex/lut/LutTextReader.h>
#include <Corvex/lut/ParsedLutFactory.h>
#include <Corvex/lut/ParsedLutFile.h>
#include <Corvex/platform/Text.h>

namespace corvex {

/// `count` lines of three equal numbers: `last` in the last line and 0 in the others.
inline std::string entryLines(std::size_t count, std::string_view last) {
    std::string text;
    for (std::size_t i = 1; i < count; ++i) text += "0 0 0\n";
    for (int column = 0; column < 3; ++column) text.append(last).append(column < 2 ? " " : "\n");
    return text;
}

inline LutReading readLut(std::string_view text) { return ParsedLutFactory::readText(text, "look.cube"); }

/// A directory of its own that goes with the test.
class TemporaryDirectory {
public:
    TemporaryDirectory() {
        std::string name = (std::filesystem::temp_directory_path() / "corvex-lut-XXXXXX").string();
        path_ = ::mkdtemp(name.data());
    }
    TemporaryDirectory(const TemporaryDirectory&) = delete;
    TemporaryDirectory& operator=(const TemporaryDirectory&) = delete;
    ~TemporaryDirectory() { std::filesystem::remove_all(path_); }
    [[nodiscard]] const std::filesystem::path& path() const noexcept { return path_; }

private:
    std::filesystem::path path_;
};

}  // namespace corvex
