// The video options of TranscodeCliArguments.

#include <algorithm>
#include <array>
#include <cmath>
#include <filesystem>
#include <limits>
#include <memory>
#include <thread>

#include <Corvex/cli/transcode/GpuDevice.h>
#include <Corvex/cli/transcode/TranscodeCLIFlag.h>
#include <Corvex/cli/transcode/TranscodeCliArguments.h>
#include <Corvex/cli/transcode/internal/TranscodeOptionAccess.h>
#include <Corvex/cli/transcode/optionDictionary.h>
#include <Corvex/color/OrvanePixelTransferFunction.h>
#include <Corvex/color/OrvaneVideoColorMatrix.h>
#include <Corvex/exported/OAVTranscodeAudioArgumentFlag.h>
#include <Corvex/platform/internal/ProcessWide.h>

namespace corvex::inline v0 {

using namespace options;  // NOLINT(google-build-using-namespace): the other half of this file
using Arguments = TranscodeCliArguments;

namespace {

ProcessWide<std::uint64_t>& frameCapacity() {
    // Never destroyed, so that destructors of static objects may still ask.
    static auto& holder = *new ProcessWide<std::uint64_t>(
        [] { return std::uint64_t{std::max(1U, std::thread::hardware_concurrency())}; });
    return holder;
}

/// One of the short flags, which are a closed enumeration, as the helpers of this file take flags.
struct ShortFlag {
    TranscodeCLIFlag flag;
    [[nodiscard]] constexpr std::string_view cliFlag() const noexcept { return v0::cliFlag(flag); }
};
constexpr ShortFlag scaleFlag{TranscodeCLIFlag::vscale};
constexpr ShortFlag widthFlag{TranscodeCLIFlag::ovw};
constexpr ShortFlag heightFlag{TranscodeCLIFlag::ovh};

constexpr std::int32_t largestSide = std::numeric_limits<std::int32_t>::max();

/// Rounded down, limited, and raised to an even number, which 2^31 - 1 has no room for.
std::int32_t evenSide(double side) noexcept {
    const double whole = std::clamp(std::floor(side), 0.0, static_cast<double>(largestSide));
    const auto pixels = static_cast<std::int32_t>(std::isnan(whole) ? 0 : whole);
    return pixels % 2 != 0 && pixels < largestSide ? pixels + 1 : pixels;
}

bool isFactor(double value) noexcept { return value > 0 && value <= Arguments::legacyOutputDimensionsScaleThreshold; }

/// One side of the explicit resolution: `own` is "-ovw" or "-ovh", `dimension` that side of "-dims".
std::optional<std::int32_t> explicitSide(std::optional<double> own, std::optional<double> dimension,
                                         std::optional<double> scale) noexcept {
    std::optional<double> side;
    if (own && *own > Arguments::legacyOutputDimensionsScaleThreshold) {
        side = *own;
    } else if (own && isFactor(*own)) {
        if (dimension) side = *dimension * *own;
    } else if (dimension) {
        side = scale && isFactor(*scale) ? *dimension * *scale : *dimension;
    }
    if (!side || std::floor(*side) < 1) return std::nullopt;
    return static_cast<std::int32_t>(std::min(std::floor(*side), static_cast<double>(largestSide)));
}

}  // namespace

std::uint64_t Arguments::defaultVideoFrameCapacity() { return frameCapacity().get(); }
void Arguments::setDefaultVideoFrameCapacity(std::uint64_t frames) { frameCapacity().set(frames); }

std::optional<OAVTranscodeArgumentVideoCodecValue> Arguments::videoFormat() const {
    return typedValueOf<OAVTranscodeArgumentVideoCodecValue>(*this, OAVVideoFormatFlag);
}
void Arguments::setVideoFormat(const std::optional<OAVTranscodeArgumentVideoCodecValue>& value) {
    setTypedValue(*this, value, OAVVideoFormatFlag);
}

std::optional<OAVTranscodeArgumentAspectRatioValue> Arguments::aspectScaling() const {
    return typedValueOf<OAVTranscodeArgumentAspectRatioValue>(*this, OAVVideoAspectScalingFlag);
}
void Arguments::setAspectScaling(const std::optional<OAVTranscodeArgumentAspectRatioValue>& value) {
    setTypedValue(*this, value, OAVVideoAspectScalingFlag);
}

std::optional<VideoCropAnchor> Arguments::videoCropAnchor() const {
    return anchorOf<VideoCropAnchor>(*this, OAVVideoAspectCropAnchorFlag);
}
void Arguments::setVideoCropAnchor(const std::optional<VideoCropAnchor>& value) {
    setTypedValue(*this, value, OAVVideoAspectCropAnchorFlag);
}

std::optional<OrvaneVideoColorSpace> Arguments::colorSpace() const {
    const auto text = valueOf(*this, OAVVideoColorSpaceFlag);
    return text ? fromCliEquivalent<OrvaneVideoColorSpace>(*text) : std::nullopt;
}
void Arguments::setColorSpace(std::optional<OrvaneVideoColorSpace> value) {
    setTypedValue(*this, value ? cliEquivalent(*value) : std::nullopt, OAVVideoColorSpaceFlag);
}

std::optional<OrvaneVideoColorMatrix> Arguments::colorMatrix() const {
    const auto text = valueOf(*this, OAVVideoColorMatrixFlag);
    return text ? fromCliEquivalent<OrvaneVideoColorMatrix>(*text) : std::nullopt;
}
void Arguments::setColorMatrix(std::optional<OrvaneVideoColorMatrix> value) {
    setTypedValue(*this, value ? cliEquivalent(*value) : std::nullopt, OAVVideoColorMatrixFlag);
}

std::optional<OrvanePixelTransferFunction> Arguments::colorTransferFunction() const {
    const auto text = valueOf(*this, OAVVideoColorTransferFunctionFlag);
    return text ? fromCliEquivalent<OrvanePixelTransferFunction>(*text) : std::nullopt;
}
void Arguments::setColorTransferFunction(std::optional<OrvanePixelTransferFunction> value) {
    setTypedValue(*this, value ? cliEquivalent(*value) : std::nullopt, OAVVideoColorTransferFunctionFlag);
}

std::optional<OrvanePixelColorRange> Arguments::colorRange() const {
    const auto text = valueOf(*this, OAVVideoColorRangeFlag);
    return text ? colorRangeFromCliFlag(*text) : std::nullopt;
}
void Arguments::setColorRange(std::optional<OrvanePixelColorRange> range) {
    setText(*this, range ? OptionalText(v0::cliFlag(*range)) : std::nullopt, OAVVideoColorRangeFlag);
}

std::optional<float> Arguments::videoFrameRate() const { return numberOf<float>(*this, OAVVideoFrameRateFlag); }
void Arguments::setVideoFrameRate(std::optional<float> value) { setNumber(*this, value, OAVVideoFrameRateFlag); }

std::optional<float> Arguments::videoBitRate() const { return numberOf<float>(*this, OAVVideoBitRateFlag); }
void Arguments::setVideoBitRate(std::optional<float> value) { setNumber(*this, value, OAVVideoBitRateFlag); }

std::optional<float> Arguments::videoBitRateAsBitsPerSecond() const {
    const auto megabits = videoBitRate();
    const float bits = megabits.value_or(0) * 1'000'000.0F;
    return megabits && std::isfinite(bits) ? std::optional(bits) : std::nullopt;
}

std::optional<std::int64_t> Arguments::videoBitDepth() const {
    return numberOf<std::int64_t>(*this, OAVVideoBitDepthFlag);
}
void Arguments::setVideoBitDepth(std::optional<std::int64_t> value) { setNumber(*this, value, OAVVideoBitDepthFlag); }

std::optional<std::int64_t> Arguments::keyFrames() const {
    return numberOf<std::int64_t>(*this, OAVVideoKeyFramesFlag);
}
void Arguments::setKeyFrames(std::optional<std::int64_t> value) { setNumber(*this, value, OAVVideoKeyFramesFlag); }

std::optional<std::int64_t> Arguments::maxFrames() const { return numberOf<std::int64_t>(*this, OAVVideoMaxFrames); }
void Arguments::setMaxFrames(std::optional<std::int64_t> value) { setNumber(*this, value, OAVVideoMaxFrames); }

OptionalText Arguments::videoProfile() const { return valueOf(*this, OAVVideoProfileFlag); }
void Arguments::setVideoProfile(OptionalText value) { setText(*this, value, OAVVideoProfileFlag); }

OptionalText Arguments::videoDecodeEngineValue() const { return valueOf(*this, OAVVideoDecodeEngineFlag); }
void Arguments::setVideoDecodeEngineValue(OptionalText value) { setText(*this, value, OAVVideoDecodeEngineFlag); }

OptionalText Arguments::audioDecodeEngineValue() const { return valueOf(*this, OAVAudioDecodeEngineFlag); }
void Arguments::setAudioDecodeEngineValue(OptionalText value) { setText(*this, value, OAVAudioDecodeEngineFlag); }

bool Arguments::gpuDecode() const { return isSet(*this, OAVVideoGPUDecodingFlag); }
void Arguments::setGpuDecode(bool isOn) { setSwitch(*this, isOn, OAVVideoGPUDecodingFlag); }

bool Arguments::gpuEncode() const { return isSet(*this, OAVVideoGPUEncodingFlag); }
void Arguments::setGpuEncode(bool isOn) { setSwitch(*this, isOn, OAVVideoGPUEncodingFlag); }

bool Arguments::preserveLogEncoding() const { return isSet(*this, OAVVideoPreserveLogEncodingFlag); }
void Arguments::setPreserveLogEncoding(bool isOn) { setSwitch(*this, isOn, OAVVideoPreserveLogEncodingFlag); }

bool Arguments::unboundVideoFrameCapacity() const { return isSet(*this, OAVVideoUnboundedFrameCapacityFlag); }
void Arguments::setUnboundVideoFrameCapacity(bool isOn) { setSwitch(*this, isOn, OAVVideoUnboundedFrameCapacityFlag); }

bool Arguments::useREDPremiumDecode() const { return isSet(*this, OAVVideoREDPremiumDecodeFlag); }
void Arguments::setUseREDPremiumDecode(bool isOn) { setSwitch(*this, isOn, OAVVideoREDPremiumDecodeFlag); }

std::optional<PictureSize> Arguments::videoDimensions() const {
    const auto text = valueOf(*this, OAVVideoDimensionsFlag);
    if (!text) return std::nullopt;
    std::array<std::optional<double>, 2> sides;
    std::size_t count = 0;
    forEachPiece(*text, "xX", [&](std::string_view piece) {
        if (count < sides.size()) sides[count++] = parseFloat<double>(piece);
    });
    return sides[0] && sides[1] ? std::optional(PictureSize(*sides[0], *sides[1])) : std::nullopt;
}
void Arguments::setVideoDimensions(std::optional<PictureSize> size) {
    const std::string text = size ? shortestText(size->width) + "x" + shortestText(size->height) : std::string();
    setText(*this, size ? OptionalText(text) : std::nullopt, OAVVideoDimensionsFlag);
}
std::optional<PictureSizeValue> Arguments::dimensionsSizeValue() const {
    const auto size = videoDimensions();
    return size ? std::optional<PictureSizeValue>(*size) : std::nullopt;
}

std::optional<float> Arguments::explicitVideoScaling() const { return numberOf<float>(*this, scaleFlag); }
void Arguments::setExplicitVideoScaling(std::optional<float> value) { setNumber(*this, value, scaleFlag); }

std::optional<VideoDimensions> Arguments::outputResolution(const std::optional<PictureSize>& knownInput) const {
    const auto scale = explicitVideoScaling();
    if (!scale || !knownInput) return explicitOutputResolution();
    const auto factor = static_cast<double>(*scale);
    return VideoDimensions(evenSide(knownInput->width * factor), evenSide(knownInput->height * factor));
}

std::optional<VideoDimensions> Arguments::explicitOutputResolution() const {
    const auto dimensions = videoDimensions();
    const auto scale = numberOf<double>(*this, scaleFlag);
    const auto width = explicitSide(numberOf<double>(*this, widthFlag),
                                    dimensions ? std::optional(dimensions->width) : std::nullopt, scale);
    const auto height = explicitSide(numberOf<double>(*this, heightFlag),
                                     dimensions ? std::optional(dimensions->height) : std::nullopt, scale);
    return width && height ? std::optional(VideoDimensions(*width, *height)) : std::nullopt;
}
void Arguments::setExplicitOutputResolution(std::optional<VideoDimensions> resolution) {
    for (const ShortFlag& flag : {scaleFlag, widthFlag, heightFlag}) setText(*this, std::nullopt, flag);
    setVideoDimensions(resolution ? std::optional(PictureSize(resolution->width, resolution->height)) : std::nullopt);
}

std::uint64_t Arguments::videoFrameCapacity() const {
    if (unboundVideoFrameCapacity()) return std::numeric_limits<std::uint64_t>::max();
    const auto text = valueOf(*this, OAVVideoFrameCapacityFlag);
    const auto frames = text ? parseInteger<std::uint64_t>(*text, SignRule::plusOnly) : std::nullopt;
    return frames ? *frames : defaultVideoFrameCapacity();
}
void Arguments::setVideoFrameCapacity(std::uint64_t frames) {
    setUnboundVideoFrameCapacity(false);  // it would outrank the number
    setNumber(*this, std::optional(frames), OAVVideoFrameCapacityFlag);
}

std::optional<std::int64_t> Arguments::maxVideoFrameMemory() const {
    return numberOf<std::int64_t>(*this, OAVVideoMaxVideoFrameMemory);
}
void Arguments::setMaxVideoFrameMemory(std::optional<std::int64_t> value) {
    setNumber(*this, value, OAVVideoMaxVideoFrameMemory);
}

std::optional<std::map<std::string, std::string>> Arguments::additionalDecodeOptions() const {
    const auto text = valueOf(*this, OAVVideoAdditionalDecodeOptionsFlag);
    return text ? std::optional(parseDictionary(*text)) : std::nullopt;
}
void Arguments::setAdditionalDecodeOptions(const std::optional<std::map<std::string, std::string>>& options) {
    const std::string text = options ? dictionaryText(*options) : std::string();
    setText(*this, options ? OptionalText(text) : std::nullopt, OAVVideoAdditionalDecodeOptionsFlag);
}

std::optional<std::filesystem::path> Arguments::lutFile() const {
    const auto text = valueOf(*this, OAVColorLutFileFlag);
    return text ? std::optional<std::filesystem::path>(*text) : std::nullopt;
}
void Arguments::setLutFile(const std::optional<std::filesystem::path>& file) {
    setText(*this, file ? OptionalText(file->native()) : std::nullopt, OAVColorLutFileFlag);
}

std::optional<std::vector<std::uint64_t>> Arguments::gpuTransformationDeviceIDs() const {
    const auto text = valueOf(*this, OAVVideoGPUTransformFlag);
    if (!text) return std::nullopt;
    std::vector<std::uint64_t> identifiers;
    enumerateListValues(*text, [&](std::string_view piece) {
        if (const auto number = parseInteger<std::uint64_t>(piece, SignRule::plusOnly)) identifiers.push_back(*number);
    });
    return identifiers.empty() ? std::nullopt : std::optional(std::move(identifiers));
}
void Arguments::setGpuTransformationDeviceIDs(const std::optional<std::vector<std::uint64_t>>& identifiers) {
    std::vector<std::string> texts;
    if (identifiers) {
        for (const std::uint64_t identifier : *identifiers) texts.push_back(std::to_string(identifier));
    }
    const std::string list = buildCLIList(texts);
    setText(*this, texts.empty() ? std::nullopt : OptionalText(list), OAVVideoGPUTransformFlag);
}
std::shared_ptr<GpuDevice> Arguments::gpuTransformationDevice() const {
    const auto identifiers = gpuTransformationDeviceIDs();
    const GpuDeviceProvider provider = gpuDeviceProvider();
    return identifiers && provider ? provider(identifiers->front()) : nullptr;
}

}  // namespace corvex::inline v0
