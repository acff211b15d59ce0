#include <tools/corvex/worker/AudioTrack.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <vector>

extern "C" {
#include <libavutil/channel_layout.h>
#include <libavutil/samplefmt.h>
}

namespace corvex::tool {
namespace {

/// Larger than what time stamps are rounded by, smaller than what a viewer notices.
constexpr double driftSeconds = 0.1;

/// Bits per second that each channel gets at the five qualities, from good enough for speech to transparent.
constexpr std::array<std::int64_t, 5> bitsPerChannel{32'000, 48'000, 64'000, 96'000, 128'000};

/// Samples a frame for encoders that take any number.
constexpr int freeFrameSize = 4096;

bool isDeep(const AVCodecParameters& source) {
    if (source.bits_per_raw_sample > 0) return source.bits_per_raw_sample > 16;
    const int coded = av_get_bits_per_sample(source.codec_id);
    return coded > 16;
}

int usableRate(const AVCodec& codec, int wanted, const std::string& name) {
    if (codec.supported_samplerates == nullptr) return wanted;
    std::string list;
    for (const int* rate = codec.supported_samplerates; *rate != 0; ++rate) {
        if (*rate == wanted) return wanted;
        list += (list.empty() ? "" : ", ") + std::to_string(*rate);
    }
    throw JobError("-asr " + std::to_string(wanted) + ": " + name + " has no such sample rate; expected one of " +
                   list);
}

}  // namespace

AudioTrack::AudioTrack(const AudioRequest& request, const AudioFormatSettings& settings, const MediaInput& first,
                       const AVStream& source, MediaOutput& output, std::optional<int> channel)
    : output_(output), channel_(channel), frame_(makeFrame()), converted_(makeFrame()), packet_(makePacket()) {
    openEncoder(request, settings, first, source);
    stream_ = output_.addStream(*encoder_, nullptr);
    const bool takesAny = (encoder_->codec->capabilities & AV_CODEC_CAP_VARIABLE_FRAME_SIZE) != 0;
    frameSize_ = takesAny || encoder_->frame_size <= 0 ? freeFrameSize : encoder_->frame_size;
    queue_.reset(
        checkAllocated(av_audio_fifo_alloc(encoder_->sample_fmt, encoder_->ch_layout.nb_channels, 2 * frameSize_)));
}

void AudioTrack::chooseLayout(const AudioRequest& request, const AVCodecParameters& source) {
    AVChannelLayout& layout = encoder_->ch_layout;
    if (channel_) {
        av_channel_layout_default(&layout, 1);
    } else if (!request.layout.empty()) {
        check(av_channel_layout_from_string(&layout, request.layout.c_str()), "audio layout '" + request.layout + "'");
    } else if (source.ch_layout.order == AV_CHANNEL_ORDER_UNSPEC) {
        av_channel_layout_default(&layout, source.ch_layout.nb_channels);
    } else {
        check(av_channel_layout_copy(&layout, &source.ch_layout), "audio layout");
    }
}

void AudioTrack::openEncoder(const AudioRequest& request, const AudioFormatSettings& settings, const MediaInput& first,
                             const AVStream& source) {
    const std::string name(settings.format.rawValue());
    const AVCodecParameters& parameters = *source.codecpar;
    const bool isDeepOutput = request.bitsPerSample.value_or(isDeep(parameters) ? 24 : 16) > 16;
    const char* chosen =
        settings.has24 ? encoderOf(settings, request.bitsPerSample.value_or(isDeepOutput ? 24 : 16)) : settings.encoder;
    const AVCodec* codec = avcodec_find_encoder_by_name(chosen);
    output_.requireCarries(codec->id);
    encoder_.reset(checkAllocated(avcodec_alloc_context3(codec)));
    chooseLayout(request, parameters);
    const int channels = encoder_->ch_layout.nb_channels;
    if (channels > settings.maximumChannels) {
        throw JobError("-acodec " + name + " carries up to " + std::to_string(settings.maximumChannels) +
                       " channels; '" + first.path() + "' has " + std::to_string(channels) + " in stream " +
                       std::to_string(source.index) + "; -acl would change that");
    }
    encoder_->sample_rate = usableRate(*codec, request.sampleRate.value_or(parameters.sample_rate), name);
    encoder_->time_base = {1, encoder_->sample_rate};
    encoder_->sample_fmt = codec->sample_fmts[0];
    for (const AVSampleFormat* format = codec->sample_fmts; *format != AV_SAMPLE_FMT_NONE; ++format) {
        // Lossless codecs offer a format for each depth, in no order.
        const int wider = av_get_bytes_per_sample(*format) - av_get_bytes_per_sample(encoder_->sample_fmt);
        if (isDeepOutput ? wider > 0 : wider < 0) encoder_->sample_fmt = *format;
    }
    if (request.bitsPerSecond) encoder_->bit_rate = *request.bitsPerSecond;
    if (request.quality && !request.bitsPerSecond) {
        encoder_->bit_rate = bitsPerChannel[static_cast<std::size_t>(*request.quality)] * channels;
    }
    if (output_.wantsGlobalHeaders()) encoder_->flags |= AV_CODEC_FLAG_GLOBAL_HEADER;
    check(avcodec_open2(encoder_.get(), codec, nullptr),
          "cannot encode " + name + " with " + std::to_string(channels) + " channels");
}

void AudioTrack::beginFile(const MediaInput& input, const AVStream& stream, std::int64_t start) {
    decoder_.emplace(input, stream);
    inputTimeBase_ = stream.time_base;
    inputStart_ = input.startOf(stream);
    outputStart_ = av_rescale_q(start, microseconds, encoder_->time_base);
    isFirstOfFile_ = true;
    toSkip_ = 0;  // a file before it was shorter than what was to be left out of it
}

void AudioTrack::consume(const AVPacket& packet) {
    decoder_->decode(&packet, [&](AVFrame& frame) { resample(&frame); });
}

void AudioTrack::endFile() {
    decoder_->decode(nullptr, [&](AVFrame& frame) { resample(&frame); });
    if (resampler_) resample(nullptr);
    resampler_.reset();
}

void AudioTrack::openResampler(const AVFrame& frame) {
    SwrContext* context = nullptr;
    AVChannelLayout layout{};
    if (frame.ch_layout.order == AV_CHANNEL_ORDER_UNSPEC) {
        av_channel_layout_default(&layout, frame.ch_layout.nb_channels);
    } else {
        check(av_channel_layout_copy(&layout, &frame.ch_layout), "audio conversion");
    }
    const int result =
        swr_alloc_set_opts2(&context, &encoder_->ch_layout, encoder_->sample_fmt, encoder_->sample_rate, &layout,
                            static_cast<AVSampleFormat>(frame.format), frame.sample_rate, 0, nullptr);
    av_channel_layout_uninit(&layout);
    resampler_.reset(context);
    check(result, "audio conversion");
    if (channel_) pickChannel(frame.ch_layout.nb_channels);
    check(swr_init(context), "audio conversion");
    resampledRate_ = frame.sample_rate;
    resampledFormat_ = frame.format;
    resampledChannels_ = frame.ch_layout.nb_channels;
}

void AudioTrack::pickChannel(int sourceChannels) {
    if (*channel_ >= sourceChannels) {
        throw JobError("audio: a file with " + std::to_string(sourceChannels) + " channels follows one with more");
    }
    std::vector<double> weights(static_cast<std::size_t>(sourceChannels), 0.0);
    weights[static_cast<std::size_t>(*channel_)] = 1.0;
    check(swr_set_matrix(resampler_.get(), weights.data(), sourceChannels), "audio conversion");
}

void AudioTrack::limitTo(std::int64_t end) { limit_ = av_rescale_q(end, microseconds, encoder_->time_base); }

bool AudioTrack::isFull() const noexcept { return limit_ && taken_ >= *limit_; }

void AudioTrack::addSilence(std::int64_t samples) {
    if (limit_) samples = std::min(samples, *limit_ - taken_);
    while (samples > 0) {
        const int count = static_cast<int>(std::min<std::int64_t>(samples, frameSize_));
        av_frame_unref(frame_.get());
        frame_->nb_samples = count;
        frame_->format = encoder_->sample_fmt;
        check(av_channel_layout_copy(&frame_->ch_layout, &encoder_->ch_layout), "audio conversion");
        check(av_frame_get_buffer(frame_.get(), 0), "audio conversion");
        av_samples_set_silence(frame_->extended_data, 0, count, encoder_->ch_layout.nb_channels, encoder_->sample_fmt);
        check(av_audio_fifo_write(queue_.get(), reinterpret_cast<void**>(frame_->extended_data), count),
              "audio conversion");
        taken_ += count;
        samples -= count;
        encodeWholeFrames();
    }
}

void AudioTrack::place(std::int64_t expectedStart) {
    const std::int64_t waiting = resampler_ ? swr_get_delay(resampler_.get(), encoder_->sample_rate) : 0;
    const std::int64_t missing = expectedStart - (taken_ + waiting - toSkip_);
    const bool drifts = static_cast<double>(std::llabs(missing)) > driftSeconds * encoder_->sample_rate;
    // At a file's start the place is exact; within a file only a real gap moves samples, not a rounded time stamp.
    if (missing > 0 && (isFirstOfFile_ || drifts)) addSilence(missing);
    if (missing < 0 && isFirstOfFile_) toSkip_ = -missing;
    isFirstOfFile_ = false;
}

void AudioTrack::resample(const AVFrame* frame) {
    if (frame != nullptr) {
        const bool fits = resampler_ && resampledRate_ == frame->sample_rate && resampledFormat_ == frame->format &&
                          resampledChannels_ == frame->ch_layout.nb_channels;
        if (!fits) {
            if (resampler_) resample(nullptr);
            openResampler(*frame);
        }
        if (frame->best_effort_timestamp != AV_NOPTS_VALUE) {
            place(outputStart_ +
                  av_rescale_q(frame->best_effort_timestamp - inputStart_, inputTimeBase_, encoder_->time_base));
        }
    }
    const int inputCount = frame == nullptr ? 0 : frame->nb_samples;
    const int capacity = swr_get_out_samples(resampler_.get(), inputCount);
    check(capacity, "audio conversion");
    if (capacity == 0) return;
    av_frame_unref(converted_.get());
    converted_->nb_samples = capacity;
    converted_->format = encoder_->sample_fmt;
    check(av_channel_layout_copy(&converted_->ch_layout, &encoder_->ch_layout), "audio conversion");
    check(av_frame_get_buffer(converted_.get(), 0), "audio conversion");
    const auto** input = frame == nullptr ? nullptr : const_cast<const std::uint8_t**>(frame->extended_data);
    int count = check(swr_convert(resampler_.get(), converted_->extended_data, capacity, input, inputCount),
                      "audio conversion");
    const int skipped = static_cast<int>(std::min<std::int64_t>(toSkip_, count));
    toSkip_ -= skipped;
    count -= skipped;
    if (limit_) count = static_cast<int>(std::clamp<std::int64_t>(*limit_ - taken_, 0, count));
    if (count == 0) return;
    const bool isPlanar = av_sample_fmt_is_planar(encoder_->sample_fmt) != 0;
    const int channels = encoder_->ch_layout.nb_channels;
    const int bytesPerStep = av_get_bytes_per_sample(encoder_->sample_fmt) * (isPlanar ? 1 : channels);
    std::array<void*, 64> planes{};
    for (int i = 0; i < (isPlanar ? channels : 1); ++i) {
        planes[static_cast<std::size_t>(i)] =
            converted_->extended_data[i] + static_cast<std::ptrdiff_t>(skipped) * bytesPerStep;
    }
    check(av_audio_fifo_write(queue_.get(), planes.data(), count), "audio conversion");
    taken_ += count;
    encodeWholeFrames();
}

void AudioTrack::encodeWholeFrames() {
    while (av_audio_fifo_size(queue_.get()) >= frameSize_) encodeSamples(frameSize_);
}

void AudioTrack::encodeSamples(int count) {
    av_frame_unref(frame_.get());
    frame_->nb_samples = count;
    frame_->format = encoder_->sample_fmt;
    frame_->sample_rate = encoder_->sample_rate;
    check(av_channel_layout_copy(&frame_->ch_layout, &encoder_->ch_layout), "audio encoding");
    check(av_frame_get_buffer(frame_.get(), 0), "audio encoding");
    check(av_audio_fifo_read(queue_.get(), reinterpret_cast<void**>(frame_->extended_data), count), "audio encoding");
    frame_->pts = encoded_;
    encoded_ += count;
    encode(*encoder_, frame_.get(), *packet_,
           [&](AVPacket& packet) { output_.write(packet, stream_, encoder_->time_base); });
}

void AudioTrack::finish() {
    if (const int rest = av_audio_fifo_size(queue_.get()); rest > 0) encodeSamples(rest);
    encode(*encoder_, nullptr, *packet_,
           [&](AVPacket& packet) { output_.write(packet, stream_, encoder_->time_base); });
}

std::int64_t AudioTrack::end() const noexcept { return av_rescale_q(taken_, encoder_->time_base, microseconds); }

}  // namespace corvex::tool
