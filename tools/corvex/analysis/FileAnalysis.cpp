#include <tools/corvex/analysis/FileAnalysis.h>

extern "C" {
#include <libavutil/pixdesc.h>
}

#include <algorithm>
#include <array>
#include <filesystem>
#include <utility>

#include <Corvex/color/OrvanePixelColorRange.h>
#include <Corvex/color/OrvanePixelTransferFunction.h>
#include <Corvex/color/OrvaneVideoColorMatrix.h>
#include <Corvex/color/OrvaneVideoColorPrimaries.h>
#include <Corvex/media/OrvaneAudioFormat.h>
#include <Corvex/timing/TimecodeFrame.h>
#include <Corvex/timing/VideoFrameRate.h>
#include <tools/corvex/RateText.h>
#include <tools/corvex/analysis/MediaTerms.h>
#include <tools/corvex/worker/AudioChoice.h>
#include <tools/corvex/worker/TimecodeRequest.h>

namespace corvex::tool {
namespace {

template <class Enumeration>
std::optional<std::string> nameOf(const std::optional<Enumeration>& value) {
    return value ? std::optional(std::string(caseName(*value))) : std::nullopt;
}

ColorResult colorOf(const AVCodecParameters& parameters) {
    ColorResult color;
    color.primaries = nameOf(colorPrimariesFromCodePoint(parameters.color_primaries));
    color.transferFunction = nameOf(transferFunctionFromCodePoint(parameters.color_trc));
    color.matrix = nameOf(colorMatrixFromCodePoint(parameters.color_space));
    if (parameters.color_range != AVCOL_RANGE_UNSPECIFIED) {
        color.range = nameOf(colorRangeFromCodePoint(parameters.color_range == AVCOL_RANGE_JPEG ? 1 : 0));
    }
    return color;
}

std::optional<RateResult> rateOf(AVRational rate, bool isConstant) {
    if (rate.num <= 0 || rate.den <= 0) return std::nullopt;
    const VideoFrameRate exact(MediaRational(rate.num, rate.den));
    RateResult result;
    result.timeValue = rate.num;
    result.timeScale = rate.den;
    result.value = exact.doubleValue();
    auto common = exact.commonValue();
    if (!common) common = roundedCommonRate(exact.doubleValue());
    if (common) result.common = rawValue(*common);
    result.isConstant = isConstant;
    return result;
}

VideoResult videoOf(const MediaInput& input, AVStream& stream) {
    const AVCodecParameters& parameters = *stream.codecpar;
    const SourcePicture picture = input.pictureOf(stream);
    VideoResult video;
    video.width = parameters.width;
    video.height = parameters.height;
    video.pixelAspectWidth = picture.pixelAspect.numerator;
    video.pixelAspectHeight = picture.pixelAspect.denominator;
    video.rotation = picture.orientation.turn;
    video.isMirrored = picture.orientation.isMirrored;
    if (&stream == input.video()) {
        video.frameRate = rateOf(input.frameRate(), input.hasConstantRate());
    } else if ((stream.disposition & AV_DISPOSITION_ATTACHED_PIC) == 0) {
        video.frameRate = rateOf(stream.avg_frame_rate, false);
    }
    if (stream.nb_frames > 0) video.statedFrames = stream.nb_frames;
    if (const AVPixFmtDescriptor* format = av_pix_fmt_desc_get(static_cast<AVPixelFormat>(parameters.format))) {
        video.pixelFormat = format->name;
        for (int i = 0; i < format->nb_components; ++i) {
            video.bitDepth = std::max<std::int64_t>(video.bitDepth, format->comp[i].depth);
        }
        video.hasAlpha = hasAlpha(parameters.format);
    }
    video.color = colorOf(parameters);
    return video;
}

AudioResult audioOf(const AVCodecParameters& parameters) {
    AudioResult audio;
    audio.sampleRate = parameters.sample_rate;
    audio.channels = parameters.ch_layout.nb_channels;
    std::array<char, 256> layout{};
    if (av_channel_layout_describe(&parameters.ch_layout, layout.data(), layout.size()) > 0) {
        audio.channelLayout = layout.data();
    }
    audio.bitsPerSample = std::max(parameters.bits_per_raw_sample, av_get_exact_bits_per_sample(parameters.codec_id));
    const FourCharacterCode code = coreAudioFormatOf(parameters);
    if (code != FourCharacterCode(0)) audio.formatCode = code.description();
    audio.replacement = outputFormat(encodingReplacement(code, false)).rawValue();
    audio.losslessReplacement = outputFormat(encodingReplacement(code, true)).rawValue();
    return audio;
}

std::optional<std::string> statedText(const AVDictionary* metadata, const char* key) {
    const AVDictionaryEntry* entry = av_dict_get(metadata, key, nullptr, 0);
    return entry == nullptr ? std::nullopt : std::optional<std::string>(entry->value);
}

std::string kindOf(const AVStream& stream) {
    if ((stream.disposition & AV_DISPOSITION_ATTACHED_PIC) != 0) return "picture";
    switch (stream.codecpar->codec_type) {
        case AVMEDIA_TYPE_VIDEO: return "video";
        case AVMEDIA_TYPE_AUDIO: return "audio";
        case AVMEDIA_TYPE_SUBTITLE: return "subtitle";
        default: return stream.codecpar->codec_tag == MKTAG('t', 'm', 'c', 'd') ? "timecode" : "other";
    }
}

TrackResult trackOf(const MediaInput& input, AVStream& stream) {
    const AVCodecParameters& parameters = *stream.codecpar;
    TrackResult track;
    track.index = stream.index;
    track.kind = kindOf(stream);
    if (const auto term = codecTermOf(parameters)) track.codec = term->rawValue();
    track.codecName = avcodec_get_name(parameters.codec_id);
    if (parameters.codec_tag != 0) {
        // The media libraries keep the first character in the lowest byte.
        track.codecTag = FourCharacterCode(__builtin_bswap32(parameters.codec_tag)).description();
    }
    if (const char* profile = avcodec_profile_name(parameters.codec_id, parameters.profile)) track.profile = profile;
    track.language = statedText(stream.metadata, "language");
    if (stream.duration != AV_NOPTS_VALUE && stream.duration > 0 && !input.isStill()) {
        track.durationInSeconds = static_cast<double>(stream.duration) * av_q2d(stream.time_base);
    }
    if (parameters.codec_type == AVMEDIA_TYPE_VIDEO) track.video = videoOf(input, stream);
    if (parameters.codec_type == AVMEDIA_TYPE_AUDIO) track.audio = audioOf(parameters);
    return track;
}

std::optional<TimecodeResult> timecodeOf(const MediaInput& input) {
    const auto stated = statedTimecode(input);
    const auto components = stated ? TimecodeComponents::fromTimecode(*stated) : std::nullopt;
    if (!components) return std::nullopt;
    TimecodeResult result;
    result.text = components->timecodeString();
    result.isDropFrame = components->isDropFrame();
    const AVRational rate = input.frameRate();
    const bool isLabel = components->hours < 100 && components->frames < rate.num;
    if (rate.num > 0 && rate.den > 0 && isLabel) {
        result.frameNumber = TimecodeFrame(*components, MediaRational(rate.num, rate.den)).frameNumber();
    }
    return result;
}

}  // namespace

FileResult describeFile(const MediaInput& input) {
    const AVFormatContext& context = input.context();
    FileResult file;
    file.path = input.path();
    std::error_code error;
    const auto size = std::filesystem::file_size(input.path(), error);
    if (!error) file.sizeInBytes = static_cast<std::int64_t>(size);
    if (const auto term = containerOf(context)) file.container = term->rawValue();
    file.format = context.iformat->name;
    if (input.duration() > 0) file.durationInSeconds = input.duration();
    file.startTimecode = timecodeOf(input);
    for (unsigned i = 0; i < context.nb_streams; ++i) file.tracks.push_back(trackOf(input, *context.streams[i]));
    return file;
}

}  // namespace corvex::tool
