#pragma once

#include <optional>
#include <string_view>

namespace corvex::tool {

/// The text by which the QuickTime writer of the media libraries knows the Macintosh language number (QuickTime File
/// Format Specification, "Language code values") of an ISO 639-2 language; none when there is no number, so that a
/// QuickTime file cannot state the language. "und" is stated by leaving it open.
[[nodiscard]] std::optional<std::string_view> quickTimeLanguage(std::string_view iso639) noexcept;

}  // namespace corvex::tool
