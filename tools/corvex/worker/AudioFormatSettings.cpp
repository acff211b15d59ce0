#include <tools/corvex/worker/AudioFormatSettings.h>

#include <algorithm>
#include <iterator>

namespace corvex::tool {
namespace {

constexpr AudioFormatSettings settings[] = {
    {OAVLpcmAudioFormatValue, "pcm_s16le", "pcm_s24le", "pcm_s32le", true, false, 64},
    {OAVAacAudioFormatValue, "aac", nullptr, nullptr, false, true, 8},
    {OAVAppleLosslessAudioFormatValue, "alac", nullptr, nullptr, true, false, 8},
    {OAVAacHEAudioFormatValue, nullptr, nullptr, nullptr, false, true, 0},
    {OAVAacELDLosslessAudioFormatValue, nullptr, nullptr, nullptr, false, true, 0},
    {OAVAppleIMA41ADPCMAudioFormatValue, "adpcm_ima_qt", nullptr, nullptr, false, false, 2},
};
static_assert(std::size(settings) == OAVTranscodeArgumentAudioFormatValue::allCases().size());

std::string namesOfEncodable() {
    std::string names;
    for (const auto& row : settings) {
        if (!canEncode(row)) continue;
        names += names.empty() ? "" : ", ";
        names += row.format.rawValue();
    }
    return names;
}

}  // namespace

std::span<const AudioFormatSettings> allAudioFormatSettings() noexcept { return settings; }

const AudioFormatSettings& audioFormatSettings(const OAVTranscodeArgumentAudioFormatValue& format) {
    const auto found =
        std::find_if(std::begin(settings), std::end(settings), [&](const auto& row) { return row.format == format; });
    const std::string name(format.rawValue());
    if (found == std::end(settings)) throw UsageError("-acodec '" + name + "': expected one of " + namesOfEncodable());
    if (!canEncode(*found)) {
        throw JobError("-acodec " + name + ": this machine has no encoder for it; expected one of " +
                       namesOfEncodable());
    }
    return *found;
}

const char* encoderOf(const AudioFormatSettings& row, int bitsPerSample) noexcept {
    if (!row.has24) return nullptr;
    if (bitsPerSample == 16) return row.encoder;
    if (bitsPerSample == 24) return row.encoder24 != nullptr ? row.encoder24 : row.encoder;
    return bitsPerSample == 32 ? row.encoder32 : nullptr;
}

std::string depthsText(const AudioFormatSettings& row) {
    if (!row.has24) return "no flag, as there is no depth to choose,";
    return row.encoder32 != nullptr ? "16, 24 or 32" : "16 or 24";
}

bool canEncode(const AudioFormatSettings& row) noexcept {
    return row.encoder != nullptr && avcodec_find_encoder_by_name(row.encoder) != nullptr;
}

}  // namespace corvex::tool
