#pragma once

#include <array>

#include <Corvex/exported/CliFlag.h>
#include <Corvex/platform/TypedString.h>

namespace corvex::inline v0 {

/// Flags of a transcode as a whole: what it reads, where it writes, how it reports. A parser lower-cases flags before
/// it compares them.
class OAVTranscodeArgumentFlag : public TypedString<OAVTranscodeArgumentFlag> {
public:
    using TypedString::TypedString;

    [[nodiscard]] constexpr std::string_view cliFlag() const noexcept { return rawValue(); }
    /// False exactly for the flags that are switches; true for any other text, known or not.
    [[nodiscard]] constexpr bool acceptsArguments() const noexcept;
};

/// Path of the source; also the prefix of several: "-in_0_1" is the second file (position 1) of group 0.
inline constexpr OAVTranscodeArgumentFlag OAVInputPrefixFlag{"-in"};
/// Path of the target.
inline constexpr OAVTranscodeArgumentFlag OAVOutputFileFlag{"-out"};
/// Path of the file to which progress lines are written.
inline constexpr OAVTranscodeArgumentFlag OAVProgressFileFlag{"-progress_file"};
/// Text before each progress line, by which a host tells its transcodes apart. Parsing lower-cases it.
inline constexpr OAVTranscodeArgumentFlag OAVProgressOutputPrefixFlag{"-progress_prefix"};
/// A switch: replace a target that exists.
inline constexpr OAVTranscodeArgumentFlag OAVOverwriteExistingFlag{"-overwrite"};
/// An OAVTranscodeArgumentFileFormatValue; without it the target's extension decides.
inline constexpr OAVTranscodeArgumentFlag OAVFileFormatFlag{"-file_format"};
/// Path of a look-up table for every picture (see ParsedLutFactory for what is read).
inline constexpr OAVTranscodeArgumentFlag OAVColorLutFileFlag{"-clut"};
/// A switch: the index of a movie goes in front of its media, so that it plays while it loads.
inline constexpr OAVTranscodeArgumentFlag OAVPrepareForWebFlag{"-web"};
/// An OAVTranscodePresetValue, which parsing expands into the preset's flags; flags that are given outrank those.
inline constexpr OAVTranscodeArgumentFlag OAVPresetFlag{"-preset"};
/// Folder for what is not complete yet.
inline constexpr OAVTranscodeArgumentFlag OAVWorkDirectoryFlag{"-work_dir"};
/// Asks for the transcoder's earlier pipeline. Counts as set with any value, and is the one flag spelt with a hyphen.
inline constexpr OAVTranscodeArgumentFlag OAVLegacyTranscodePipelineFlag{"-legacy-pipeline"};
/// Language of the video track, three letters of ISO 639-2.
inline constexpr OAVTranscodeArgumentFlag OAVLanguageCodeFlag{"-lang_code"};

/// The known flags in their fixed order.
template <>
inline constexpr std::array knownValues<OAVTranscodeArgumentFlag>{
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

constexpr bool OAVTranscodeArgumentFlag::acceptsArguments() const noexcept {
    return !(*this == OAVOverwriteExistingFlag || *this == OAVPrepareForWebFlag);
}

static_assert(CliFlag<OAVTranscodeArgumentFlag>);

}  // namespace corvex::inline v0
