// The typed options of TranscodeCliArguments: each reads the stored text of its flag and writes through
// setArgumentFlagValue.

#include <array>

#include <Corvex/cli/transcode/TranscodeCLIFlag.h>
#include <Corvex/cli/transcode/TranscodeCliArguments.h>
#include <Corvex/exported/OrvaneUTType.h>
#include <Corvex/platform/NumberText.h>
#include <Corvex/platform/Text.h>

namespace corvex::inline v0 {
namespace {

using Arguments = TranscodeCliArguments;
using OptionalText = std::optional<std::string_view>;

constexpr std::string_view explicitOutputFileTypeKey = rawValue(TranscodeCLIFlag::ftype);

OptionalText valueOf(const Arguments& arguments, const auto& flag) {
    return arguments.argumentFlagValue(flag.cliFlag());
}

void setSwitch(Arguments& arguments, const auto& flag, bool isOn) {
    arguments.setArgumentFlagValue(isOn ? OptionalText("") : std::nullopt, flag.cliFlag());
}

template <class Value>
std::optional<Value> typedValueOf(const Arguments& arguments, const auto& flag) {
    const auto text = valueOf(arguments, flag);
    return text ? std::optional<Value>(std::in_place, *text) : std::nullopt;
}

void setTypedValue(Arguments& arguments, const auto& value, const auto& flag) {
    arguments.setArgumentFlagValue(value ? OptionalText(value->rawValue()) : std::nullopt, flag.cliFlag());
}

}  // namespace

OptionalText Arguments::outputFile() const { return valueOf(*this, OAVOutputFileFlag); }
void Arguments::setOutputFile(OptionalText path) { setArgumentFlagValue(path, OAVOutputFileFlag.cliFlag()); }

OptionalText Arguments::progressFile() const { return valueOf(*this, OAVProgressFileFlag); }
void Arguments::setProgressFile(OptionalText path) { setArgumentFlagValue(path, OAVProgressFileFlag.cliFlag()); }

OptionalText Arguments::progressOutputPrefix() const { return valueOf(*this, OAVProgressOutputPrefixFlag); }
void Arguments::setProgressOutputPrefix(OptionalText prefix) {
    setArgumentFlagValue(prefix, OAVProgressOutputPrefixFlag.cliFlag());
}

OptionalText Arguments::workDirectory() const { return valueOf(*this, OAVWorkDirectoryFlag); }
void Arguments::setWorkDirectory(OptionalText path) { setArgumentFlagValue(path, OAVWorkDirectoryFlag.cliFlag()); }

OptionalText Arguments::languageCode() const { return valueOf(*this, OAVLanguageCodeFlag); }
void Arguments::setLanguageCode(OptionalText code) { setArgumentFlagValue(code, OAVLanguageCodeFlag.cliFlag()); }

bool Arguments::shouldOverwrite() const { return valueOf(*this, OAVOverwriteExistingFlag).has_value(); }
void Arguments::setShouldOverwrite(bool overwrites) { setSwitch(*this, OAVOverwriteExistingFlag, overwrites); }

bool Arguments::useLegacyPipeline() const { return valueOf(*this, OAVLegacyTranscodePipelineFlag).has_value(); }
void Arguments::setUseLegacyPipeline(bool usesLegacyPipeline) {
    setSwitch(*this, OAVLegacyTranscodePipelineFlag, usesLegacyPipeline);
}

bool Arguments::prepareForWeb() const { return valueOf(*this, OAVPrepareForWebFlag).has_value(); }
void Arguments::setPrepareForWeb(bool preparesForWeb) { setSwitch(*this, OAVPrepareForWebFlag, preparesForWeb); }

std::optional<OAVTranscodeArgumentFileFormatValue> Arguments::outputFileFormat() const {
    return typedValueOf<OAVTranscodeArgumentFileFormatValue>(*this, OAVFileFormatFlag);
}
void Arguments::setOutputFileFormat(const std::optional<OAVTranscodeArgumentFileFormatValue>& format) {
    setTypedValue(*this, format, OAVFileFormatFlag);
}

std::optional<OrvaneUTType> Arguments::explicitOutputFileType() const {
    const auto text = argumentFlagValue(explicitOutputFileTypeKey);
    return text ? fromRawValue<OrvaneUTType>(*text) : std::nullopt;
}
void Arguments::setExplicitOutputFileType(std::optional<OrvaneUTType> type) {
    setArgumentFlagValue(type ? OptionalText(rawValue(*type)) : std::nullopt, explicitOutputFileTypeKey);
}

std::optional<OAVTranscodeArgumentVideoCodecValue> Arguments::videoFormat() const {
    return typedValueOf<OAVTranscodeArgumentVideoCodecValue>(*this, OAVVideoFormatFlag);
}
void Arguments::setVideoFormat(const std::optional<OAVTranscodeArgumentVideoCodecValue>& codec) {
    setTypedValue(*this, codec, OAVVideoFormatFlag);
}

std::optional<OAVTranscodeArgumentAspectRatioValue> Arguments::aspectScaling() const {
    return typedValueOf<OAVTranscodeArgumentAspectRatioValue>(*this, OAVVideoAspectScalingFlag);
}
void Arguments::setAspectScaling(const std::optional<OAVTranscodeArgumentAspectRatioValue>& scaling) {
    setTypedValue(*this, scaling, OAVVideoAspectScalingFlag);
}

std::optional<VideoCropAnchor> Arguments::videoCropAnchor() const {
    auto anchor = typedValueOf<OAVTranscodeArgumentOverlayAnchorValue>(*this, OAVVideoAspectCropAnchorFlag);
    return anchor ? std::optional<VideoCropAnchor>(std::in_place, *std::move(anchor)) : std::nullopt;
}
void Arguments::setVideoCropAnchor(const std::optional<VideoCropAnchor>& anchor) {
    setTypedValue(*this, anchor, OAVVideoAspectCropAnchorFlag);
}

std::optional<PictureSize> Arguments::videoDimensions() const {
    const auto text = valueOf(*this, OAVVideoDimensionsFlag);
    if (!text) return std::nullopt;
    const std::string lowered = lowercased(*text);
    std::array<std::optional<double>, 2> sides;
    std::size_t count = 0;
    forEachPiece(lowered, "x", [&](std::string_view piece) {
        if (count < sides.size()) sides[count++] = parseFloat<double>(piece);
    });
    return sides[0] && sides[1] ? std::optional(PictureSize(*sides[0], *sides[1])) : std::nullopt;
}
void Arguments::setVideoDimensions(std::optional<PictureSize> size) {
    const std::string text = size ? shortestText(size->width) + "x" + shortestText(size->height) : std::string();
    setArgumentFlagValue(size ? OptionalText(text) : std::nullopt, OAVVideoDimensionsFlag.cliFlag());
}

std::optional<float> Arguments::videoBitRate() const {
    const auto text = valueOf(*this, OAVVideoBitRateFlag);
    return text ? parseFloat<float>(*text) : std::nullopt;
}
void Arguments::setVideoBitRate(std::optional<float> megabitsPerSecond) {
    const std::string text = megabitsPerSecond ? shortestText(*megabitsPerSecond) : std::string();
    setArgumentFlagValue(megabitsPerSecond ? OptionalText(text) : std::nullopt, OAVVideoBitRateFlag.cliFlag());
}
std::optional<float> Arguments::videoBitRateAsBitsPerSecond() const {
    const auto megabits = videoBitRate();
    return megabits ? std::optional(*megabits * 1'000'000.0F) : std::nullopt;
}

std::optional<OAVTranscodeArgumentAudioFormatValue> Arguments::audioFormat() const {
    return typedValueOf<OAVTranscodeArgumentAudioFormatValue>(*this, OAVAudioFormatFlag);
}
void Arguments::setAudioFormat(const std::optional<OAVTranscodeArgumentAudioFormatValue>& format) {
    setTypedValue(*this, format, OAVAudioFormatFlag);
}

std::optional<std::int64_t> Arguments::sampleRate() const {
    const auto text = valueOf(*this, OAVAudioSampleRateFlag);
    return text ? parseInteger<std::int64_t>(*text) : std::nullopt;
}
void Arguments::setSampleRate(std::optional<std::int64_t> samplesPerSecond) {
    const std::string text = samplesPerSecond ? std::to_string(*samplesPerSecond) : std::string();
    setArgumentFlagValue(samplesPerSecond ? OptionalText(text) : std::nullopt, OAVAudioSampleRateFlag.cliFlag());
}

}  // namespace corvex::inline v0
