#pragma once

#include <span>

#include <Corvex/exported/FileExtension.h>
#include <Corvex/platform/Export.h>
#include <Corvex/platform/FilesystemForward.h>

namespace corvex::inline v0 {

/// Picks files by their extension. Refers to its list, which must outlive it. A plain value; any thread.
class ExtensionFilter {
public:
    /// The list is not copied; it usually is a constant.
    constexpr explicit ExtensionFilter(std::span<const FileExtension> permittedExtensions) noexcept
        : permittedExtensions_(permittedExtensions) {}

    /// As given.
    [[nodiscard]] constexpr std::span<const FileExtension> permittedExtensions() const noexcept {
        return permittedExtensions_;
    }
    /// Whether the path's extension is one of them, in any case of ASCII letters.
    /// The file need not exist. A name without an extension is refused.
    [[nodiscard]] CORVEX_EXPORT bool permitsExtension(const std::filesystem::path& path) const;

private:
    std::span<const FileExtension> permittedExtensions_;
};

}  // namespace corvex::inline v0
