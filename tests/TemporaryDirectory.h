#pragma once

#include <cstdlib>
#include <filesystem>
#include <string>

namespace corvex::test {

/// A directory of its own that goes with the test.
class TemporaryDirectory {
public:
    explicit TemporaryDirectory(const std::filesystem::path& parent = std::filesystem::temp_directory_path()) {
        std::string name = (parent / "corvex-XXXXXX").string();
        path_ = ::mkdtemp(name.data());
    }
    TemporaryDirectory(const TemporaryDirectory&) = delete;
    TemporaryDirectory& operator=(const TemporaryDirectory&) = delete;
    ~TemporaryDirectory() { std::filesystem::remove_all(path_); }
    [[nodiscard]] const std::filesystem::path& path() const noexcept { return path_; }

private:
    std::filesystem::path path_;
};

}  // namespace corvex::test
