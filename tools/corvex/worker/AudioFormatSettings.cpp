#include <tools/corvex/worker/AudioFormatSettings.h>

#include <algorithm>
#include <iterator>

namespace corvex::tool {
namespace {

constexpr AudioFormatSettings settings[] = {
    {OAVLpcmAudioFormatValue, "pcm_s16le", "pcm_s24le", 64},
    {OAVAacAudioFormatValue, "aac", nullptr, 8},
    {OAVAppleLosslessAudioFormatValue, "alac", nullptr, 8},
    {OAVAacHEAudioFormatValue, nullptr, nullptr, 0},
    {OAVAacELDLosslessAudioFormatValue, nullptr, nullptr, 0},
    {OAVAppleIMA41ADPCMAudioFormatValue, "adpcm_ima_qt", nullptr, 2},
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

bool canEncode(const AudioFormatSettings& row) noexcept {
    return row.encoder != nullptr && avcodec_find_encoder_by_name(row.encoder) != nullptr;
}

}  // namespace corvex::tool
