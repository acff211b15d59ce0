#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include <Corvex/cli/transcode/TranscodeCliArguments.h>
#include <tools/corvex/worker/AudioFormatSettings.h>

namespace corvex::tool {

/// What is asked of the audio: to be copied as it is where that can be done, or encoded.
struct AudioRequest {
    bool copies = false;
    const AudioFormatSettings* format = nullptr;  ///< nullptr: the source's own format decides.
    std::optional<int> sampleRate;                ///< Samples per second; the source's own when absent.
    std::optional<int> bitsPerSample;
    std::optional<std::int64_t> bitsPerSecond;
    std::optional<TranscodeAudioQuality> quality;  ///< Chooses the bit rate where none is given.
    std::string layout;       ///< A layout in the media libraries' language; empty: the source's own.
    bool isDiscrete = false;  ///< A mono track for each channel.
    std::string language;     ///< ISO 639-2; empty: not stated.
    std::map<std::uint64_t, std::set<std::uint64_t>> ignoredTracks;  ///< By input file, both from 0.

    /// None when no audio is wanted. Throws UsageError or JobError naming the flag at fault.
    [[nodiscard]] static std::optional<AudioRequest> make(const TranscodeCliArguments& arguments);

    /// Throws UsageError naming the flag at fault when a track encoded with `settings` cannot be as the request says.
    void requireFits(const AudioFormatSettings& settings) const;
};

}  // namespace corvex::tool
