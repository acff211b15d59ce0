#include <tools/corvex/worker/VideoRequest.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <limits>

#include <Corvex/cli/transcode/TranscodeCLIFlag.h>
#include <Corvex/color/GammaColorSpaceSignal.h>
#include <Corvex/color/definedSignals.h>
#include <tools/corvex/RateText.h>
#include <tools/corvex/worker/RequestText.h>

namespace corvex::tool {
namespace {

using Arguments = TranscodeCliArguments;

constexpr int largestPictureSide = 16384;
constexpr float smallestMegabits = 0.001F;  // H.264's encoder counts kilobits; others take less, and write far more
constexpr float largestMegabits = 10'000;
constexpr float largestFrameRate = 1000;
constexpr std::int64_t mostFrames = std::numeric_limits<std::int64_t>::max();

void requireSide(std::string_view flag, std::string_view text, double side) {
    if (side < 1 || side > largestPictureSide) failExpecting(flag, text, "1 to 16384 pixels");
}

/// The box into which pictures are brought: "-ovw" and "-ovh" before "-dims".
std::optional<PixelSize> boxOf(const Arguments& arguments) {
    const auto dims = arguments.argumentFlagValue(OAVVideoDimensionsFlag.cliFlag());
    if (dims) {
        const auto size = arguments.videoDimensions();
        if (!size) failExpecting(OAVVideoDimensionsFlag.cliFlag(), *dims, "WIDTHxHEIGHT, as 1920x1080");
        requireSide(OAVVideoDimensionsFlag.cliFlag(), *dims, size->width);
        requireSide(OAVVideoDimensionsFlag.cliFlag(), *dims, size->height);
    }
    for (const TranscodeCLIFlag flag : {TranscodeCLIFlag::ovw, TranscodeCLIFlag::ovh, TranscodeCLIFlag::vscale}) {
        const auto text = arguments.argumentFlagValue(cliFlag(flag));
        const auto value = text ? parseFloat<double>(*text) : std::nullopt;
        if (text && (!value || *value <= 0)) failExpecting(cliFlag(flag), *text, "a number above 0");
    }
    const auto resolution = arguments.explicitOutputResolution();
    if (!resolution) {
        if (arguments.hasArgumentFlag(cliFlag(TranscodeCLIFlag::ovw)) ||
            arguments.hasArgumentFlag(cliFlag(TranscodeCLIFlag::ovh))) {
            throw UsageError("-ovw and -ovh: expected both in pixels, or factors beside -dims");
        }
        return std::nullopt;
    }
    const bool isTooLarge = resolution->width > largestPictureSide || resolution->height > largestPictureSide;
    if (isTooLarge && !arguments.explicitVideoScaling()) {  // which scales the source instead
        throw UsageError("the output would be " + std::to_string(resolution->width) + "x" +
                         std::to_string(resolution->height) + "; expected sides of 1 to 16384 pixels");
    }
    return PixelSize{resolution->width, resolution->height};
}

FrameRequest frameRequestOf(const Arguments& arguments) {
    FrameRequest request;
    request.box = boxOf(arguments);
    if (const auto scaling = arguments.aspectScaling()) {
        const auto known = OAVTranscodeArgumentAspectRatioValue::allCases();
        if (std::find(known.begin(), known.end(), *scaling) == known.end()) {
            failExpecting("-aspect_scaling", scaling->rawValue(), "one of " + listOf(known));
        }
        if (!request.box) throw UsageError("-aspect_scaling: expected -dims, the size to scale to, beside it");
        request.scaling = *scaling;
    }
    if (const auto anchor = arguments.videoCropAnchor()) {
        const auto known = OAVTranscodeArgumentOverlayAnchorValue::allCases();
        if (std::find(known.begin(), known.end(), anchor->anchorArgument()) == known.end()) {
            failExpecting("-crop_anchor", anchor->rawValue(), "one of " + listOf(known));
        }
        if (request.scaling != OAVCropAspect) {
            throw UsageError("-crop_anchor: expected -aspect_scaling crop beside it");
        }
        request.anchor = anchor->anchorArgument();
    }
    return request;
}

std::optional<std::int64_t> bitRateOf(const Arguments& arguments, const VideoCodecSettings& codec) {
    const auto text = arguments.argumentFlagValue(OAVVideoBitRateFlag.cliFlag());
    if (!text) return std::nullopt;
    const auto megabits = arguments.videoBitRate();
    if (!megabits || *megabits < smallestMegabits || *megabits > largestMegabits) {
        failExpecting("-vbr", *text, "megabits per second, 0.001 to 10000");
    }
    if (codec.rate == RateChoice::fixed) {
        throw UsageError("-vbr: the bit rate of " + std::string(codec.codec.rawValue()) +
                         " follows from its profile and the picture; remove the flag");
    }
    return static_cast<std::int64_t>(*arguments.videoBitRateAsBitsPerSecond());
}

std::optional<AVRational> frameRateOf(const Arguments& arguments) {
    const auto text = arguments.argumentFlagValue(OAVVideoFrameRateFlag.cliFlag());
    if (!text) return std::nullopt;
    const auto rate = arguments.videoFrameRate();
    if (!rate || *rate <= 0 || *rate > largestFrameRate) {
        failExpecting("-vr", *text, "frames per second, above 0 and up to 1000");
    }
    if (const auto common = roundedCommonRate(static_cast<double>(*rate))) {
        const auto& row = caseOf(*common);
        return AVRational{static_cast<int>(row.timeValue), static_cast<int>(row.timeScale)};
    }
    return av_d2q(static_cast<double>(*rate), 60000);
}

void chooseFormat(VideoRequest& request, const Arguments& arguments) {
    const std::string codec(request.codec->codec.rawValue());
    if (const auto profile = arguments.videoProfile()) request.profile = &codecProfile(*request.codec, *profile);
    const PictureFormats& formats = request.profile != nullptr ? request.profile->formats : request.codec->formats;
    const auto text = arguments.argumentFlagValue(OAVVideoBitDepthFlag.cliFlag());
    if (!text) return;
    const auto depth = arguments.videoBitDepth();
    const bool isUsable = depth && *depth >= 1 && *depth <= 16 && formats.format(static_cast<int>(*depth));
    if (!isUsable) {
        const std::string of = codec + (request.profile != nullptr ? " " + std::string(request.profile->name) : "");
        failExpecting("-vbd", *text, "the bits of a component that " + of + " has: " + formats.depths());
    }
    request.bitDepth = static_cast<int>(*depth);
}

template <class Point, class Value>
std::optional<Point> pointOf(const std::optional<Value>& value) {
    const auto point = value ? codePoint(*value) : std::nullopt;
    return point ? std::optional(static_cast<Point>(*point)) : std::nullopt;
}

ColorRequest colorRequestOf(const Arguments& arguments) {
    ColorRequest request;
    if (const auto text = arguments.argumentFlagValue(OAVVideoColorSpaceFlag.cliFlag())) {
        const auto space = arguments.colorSpace();
        if (!space) failExpecting("-c_space", *text, "a colour space; corvex transcode -color_spaces lists them");
        const auto signal = definedSignals(*space)->front();
        request.primaries = pointOf<AVColorPrimaries>(signal->primaries());
        request.transfer = pointOf<AVColorTransferCharacteristic>(signal->transferFunction());
        request.matrix = pointOf<AVColorSpace>(signal->matrix());
    }
    if (const auto text = arguments.argumentFlagValue(OAVVideoColorMatrixFlag.cliFlag())) {
        const auto matrix = pointOf<AVColorSpace>(arguments.colorMatrix());
        if (!matrix) failExpecting("-c_matrix", *text, "a colour matrix; corvex transcode -color_matrix lists them");
        request.matrix = matrix;
    }
    if (const auto text = arguments.argumentFlagValue(OAVVideoColorTransferFunctionFlag.cliFlag())) {
        if (*text == OAV_T_UseGamma.rawValue()) {
            throw JobError("-c_transfer tf_gamma: the vector carries no exponent, so nothing can be converted to it");
        }
        const auto transfer = pointOf<AVColorTransferCharacteristic>(arguments.colorTransferFunction());
        if (!transfer) {
            failExpecting("-c_transfer", *text, "a transfer function; corvex transcode -transfer_func lists them");
        }
        request.transfer = transfer;
    }
    if (const auto text = arguments.argumentFlagValue(OAVVideoColorRangeFlag.cliFlag())) {
        const auto range = arguments.colorRange();
        if (!range) failExpecting("-v_colrange", *text, "f (full) or v (video)");
        request.range = *range == OrvanePixelColorRange::full ? AVCOL_RANGE_JPEG : AVCOL_RANGE_MPEG;
    }
    // Without a word on the transfer function the code values of log footage stay as they are in any case.
    if (arguments.preserveLogEncoding() && request.transfer) {
        throw UsageError("-preserve_log: contradicts -c_space and -c_transfer, which change the encoding of light");
    }
    return request;
}

}  // namespace

ColorConversion VideoRequest::colorConversion(int format, int height, const ColorTags& source,
                                              AVColorRange codecRange) const {
    const auto make = table ? ColorConversion::makeAroundTable : ColorConversion::make;
    return make(format, height, source, color, codecRange);
}

std::optional<VideoRequest> VideoRequest::make(const Arguments& arguments,
                                               const OAVTranscodeArgumentFileFormatValue& format) {
    // Presets bring video and audio options along, so -vn and -an (and -acopy) quietly outrank those.
    if (arguments.hasVideoArgumentFlag(OAVNoVideoFlag)) return std::nullopt;
    const auto codec = arguments.videoFormat();
    if (format == OAVWaveFileFormat) {
        if (codec) throw UsageError("-vcodec: -file_format wav carries no video; -vn would leave it out");
        return std::nullopt;
    }
    VideoRequest request;
    const auto chosen = codec.value_or(OAVAvcH264Codec);
    request.codec = &videoCodecSettings(chosen);
    const auto permitted = chosen.permittedExtensions();
    if (std::find(permitted.begin(), permitted.end(), *format.preferredExtension()) == permitted.end()) {
        throw UsageError("-vcodec " + std::string(chosen.rawValue()) + " is not written into -file_format " +
                         std::string(format.rawValue()) + "; expected qt");
    }
    chooseFormat(request, arguments);
    request.frame = frameRequestOf(arguments);
    request.sourceScale = arguments.explicitVideoScaling();
    request.bitsPerSecond = bitRateOf(arguments, *request.codec);
    request.frameRate = frameRateOf(arguments);
    request.keyFrameDistance = wholeNumber<int>(arguments, OAVVideoKeyFramesFlag, 1, 100'000, "frames");
    if (request.keyFrameDistance && !request.codec->hasInterFrames && *request.keyFrameDistance != 1) {
        failExpecting("-key_frames", std::to_string(*request.keyFrameDistance),
                      "1, as every frame of " + std::string(chosen.rawValue()) + " is a key frame");
    }
    if (chosen == OAVMotionJpegCodec && arguments.colorRange() == OrvanePixelColorRange::video) {
        failExpecting("-v_colrange", "v", "f, as mjpeg is full range");
    }
    request.maxFrames = wholeNumber<std::int64_t>(arguments, OAVVideoMaxFrames, 1, mostFrames, "frames");
    request.color = colorRequestOf(arguments);
    request.overlays = OverlayRequest::make(arguments);
    if (const auto path = arguments.lutFile()) request.table = LookUpTable::read(*path);
    if (arguments.hasVideoArgumentFlag(OAVVideoFrameCapacityFlag)) {
        const auto text = *arguments.argumentFlagValue(OAVVideoFrameCapacityFlag.cliFlag());
        const auto frames = parseInteger<std::uint64_t>(text, SignRule::plusOnly);
        if (!frames || *frames == 0) failExpecting("-v_frame_cap", text, "the number of frames in flight, from 1");
        request.frameCapacity = arguments.videoFrameCapacity();
    }
    request.frameMemory = wholeNumber<std::int64_t>(arguments, OAVVideoMaxVideoFrameMemory, 1, mostFrames, "bytes");
    requireAvailableEngine(arguments, OAVVideoDecodeEngineFlag);
    request.decodeOptions = arguments.additionalDecodeOptions().value_or(std::map<std::string, std::string>());
    return request;
}

}  // namespace corvex::tool
