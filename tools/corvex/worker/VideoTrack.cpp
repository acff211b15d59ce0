#include <tools/corvex/worker/VideoTrack.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <memory>
#include <vector>

extern "C" {
#include <libavutil/cpu.h>
#include <libavutil/imgutils.h>
#include <libavutil/pixdesc.h>
}

#include <Corvex/platform/NumberText.h>

namespace corvex::tool {
namespace {

/// Time base for pictures that come at varying distances. MPEG-4 Part 2 allows no finer one than 1/65535 s.
constexpr AVRational fineTimeBase{1, 60000};

/// The rates, in megabits per second, that VC-3 (SMPTE ST 2019-1) lists for its rasters and frame rates.
constexpr std::array vc3Megabits{36,  42,  45,  50,  60,  63,  75,  80,  84,  85,  90,  100, 110, 115,
                                 120, 145, 175, 180, 185, 220, 240, 290, 350, 365, 390, 440, 730, 880};

/// What the middle quality class of VC-3 spends on a picture of 1920x1080, in megabits.
constexpr double vc3MegabitsPerFrame = 4.8;

/// Quantiser of encoders that have no quality mode of their own: visually close to the source.
constexpr int fixedQuantizer = 3;

/// The range that a codec's pictures have unless another is asked for.
AVColorRange usualRange(AVCodecID codec) { return codec == AV_CODEC_ID_MJPEG ? AVCOL_RANGE_JPEG : AVCOL_RANGE_MPEG; }

}  // namespace

VideoTrack::VideoTrack(const VideoRequest& request, const MediaInput& first, VideoTiming timing, MediaOutput& output)
    : request_(request), timing_(timing), output_(output), packet_(makePacket()) {
    if (request_.frameRate) timing_ = {*request_.frameRate, true};
    timeBase_ = timing_.hasConstantRate ? av_inv_q(timing_.frameRate) : fineTimeBase;
    frameTicks_ = std::max<std::int64_t>(1, av_rescale_q(1, av_inv_q(timing_.frameRate), timeBase_));
    if (request_.sourceScale) {
        const PixelSize whole = FrameGeometry::make(first.picture(), {}).upright;
        TranscodeCliArguments scaling;
        scaling.setExplicitVideoScaling(request_.sourceScale);
        const auto scaled = scaling.outputResolution(PictureSize(whole.width, whole.height));
        request_.frame.box = PixelSize{scaled->width, scaled->height};
    }
    const FrameGeometry geometry = FrameGeometry::make(first.picture(), request_.frame);
    openEncoder(first, geometry.output, geometry.pixelAspect);
    prepareStages(first);
    stream_ = output_.addStream(*encoder_, request_.codec->tag);
}

void VideoTrack::prepareStages(const MediaInput& first) {
    std::shared_ptr<const PictureOverlays> overlays;
    if (!request_.overlays.isEmpty()) {
        constexpr int highestOfStandardDefinition = 576;
        AVColorSpace matrix = encoder_->colorspace;
        if (matrix == AVCOL_SPC_UNSPECIFIED) {
            matrix = encoder_->height <= highestOfStandardDefinition ? AVCOL_SPC_SMPTE170M : AVCOL_SPC_BT709;
        }
        std::optional<TimecodeCount> timecodes;
        if (request_.burntTimecode) timecodes = request_.burntTimecode->count(first, timing_.frameRate);
        overlays = std::make_shared<const PictureOverlays>(
            request_.overlays, PictureStamp::Target{encoder_->pix_fmt, matrix, encoder_->color_range}, encoder_->width,
            encoder_->height, timecodes);
    }
    stages_.emplace(
        request_,
        PictureStages::Output{encoder_->pix_fmt, {encoder_->width, encoder_->height}, usualRange(encoder_->codec_id)},
        std::move(overlays), picturesAtWork_,
        [this](AVFrame& frame, AVRational timeBase) { return place(frame, timeBase); },
        [this](AVFrame& frame) { encodeFrame(frame); });
}

void VideoTrack::limitFramesInFlight(const AVCodecParameters& source) {
    std::uint64_t frames = request_.frameCapacity.value_or(std::numeric_limits<std::uint64_t>::max());
    if (request_.frameMemory) {
        // While it is worked on, a picture is R'G'B' of 16 bits.
        const AVPixelFormat format = !request_.table               ? encoder_->pix_fmt
                                     : hasAlpha(encoder_->pix_fmt) ? AV_PIX_FMT_GBRAP16
                                                                   : AV_PIX_FMT_GBRP16;
        const int bytes = std::max(
            av_image_get_buffer_size(format, encoder_->width, encoder_->height, 1),
            av_image_get_buffer_size(static_cast<AVPixelFormat>(source.format), source.width, source.height, 1));
        const std::int64_t fitting = *request_.frameMemory / std::max(bytes, 1);
        if (fitting < 1) {
            throw JobError("-max_v_frame_mem " + std::to_string(*request_.frameMemory) +
                           ": expected at least one frame of " + std::to_string(bytes) + " bytes");
        }
        frames = std::min(frames, static_cast<std::uint64_t>(fitting));
    }
    const auto processors = static_cast<std::uint64_t>(std::max(1, av_cpu_count()));
    if (request_.table || !request_.overlays.isEmpty()) {
        const std::uint64_t usual = std::max<std::uint64_t>(TranscodeCliArguments::defaultVideoFrameCapacity(), 1);
        picturesAtWork_ = static_cast<std::size_t>(std::clamp<std::uint64_t>(frames / 2, 1, usual));
        frames -= picturesAtWork_;
    }
    // Each thread of the decoder and of the encoder holds a frame; what is left may wait in the encoder.
    constexpr std::uint64_t usualLookahead = 40;
    if (frames >= 2 * processors + usualLookahead) return;
    const std::uint64_t threads = std::clamp<std::uint64_t>(frames / 2, 1, processors);
    threads_ = static_cast<int>(threads);
    lookahead_ = static_cast<int>(frames > 2 * threads ? frames - 2 * threads : 0);
}

void VideoTrack::setKeyFrameDistance(AVCodecContext& encoder) const {
    if (!request_.keyFrameDistance) return;
    const std::string distance = std::to_string(*request_.keyFrameDistance);
    encoder.gop_size = *request_.keyFrameDistance;
    encoder.keyint_min = *request_.keyFrameDistance;
    // Scene changes would bring key frames of their own; who asks for a distance counts on it.
    if (encoder.codec_id == AV_CODEC_ID_H264) {
        check(av_opt_set_int(&encoder, "sc_threshold", 0, AV_OPT_SEARCH_CHILDREN), encoder.codec->name);
    } else if (encoder.codec_id == AV_CODEC_ID_MPEG4) {
        check(av_opt_set_int(&encoder, "sc_threshold", 1'000'000'000, AV_OPT_SEARCH_CHILDREN), encoder.codec->name);
    }
}

CodecContextPointer VideoTrack::makeEncoder(std::optional<std::int64_t> bitsPerSecond) const {
    const AVCodec* codec = avcodec_find_encoder_by_name(request_.codec->encoder);
    CodecContextPointer made(checkAllocated(avcodec_alloc_context3(codec)));
    made->width = encoder_->width;
    made->height = encoder_->height;
    made->pix_fmt = encoder_->pix_fmt;
    made->sample_aspect_ratio = encoder_->sample_aspect_ratio;
    made->time_base = timeBase_;
    made->framerate = timing_.frameRate;
    made->color_range = encoder_->color_range;
    made->colorspace = encoder_->colorspace;
    made->color_primaries = encoder_->color_primaries;
    made->color_trc = encoder_->color_trc;
    made->chroma_sample_location = encoder_->chroma_sample_location;
    made->thread_count = threads_;
    if (output_.wantsGlobalHeaders()) made->flags |= AV_CODEC_FLAG_GLOBAL_HEADER;
    const char* profile = request_.profile != nullptr ? request_.profile->name : request_.codec->profile;
    if (profile != nullptr) check(av_opt_set(made.get(), "profile", profile, AV_OPT_SEARCH_CHILDREN), codec->name);
    setKeyFrameDistance(*made);
    if (codec->id == AV_CODEC_ID_H264 && lookahead_ >= 0) {
        check(av_opt_set_int(made.get(), "rc-lookahead", lookahead_, AV_OPT_SEARCH_CHILDREN), codec->name);
    }
    if (codec->id == AV_CODEC_ID_HEVC) {
        // This encoder writes its settings to standard error itself, past the libraries' messages.
        std::string parameters = "log-level=none";
        if (request_.keyFrameDistance) parameters += ":scenecut=0:open-gop=0";
        // It looks ahead over its consecutive B pictures at least.
        if (lookahead_ >= 0) parameters += ":rc-lookahead=" + std::to_string(std::max(lookahead_, 5));
        check(av_opt_set(made.get(), "x265-params", parameters.c_str(), AV_OPT_SEARCH_CHILDREN), codec->name);
    }
    if (bitsPerSecond) {
        made->bit_rate = *bitsPerSecond;
    } else if (codec->id == AV_CODEC_ID_MJPEG || codec->id == AV_CODEC_ID_MPEG4) {
        made->flags |= AV_CODEC_FLAG_QSCALE;
        made->global_quality = FF_QP2LAMBDA * fixedQuantizer;
    }
    return made;
}

void VideoTrack::openEncoder(const MediaInput& first, PixelSize size, PixelAspect pixelAspect) {
    const AVCodec* codec = avcodec_find_encoder_by_name(request_.codec->encoder);
    output_.requireCarries(codec->id);
    const AVCodecParameters& source = *first.video()->codecpar;
    encoder_.reset(checkAllocated(avcodec_alloc_context3(codec)));
    encoder_->width = size.width;
    encoder_->height = size.height;
    const bool keepsAlpha = request_.codec->alphaFormat != AV_PIX_FMT_NONE && hasAlpha(source.format);
    const PictureFormats& formats = request_.profile != nullptr ? request_.profile->formats : request_.codec->formats;
    encoder_->pix_fmt = keepsAlpha ? request_.codec->alphaFormat : *formats.format(request_.bitDepth);
    encoder_->sample_aspect_ratio = {pixelAspect.numerator, pixelAspect.denominator};
    const ColorTags tags =
        request_
            .colorConversion(source.format, source.height,
                             {source.color_primaries, source.color_trc, source.color_space, source.color_range},
                             usualRange(codec->id))
            .tags;
    encoder_->color_range = tags.range;
    encoder_->colorspace = tags.matrix;
    encoder_->color_primaries = tags.primaries;
    encoder_->color_trc = tags.transfer;
    encoder_->chroma_sample_location = source.chroma_location;
    limitFramesInFlight(source);

    if (request_.codec->rate == RateChoice::classes) {
        openWithRateClass();
        return;
    }
    encoder_ = makeEncoder(request_.bitsPerSecond);
    check(avcodec_open2(encoder_.get(), codec, nullptr),
          "cannot encode " + std::string(request_.codec->codec.rawValue()) + " at " + std::to_string(size.width) + "x" +
              std::to_string(size.height));
}

void VideoTrack::openWithRateClass() {
    const std::string name(request_.codec->codec.rawValue());
    const std::string raster = std::to_string(encoder_->width) + "x" + std::to_string(encoder_->height);
    // The encoder itself knows which of the rates go with the raster: those with which it opens.
    std::vector<int> usable;
    for (const int megabits : vc3Megabits) {
        const CodecContextPointer trial = makeEncoder(megabits * 1'000'000LL);
        if (avcodec_open2(trial.get(), trial->codec, nullptr) == 0) usable.push_back(megabits);
    }
    (void)LibraryMessages::takeLast();  // complaints about the rates that were only tried
    if (usable.empty()) {
        throw JobError("-vcodec " + name + " is not defined for " + raster +
                       "; expected 1920x1080 or 1280x720, or one of the dnxhr codecs");
    }
    int chosen = usable.front();
    if (request_.bitsPerSecond) {
        const auto asked = std::find_if(usable.begin(), usable.end(), [&](int megabits) {
            return megabits * 1'000'000LL == *request_.bitsPerSecond;
        });
        if (asked == usable.end()) {
            std::string list;
            for (const int megabits : usable) list += (list.empty() ? "" : ", ") + std::to_string(megabits);
            throw JobError("-vbr: " + name + " at " + raster + " has no such bit rate; expected one of " + list);
        }
        chosen = *asked;
    } else {
        const double pixels = static_cast<double>(encoder_->width) * encoder_->height / (1920.0 * 1080.0);
        const double wanted = vc3MegabitsPerFrame * pixels * av_q2d(timing_.frameRate);
        for (const int megabits : usable) {
            if (std::fabs(megabits - wanted) < std::fabs(chosen - wanted)) chosen = megabits;
        }
    }
    encoder_ = makeEncoder(chosen * 1'000'000LL);
    check(avcodec_open2(encoder_.get(), encoder_->codec, nullptr), "cannot encode " + name + " at " + raster);
}

void VideoTrack::beginFile(const MediaInput& input, const AVStream& stream, std::int64_t start) {
    decoder_.emplace(input, stream, threads_, request_.decodeOptions);
    stages_->beginFile(input.picture(), stream.time_base);
    inputPath_ = input.path();
    inputTimeBase_ = stream.time_base;
    inputStart_ = input.startOf(stream);
    outputStart_ = std::max(nextTime_, av_rescale_q(start, microseconds, timeBase_));
    framesBeforeFile_ = frameCount_;
    hasPictures_ = false;
}

void VideoTrack::consume(const AVPacket& packet) {
    if (isFull()) return;
    decoder_->decode(&packet, [&](AVFrame& frame) { take(frame); });
}

void VideoTrack::endFile() {
    decoder_->decode(nullptr, [&](AVFrame& frame) { take(frame); });
    stages_->flush();
    if (frameCount_ > framesBeforeFile_ || isFull()) return;
    if (!hasPictures_) throw JobError("'" + inputPath_ + "': no picture could be decoded");
    throw JobError("'" + inputPath_ + "': none of its pictures falls on a frame of the output, of which there are " +
                   shortestText(av_q2d(timing_.frameRate)) + " a second");
}

void VideoTrack::finish() {
    encode(*encoder_, nullptr, *packet_, [&](AVPacket& packet) { write(packet); });
}

std::int64_t VideoTrack::end() const noexcept { return av_rescale_q(nextTime_, timeBase_, microseconds); }

std::optional<std::int64_t> VideoTrack::knownLimit() const noexcept {
    if (!request_.maxFrames || !timing_.hasConstantRate) return std::nullopt;
    const std::int64_t end = av_rescale_q(*request_.maxFrames, timeBase_, microseconds);
    return end >= 0 ? std::optional(end) : std::nullopt;  // negative: too late to be told
}

void VideoTrack::take(AVFrame& frame) {
    hasPictures_ = true;
    frame.pts = frame.best_effort_timestamp;
    if (frame.pts != AV_NOPTS_VALUE) frame.pts -= inputStart_;
    const std::int64_t length =
        frame.pkt_duration > 0 ? frame.pkt_duration : av_rescale_q(1, av_inv_q(timing_.frameRate), inputTimeBase_);
    stages_->push(frame, length);
}

/// Says when the picture is shown, if the output may have it.
bool VideoTrack::place(AVFrame& frame, AVRational timeBase) {
    if (isFull()) return false;
    std::int64_t time = nextTime_;
    if (frame.pts != AV_NOPTS_VALUE) time = outputStart_ + av_rescale_q(frame.pts, timeBase, timeBase_);
    // Never two pictures at one time, and never a picture less: one that comes too early moves to the next free tick.
    frame.pts = frameCount_ == 0 ? std::max<std::int64_t>(time, 0) : std::max(time, lastTime_ + 1);
    lastTime_ = frame.pts;
    nextTime_ = frame.pts + frameTicks_;
    ++frameCount_;
    return true;
}

void VideoTrack::encodeFrame(AVFrame& frame) {
    frame.pict_type = AV_PICTURE_TYPE_NONE;    // the encoder decides
    frame.quality = encoder_->global_quality;  // not what the source's own encoder chose
    encode(*encoder_, &frame, *packet_, [&](AVPacket& packet) { write(packet); });
}

void VideoTrack::write(AVPacket& packet) {
    if (packet.duration == 0) packet.duration = frameTicks_;
    output_.write(packet, stream_, timeBase_);
}

}  // namespace corvex::tool
