#pragma once

#include <array>
#include <span>

#include <Corvex/exported/CliFlag.h>
#include <Corvex/platform/TypedString.h>

namespace corvex::inline v0 {

/// General flags of a transcode.
class OAVTranscodeArgumentFlag : public TypedString<OAVTranscodeArgumentFlag> {
public:
    using TypedString::TypedString;

    /// The known flags in their fixed order.
    [[nodiscard]] static constexpr std::span<const OAVTranscodeArgumentFlag> allCases() noexcept;
    [[nodiscard]] constexpr std::string_view cliFlag() const noexcept { return rawValue(); }
    /// False exactly for the flags that are switches; true for any other text, known or not.
    [[nodiscard]] constexpr bool acceptsArguments() const noexcept;
};

inline constexpr OAVTranscodeArgumentFlag OAVInputPrefixFlag{"-in"};
inline constexpr OAVTranscodeArgumentFlag OAVOutputFileFlag{"-out"};
inline constexpr OAVTranscodeArgumentFlag OAVProgressFileFlag{"-progress_file"};
inline constexpr OAVTranscodeArgumentFlag OAVProgressOutputPrefixFlag{"-progress_prefix"};
inline constexpr OAVTranscodeArgumentFlag OAVOverwriteExistingFlag{"-overwrite"};
inline constexpr OAVTranscodeArgumentFlag OAVFileFormatFlag{"-file_format"};
inline constexpr OAVTranscodeArgumentFlag OAVColorLutFileFlag{"-clut"};
inline constexpr OAVTranscodeArgumentFlag OAVPrepareForWebFlag{"-web"};
inline constexpr OAVTranscodeArgumentFlag OAVPresetFlag{"-preset"};
inline constexpr OAVTranscodeArgumentFlag OAVWorkDirectoryFlag{"-work_dir"};
inline constexpr OAVTranscodeArgumentFlag OAVLegacyTranscodePipelineFlag{"-legacy-pipeline"};
inline constexpr OAVTranscodeArgumentFlag OAVLanguageCodeFlag{"-lang_code"};

inline constexpr std::array allTranscodeArgumentFlags{
    OAVInputPrefixFlag,
    OAVOutputFileFlag,
    OAVProgressFileFlag,
    OAVProgressOutputPrefixFlag,
    OAVOverwriteExistingFlag,
    OAVFileFormatFlag,
    OAVColorLutFileFlag,
    OAVPrepareForWebFlag,
    OAVPresetFlag,
    OAVWorkDirectoryFlag,
    OAVLegacyTranscodePipelineFlag,
    OAVLanguageCodeFlag,
};

constexpr std::span<const OAVTranscodeArgumentFlag> OAVTranscodeArgumentFlag::allCases() noexcept {
    return allTranscodeArgumentFlags;
}

constexpr bool OAVTranscodeArgumentFlag::acceptsArguments() const noexcept {
    return !(*this == OAVOverwriteExistingFlag || *this == OAVPrepareForWebFlag);
}

static_assert(CliFlag<OAVTranscodeArgumentFlag>);

}  // namespace corvex::inline v0
