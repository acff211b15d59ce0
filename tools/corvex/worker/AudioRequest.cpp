#include <tools/corvex/worker/AudioRequest.h>

#include <algorithm>
#include <limits>
#include <utility>

#include <Corvex/exported/OAVTranscodeAudioArgumentFlag.h>
#include <Corvex/media/AudioChannelLabel.h>
#include <Corvex/platform/Text.h>
#include <tools/corvex/worker/RequestText.h>

namespace corvex::tool {
namespace {

using Arguments = TranscodeCliArguments;

/// The named layouts in the media libraries' language. The last three put the channels evenly around the listener.
constexpr std::pair<const OAVTranscodeArgumentAudioChannelLayoutValue*, const char*> layouts[] = {
    {&OAVMonoAudioLayout, "mono"},           {&OAVStereoAudioLayout, "stereo"},
    {&OAVQuadraphonicAudioLayout, "quad"},   {&OAVPentagonalAudioLayout, "5.0"},
    {&OAVHexagonalAudioLayout, "hexagonal"}, {&OAVOctagonalAudioLayout, "octagonal"},
};

/// Core Audio's layout tags are a number in the upper 16 bits and the count of channels in the lower.
constexpr std::pair<std::int64_t, const char*> layoutTags[] = {
    {(100 << 16) | 1, "mono"},      {(101 << 16) | 2, "stereo"}, {(102 << 16) | 2, "downmix"},
    {(108 << 16) | 4, "quad"},      {(109 << 16) | 5, "5.0"},    {(110 << 16) | 6, "hexagonal"},
    {(111 << 16) | 8, "octagonal"}, {(113 << 16) | 3, "3.0"},    {(121 << 16) | 6, "5.1"},
    {(126 << 16) | 8, "7.1(wide)"}, {(128 << 16) | 8, "7.1"},
};

/// Where the channel labels stand in the media libraries' layouts.
constexpr std::pair<AudioChannelLabel, const char*> speakers[] = {
    {AudioChannelLabel::left, "FL"},
    {AudioChannelLabel::right, "FR"},
    {AudioChannelLabel::center, "FC"},
    {AudioChannelLabel::lowFrequencyEffects, "LFE"},
    {AudioChannelLabel::leftSurround, "SL"},
    {AudioChannelLabel::rightSurround, "SR"},
    {AudioChannelLabel::leftSideSurround, "SL"},
    {AudioChannelLabel::rightSideSurround, "SR"},
    {AudioChannelLabel::leftRearSurround, "BL"},
    {AudioChannelLabel::rightRearSurround, "BR"},
    {AudioChannelLabel::leftCenter, "FLC"},
    {AudioChannelLabel::rightCenter, "FRC"},
    {AudioChannelLabel::centerSurround, "BC"},
    {AudioChannelLabel::leftTotal, "DL"},
    {AudioChannelLabel::rightTotal, "DR"},
    {AudioChannelLabel::mono, "FC"},
};

std::string layoutOfLabels(const Arguments& arguments, std::string_view text) {
    const auto labels = arguments.channelLayoutBitmap();
    if (!labels) {
        failExpecting("-acl_bitmap", text,
                      "channels by their short names; corvex transcode -audio_bitmap_values lists them");
    }
    std::string layout;
    for (const AudioChannelLabel label : *labels) {
        const auto* found =
            std::find_if(std::begin(speakers), std::end(speakers), [&](const auto& row) { return row.first == label; });
        if (found == std::end(speakers)) {
            throw JobError("-acl_bitmap: no speaker carries the channel " + std::string(rawValue(label)) + " here");
        }
        layout += (layout.empty() ? "" : "+") + std::string(found->second);
    }
    return layout;
}

/// The layout of the one flag that names one; "-a_ch_match" is the source's own.
std::string layoutOf(const Arguments& arguments) {
    std::string layout;
    std::string_view by = arguments.audioOutputChannelsMatchSource() ? OAVAudioChannelMatchSourceFlag.cliFlag() : "";
    const auto choose = [&](std::string_view flag, std::string chosen) {
        if (!by.empty()) throw UsageError(std::string(flag) + ": contradicts " + std::string(by));
        by = flag;
        layout = std::move(chosen);
    };
    if (const auto text = arguments.argumentFlagValue(OAVAudioChannelLayoutFlag.cliFlag())) {
        const auto* named = std::find_if(std::begin(layouts), std::end(layouts),
                                         [&](const auto& row) { return row.first->rawValue() == *text; });
        const auto channels = arguments.outputChannels();
        if (!channels || *channels < 1 || *channels > 64) {
            failExpecting(
                "-acl", *text,
                "1 to 64 channels or one of " + listOf(OAVTranscodeArgumentAudioChannelLayoutValue::allCases()));
        }
        choose("-acl", named != std::end(layouts) ? named->second : std::to_string(*channels) + "c");
    }
    if (const auto text = arguments.argumentFlagValue(OAVAudioChannelLayoutTagFlag.cliFlag())) {
        const auto tag = arguments.channelLayoutTag();
        const auto* known = std::find_if(std::begin(layoutTags), std::end(layoutTags),
                                         [&](const auto& row) { return row.first == tag; });
        if (known == std::end(layoutTags)) {
            failExpecting("-acl_tag", *text, "a Core Audio layout tag that is known here, as 6619138 (stereo)");
        }
        choose("-acl_tag", known->second);
    }
    if (const auto text = arguments.argumentFlagValue(OAVAudioChannelLayoutBitmapFlag.cliFlag())) {
        choose("-acl_bitmap", layoutOfLabels(arguments, *text));
    }
    if (arguments.audioOutputIsDiscrete() && !layout.empty()) {
        throw UsageError("-adiscrete: contradicts " + std::string(by) + ", as each track then has one channel");
    }
    return layout;
}

std::map<std::uint64_t, std::set<std::uint64_t>> ignoredTracksOf(const Arguments& arguments) {
    constexpr std::string_view flag = OAVAudioIgnoreTracksPrefixFlag.rawValue();
    for (const auto& [key, value] : arguments.flagValueLookup()) {
        if (!key.starts_with(flag)) continue;
        Arguments single;
        single.setArgumentFlagValue("0", key);
        if (single.ignoredAudioFileTracks().empty()) {
            throw UsageError(key + ": expected -ac_omit_<number of the input file>");
        }
        arguments.enumerateListValues(value, [&, &text = value](std::string_view piece) {
            if (!parseInteger<std::uint64_t>(piece, SignRule::plusOnly)) {
                failExpecting(flag, text, "a list of track numbers from 0, as [0 2");
            }
        });
    }
    return arguments.ignoredAudioFileTracks();
}

}  // namespace

std::optional<AudioRequest> AudioRequest::make(const Arguments& arguments) {
    if (arguments.hasArgumentFlag(OAVNoAudioFlag.cliFlag())) return std::nullopt;
    AudioRequest request;
    request.ignoredTracks = ignoredTracksOf(arguments);
    request.language = languageOf(arguments, OAVAudioLanguageCodeFlag);
    requireAvailableEngine(arguments, OAVAudioDecodeEngineFlag);
    // A preset may have brought the options of an encoder along; -acopy outranks them.
    if (arguments.hasArgumentFlag(OAVCopyAudioFlag.cliFlag())) {
        if (arguments.audioOutputIsDiscrete()) throw UsageError("-adiscrete: contradicts -acopy");
        request.copies = true;
        return request;
    }
    request.sampleRate = wholeNumber<int>(arguments, OAVAudioSampleRateFlag, 1, 768'000, "samples per second");
    request.bitsPerSample = wholeNumber<int>(arguments, OAVAudioBitsPerChannelFlag, 1, 64, "bits of a sample");
    request.bitsPerSecond =
        wholeNumber<std::int64_t>(arguments, OAVAudioBitRateFlag, 1000, 10'000'000, "bits per second");
    if (const auto text = arguments.argumentFlagValue(OAVAudioQualityFlag.cliFlag())) {
        request.quality = arguments.audioQuality();
        if (!request.quality) failExpecting("-aqual", *text, "min, low, medium, high or max");
    }
    if (const auto format = arguments.audioFormat()) {
        request.format = &audioFormatSettings(*format);
        request.requireFits(*request.format);
    }
    request.layout = layoutOf(arguments);
    request.isDiscrete = arguments.audioOutputIsDiscrete();
    return request;
}

void AudioRequest::requireFits(const AudioFormatSettings& settings) const {
    const std::string name(settings.format.rawValue());
    if (bitsPerSample && !encoderOf(settings, *bitsPerSample)) {
        failExpecting("-abpc", std::to_string(*bitsPerSample), depthsText(settings) + " for " + name);
    }
    if (bitsPerSecond && !settings.hasBitRate) {
        throw UsageError("-abr: the bit rate of " + name + " follows from its samples; remove the flag");
    }
    if (quality && !settings.hasBitRate) throw UsageError("-aqual: " + name + " loses nothing to choose from");
}

}  // namespace corvex::tool
