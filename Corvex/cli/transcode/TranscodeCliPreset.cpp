#include <Corvex/cli/transcode/TranscodeCliPreset.h>

#include <Corvex/exported/TranscodeVocabulary.h>

namespace corvex::inline v0 {
namespace {

constexpr std::array cloudArguments = std::to_array<TranscodePresetArgument>({
    {OAVFileFormatFlag.rawValue(), OAVQuickTimeFileFormat.rawValue()},
    {OAVVideoFormatFlag.rawValue(), OAVAvcH264Codec.rawValue()},
    {OAVVideoDimensionsFlag.rawValue(), "960x540"},
    {OAVVideoAspectScalingFlag.rawValue(), OAVStretchAspect.rawValue()},
    {OAVVideoBitRateFlag.rawValue(), "3"},  // megabits per second
    {OAVPrepareForWebFlag.rawValue(), ""},
    {OAVAudioFormatFlag.rawValue(), OAVAacAudioFormatValue.rawValue()},
    {OAVAudioSampleRateFlag.rawValue(), "48000"},
});

constexpr std::array proRes4444XQArguments = std::to_array<TranscodePresetArgument>({
    {OAVFileFormatFlag.rawValue(), OAVQuickTimeFileFormat.rawValue()},
    {OAVVideoFormatFlag.rawValue(), OAVProRes4444XQ.rawValue()},
    {OAVAudioFormatFlag.rawValue(), OAVLpcmAudioFormatValue.rawValue()},
});

ArgumentLookup makeLookup(TranscodeCliPreset preset) {
    ArgumentLookup lookup;
    for (const auto& [flag, value] : orderedArguments(preset)) lookup.insert_or_assign(flag, std::string(value));
    return lookup;
}

}  // namespace

OAVTranscodePresetValue presetCliValue(TranscodeCliPreset preset) noexcept {
    return preset == TranscodeCliPreset::cloud ? OAVOrvaneCloudPresetValue : OAVOrvaneProRes4444XQPresetValue;
}

std::span<const TranscodePresetArgument> orderedArguments(TranscodeCliPreset preset) noexcept {
    if (preset == TranscodeCliPreset::cloud) return cloudArguments;
    require(preset == TranscodeCliPreset::proRes4444XQ, "unexpected enumeration case");
    return proRes4444XQArguments;
}

std::vector<std::string> orderedArgumentsAsList(TranscodeCliPreset preset) {
    std::vector<std::string> words;
    for (const auto& [flag, value] : orderedArguments(preset)) {
        words.emplace_back(flag);
        words.emplace_back(value);
    }
    return words;
}

const ArgumentLookup& presetArguments(TranscodeCliPreset preset) {
    // Never destroyed, so that destructors of static objects may still ask.
    static const auto& cloud = *new ArgumentLookup(makeLookup(TranscodeCliPreset::cloud));
    static const auto& proRes4444XQ = *new ArgumentLookup(makeLookup(TranscodeCliPreset::proRes4444XQ));
    return preset == TranscodeCliPreset::cloud ? cloud : proRes4444XQ;
}

}  // namespace corvex::inline v0
