#pragma once

#include <Corvex/exported/OAVTranscodeArgumentFileFormatValue.h>
#include <Corvex/platform/FourCharacterCode.h>
#include <tools/corvex/worker/AudioFormatSettings.h>

namespace corvex::tool {

/// The code by which QuickTime and Core Audio name how the audio of a source is coded; 0 where they have none.
[[nodiscard]] FourCharacterCode coreAudioFormatOf(const AVCodecParameters& source) noexcept;

/// What the audio of a source is encoded as where the job's words leave it open: the replacement of the source's own
/// format, or the nearest to it that the file carries and this machine encodes. `preserveLossless`: nothing more may be
/// lost than the source has lost already, as when a copy was asked for that is not possible.
[[nodiscard]] const AudioFormatSettings& chosenAudioFormat(const AVCodecParameters& source, bool preserveLossless,
                                                           const OAVTranscodeArgumentFileFormatValue& file);

}  // namespace corvex::tool
