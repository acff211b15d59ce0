// The audio options of TranscodeCliArguments.

#include <algorithm>
#include <utility>

#include <Corvex/cli/transcode/TranscodeCliArguments.h>
#include <Corvex/cli/transcode/internal/TranscodeOptionAccess.h>
#include <Corvex/exported/OAVTranscodeAudioArgumentFlag.h>
#include <Corvex/media/AudioChannelLabel.h>

namespace corvex::inline v0 {

using namespace options;  // NOLINT(google-build-using-namespace): the other half of this file
using Arguments = TranscodeCliArguments;

namespace {

constexpr std::string_view omitFlag = OAVAudioIgnoreTracksPrefixFlag.rawValue();

constexpr std::pair<const OAVTranscodeArgumentAudioChannelLayoutValue*, std::int64_t> channelsOfLayouts[] = {
    {&OAVMonoAudioLayout, 1},       {&OAVStereoAudioLayout, 2},    {&OAVQuadraphonicAudioLayout, 4},
    {&OAVPentagonalAudioLayout, 5}, {&OAVHexagonalAudioLayout, 6}, {&OAVOctagonalAudioLayout, 8},
};

/// The input file that a key of the "-ac_omit" family speaks of; none for another key.
std::optional<std::uint64_t> omittingFile(std::string_view key) {
    if (!key.starts_with(omitFlag)) return std::nullopt;
    key.remove_prefix(omitFlag.size());
    if (key.empty()) return 0;
    return key.starts_with('_') ? parseInteger<std::uint64_t>(key.substr(1), SignRule::plusOnly) : std::nullopt;
}

}  // namespace

std::optional<OAVTranscodeArgumentAudioFormatValue> Arguments::audioFormat() const {
    return typedValueOf<OAVTranscodeArgumentAudioFormatValue>(*this, OAVAudioFormatFlag);
}
void Arguments::setAudioFormat(const std::optional<OAVTranscodeArgumentAudioFormatValue>& value) {
    setTypedValue(*this, value, OAVAudioFormatFlag);
}

std::optional<OAVTranscodeArgumentAudioChannelLayoutValue> Arguments::channelLayout() const {
    return typedValueOf<OAVTranscodeArgumentAudioChannelLayoutValue>(*this, OAVAudioChannelLayoutFlag);
}
void Arguments::setChannelLayout(const std::optional<OAVTranscodeArgumentAudioChannelLayoutValue>& value) {
    setTypedValue(*this, value, OAVAudioChannelLayoutFlag);
}

std::optional<TranscodeAudioQuality> Arguments::audioQuality() const {
    const auto text = valueOf(*this, OAVAudioQualityFlag);
    return text ? fromRawValue<TranscodeAudioQuality>(*text) : std::nullopt;
}
void Arguments::setAudioQuality(std::optional<TranscodeAudioQuality> quality) {
    setText(*this, quality ? OptionalText(rawValue(*quality)) : std::nullopt, OAVAudioQualityFlag);
}

std::optional<std::int64_t> Arguments::audioBitRate() const {
    return numberOf<std::int64_t>(*this, OAVAudioBitRateFlag);
}
void Arguments::setAudioBitRate(std::optional<std::int64_t> value) { setNumber(*this, value, OAVAudioBitRateFlag); }

std::optional<std::int64_t> Arguments::sampleRate() const {
    return numberOf<std::int64_t>(*this, OAVAudioSampleRateFlag);
}
void Arguments::setSampleRate(std::optional<std::int64_t> value) { setNumber(*this, value, OAVAudioSampleRateFlag); }

std::optional<std::int64_t> Arguments::audioBitsPerChannel() const {
    return numberOf<std::int64_t>(*this, OAVAudioBitsPerChannelFlag);
}
void Arguments::setAudioBitsPerChannel(std::optional<std::int64_t> value) {
    setNumber(*this, value, OAVAudioBitsPerChannelFlag);
}

std::optional<std::int64_t> Arguments::channelLayoutTag() const {
    return numberOf<std::int64_t>(*this, OAVAudioChannelLayoutTagFlag);
}
void Arguments::setChannelLayoutTag(std::optional<std::int64_t> value) {
    setNumber(*this, value, OAVAudioChannelLayoutTagFlag);
}

std::optional<std::int64_t> Arguments::outputChannels() const {
    const auto text = valueOf(*this, OAVAudioChannelLayoutFlag);
    if (!text) return std::nullopt;
    if (const auto number = parseInteger<std::int64_t>(*text)) return number;
    for (const auto& [layout, channels] : channelsOfLayouts) {
        if (layout->rawValue() == *text) return channels;
    }
    return std::nullopt;
}

std::optional<std::vector<AudioChannelLabel>> Arguments::channelLayoutBitmap() const {
    const auto text = valueOf(*this, OAVAudioChannelLayoutBitmapFlag);
    if (!text) return std::nullopt;
    std::vector<AudioChannelLabel> labels;
    bool areAllKnown = true;
    enumerateListValues(*text, [&](std::string_view piece) {
        const auto label = audioChannelLabel(piece);
        areAllKnown = areAllKnown && label.has_value();
        if (label) labels.push_back(*label);
    });
    return areAllKnown ? std::optional(std::move(labels)) : std::nullopt;
}
void Arguments::setChannelLayoutBitmap(const std::optional<std::vector<AudioChannelLabel>>& labels) {
    std::vector<std::string> names;
    if (labels) {
        for (const AudioChannelLabel label : *labels) names.emplace_back(rawValue(label));
    }
    const std::string list = buildCLIList(names);
    setText(*this, names.empty() ? std::nullopt : OptionalText(list), OAVAudioChannelLayoutBitmapFlag);
}

OptionalText Arguments::audioLanguageCode() const { return valueOf(*this, OAVAudioLanguageCodeFlag); }
void Arguments::setAudioLanguageCode(OptionalText value) { setText(*this, value, OAVAudioLanguageCodeFlag); }

bool Arguments::audioOutputIsDiscrete() const { return isSet(*this, OAVDiscreteAudioFlag); }
void Arguments::setAudioOutputIsDiscrete(bool isOn) { setSwitch(*this, isOn, OAVDiscreteAudioFlag); }

bool Arguments::audioOutputChannelsMatchSource() const { return isSet(*this, OAVAudioChannelMatchSourceFlag); }
void Arguments::setAudioOutputChannelsMatchSource(bool isOn) { setSwitch(*this, isOn, OAVAudioChannelMatchSourceFlag); }

std::map<std::uint64_t, std::set<std::uint64_t>> Arguments::ignoredAudioFileTracks() const {
    std::map<std::uint64_t, std::set<std::uint64_t>> files;
    const auto& lookup = flagValueLookup_;
    for (auto entry = lookup.lower_bound(omitFlag); entry != lookup.end() && entry->first.starts_with(omitFlag);
         ++entry) {
        const auto file = omittingFile(entry->first);
        if (!file) continue;
        enumerateListValues(entry->second, [&](std::string_view piece) {
            if (const auto track = parseInteger<std::uint64_t>(piece, SignRule::plusOnly)) files[*file].insert(*track);
        });
    }
    return files;
}
void Arguments::setIgnoredAudioTracks(std::uint64_t file, const std::set<std::uint64_t>& tracks) {
    flagValueLookup_.eraseIf([&](const auto& entry) { return omittingFile(entry.first) == file; });
    if (tracks.empty()) return;
    std::vector<std::string> numbers;
    numbers.reserve(tracks.size());
    for (const std::uint64_t track : tracks) numbers.push_back(std::to_string(track));
    setArgumentFlagValue(buildCLIList(numbers), std::string(omitFlag) + "_" + std::to_string(file));
}

}  // namespace corvex::inline v0
