#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>

#include <Corvex/platform/Export.h>
#include <Corvex/platform/FilesystemForward.h>

namespace corvex::inline v0 {

/// A regular file open for reading from front to back. Closed by its destructor at the latest. One thread at a time;
/// moving leaves an object that may only be destroyed.
class CORVEX_EXPORT InputFile {
public:
    /// None for what cannot be opened and for what is no regular file: a directory, a pipe, a device. Never waits, as
    /// opening a pipe otherwise would.
    [[nodiscard]] static std::optional<InputFile> open(const std::filesystem::path& path) noexcept;

    InputFile(InputFile&& other) noexcept;
    InputFile(const InputFile&) = delete;
    InputFile& operator=(const InputFile&) = delete;
    InputFile& operator=(InputFile&&) = delete;
    ~InputFile();

    /// The length of the file when it was opened, in bytes.
    [[nodiscard]] std::uint64_t size() const noexcept { return size_; }

    /// Fills `buffer` with the next bytes; fewer than its size only at the end of the file. None for a read error.
    [[nodiscard]] std::optional<std::size_t> read(std::span<char> buffer) noexcept;

    /// Whether closing went well. Only once.
    [[nodiscard]] bool close() noexcept;

private:
    explicit InputFile(int descriptor) noexcept : descriptor_(descriptor) {}

    int descriptor_;
    std::uint64_t size_ = 0;
};

/// The text of the file URL that names `path`, made absolute: "file:///shots/a%20b.cube" (RFC 8089).
[[nodiscard]] CORVEX_EXPORT std::string fileUrlText(const std::filesystem::path& path);

}  // namespace corvex::inline v0
