#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>

#include <Corvex/exported/OAVTranscodeArgumentFlag.h>
#include <Corvex/platform/Export.h>
#include <Corvex/platform/TypedString.h>

namespace corvex::inline v0 {

enum class FileExtension : std::uint8_t;

/// The container that a transcode writes ("-file_format"). Any text is legal; unknown ones have no extensions.
class OAVTranscodeArgumentFileFormatValue : public TypedString<OAVTranscodeArgumentFileFormatValue> {
public:
    using TypedString::TypedString;

    /// The flag under which the value stands, "-file_format", typed and as text.
    [[nodiscard]] static constexpr OAVTranscodeArgumentFlag fileFlag() noexcept { return OAVFileFormatFlag; }
    [[nodiscard]] constexpr std::string_view cliFlag() const noexcept { return OAVFileFormatFlag.rawValue(); }

    /// The extensions that a file of this format may have, the format's own first; empty for an unknown format. Movies
    /// of either kind may be called mov or mp4.
    [[nodiscard]] CORVEX_EXPORT std::span<const FileExtension> validExtensions() const noexcept;
    /// The first of them, or none.
    [[nodiscard]] CORVEX_EXPORT std::optional<FileExtension> preferredExtension() const noexcept;
};

/// A QuickTime movie, which takes every codec of the vocabulary.
inline constexpr OAVTranscodeArgumentFileFormatValue OAVQuickTimeFileFormat{"qt"};
/// ISO/IEC 14496-14; DNx, ProRes, Motion JPEG and linear PCM are not written into it.
inline constexpr OAVTranscodeArgumentFileFormatValue OAVMp4Format{"mp4"};
/// RIFF WAVE: one track of linear PCM, no pictures.
inline constexpr OAVTranscodeArgumentFileFormatValue OAVWaveFileFormat{"wav"};

/// The known values in their fixed order.
template <>
inline constexpr std::array knownValues<OAVTranscodeArgumentFileFormatValue>{
    OAVQuickTimeFileFormat,
    OAVMp4Format,
    OAVWaveFileFormat,
};

static_assert(CLIArgumentOption<OAVTranscodeArgumentFileFormatValue>);

}  // namespace corvex::inline v0
