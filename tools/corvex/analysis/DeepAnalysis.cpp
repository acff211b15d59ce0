#include <tools/corvex/analysis/DeepAnalysis.h>

extern "C" {
#include <libavutil/imgutils.h>
#include <libavutil/pixdesc.h>
}

#include <array>
#include <map>
#include <memory>

#include <openssl/evp.h>

#include <tools/corvex/worker/StopRequest.h>

namespace corvex::tool {
namespace {

struct FreeDigest {
    void operator()(EVP_MD_CTX* digest) const noexcept { EVP_MD_CTX_free(digest); }
};

/// libavutil has SHA-256, too, but not with the processor's instructions: it would take longer than the decoding.
class Sha256 {
public:
    Sha256() : state_(checkAllocated(EVP_MD_CTX_new())) {
        require(EVP_DigestInit_ex(state_.get(), EVP_sha256(), nullptr));
    }

    void update(const std::uint8_t* bytes, std::size_t count) { require(EVP_DigestUpdate(state_.get(), bytes, count)); }
    [[nodiscard]] std::string hexadecimal() {
        std::array<std::uint8_t, EVP_MAX_MD_SIZE> digest{};
        unsigned size = 0;
        require(EVP_DigestFinal_ex(state_.get(), digest.data(), &size));
        std::string text;
        for (unsigned i = 0; i < size; ++i) {
            text += "0123456789abcdef"[digest[i] >> 4U];
            text += "0123456789abcdef"[digest[i] & 15U];
        }
        return text;
    }

private:
    static void require(int succeeded) {
        if (succeeded != 1) throw JobError("the SHA-256 of this machine's libcrypto does not work");
    }

    std::unique_ptr<EVP_MD_CTX, FreeDigest> state_;
};

/// One track's decoder, which goes on after damage.
class TrackDecoder {
public:
    explicit TrackDecoder(const AVStream& stream) : frame_(makeFrame()) {
        result_.index = stream.index;
        const AVCodec* codec = avcodec_find_decoder(stream.codecpar->codec_id);
        if (codec == nullptr) return;
        context_.reset(checkAllocated(avcodec_alloc_context3(codec)));
        check(avcodec_parameters_to_context(context_.get(), stream.codecpar), codec->name);
        context_->pkt_timebase = stream.time_base;
        context_->thread_count = 0;
        // Decoders that work at several pictures copy a picture's error flags when the next one starts, which is before
        // the errors are known: where a picture may leave in another thread than its own, damage would count by luck.
        const AVCodecDescriptor* descriptor = avcodec_descriptor_get(codec->id);
        const bool reorders = descriptor != nullptr && (descriptor->props & AV_CODEC_PROP_REORDER) != 0;
        if (reorders) context_->thread_type = FF_THREAD_SLICE;
        if (avcodec_open2(context_.get(), codec, nullptr) < 0) context_.reset();
    }

    /// Whether this machine has a decoder for the track.
    [[nodiscard]] bool canDecode() const noexcept { return context_ != nullptr; }
    [[nodiscard]] std::int64_t frames() const noexcept { return result_.frames; }

    /// nullptr: no more packets come.
    void decode(const AVPacket* packet) {
        int result = 0;
        while ((result = avcodec_send_packet(context_.get(), packet)) == AVERROR(EAGAIN)) receive();
        if (result < 0 && result != AVERROR_EOF) ++result_.decodeErrors;
        receive();
    }

    [[nodiscard]] DecodedTrackResult finish() {
        decode(nullptr);
        result_.sha256 = digest_.hexadecimal();
        return result_;
    }

private:
    void receive() {
        for (;;) {
            const int result = avcodec_receive_frame(context_.get(), frame_.get());
            if (result == AVERROR(EAGAIN) || result == AVERROR_EOF) return;
            if (result < 0) {
                ++result_.decodeErrors;
                continue;
            }
            if (frame_->decode_error_flags != 0 || (frame_->flags & AV_FRAME_FLAG_CORRUPT) != 0) ++result_.decodeErrors;
            if (context_->codec_type == AVMEDIA_TYPE_VIDEO) {
                takePicture();
            } else {
                takeSamples();
            }
        }
    }

    void takePicture() {
        ++result_.frames;
        const auto format = static_cast<AVPixelFormat>(frame_->format);
        const int size = av_image_get_buffer_size(format, frame_->width, frame_->height, 1);
        if (size <= 0) return;
        bytes_.resize(static_cast<std::size_t>(size));
        av_image_copy_to_buffer(bytes_.data(), size, frame_->data, frame_->linesize, format, frame_->width,
                                frame_->height, 1);
        digest_.update(bytes_.data(), bytes_.size());
    }

    void takeSamples() {
        result_.frames += frame_->nb_samples;
        const auto format = static_cast<AVSampleFormat>(frame_->format);
        const auto size = static_cast<std::size_t>(av_get_bytes_per_sample(format));
        const auto channels = static_cast<std::size_t>(frame_->ch_layout.nb_channels);
        const auto samples = static_cast<std::size_t>(frame_->nb_samples);
        if (av_sample_fmt_is_planar(format) == 0) return digest_.update(frame_->data[0], samples * channels * size);
        bytes_.resize(samples * channels * size);
        for (std::size_t channel = 0; channel < channels; ++channel) {
            const std::uint8_t* plane = frame_->extended_data[channel];
            for (std::size_t sample = 0; sample < samples; ++sample) {
                std::copy_n(plane + sample * size, size, bytes_.data() + (sample * channels + channel) * size);
            }
        }
        digest_.update(bytes_.data(), bytes_.size());
    }

    CodecContextPointer context_;
    FramePointer frame_;
    Sha256 digest_;
    std::vector<std::uint8_t> bytes_;
    DecodedTrackResult result_;
};

/// Of the tracks that can be decoded, by stream; of the others the result's problem tells.
void addDecoders(const MediaInput& input, std::map<int, TrackDecoder>& decoders, DeepResult& result) {
    for (unsigned i = 0; i < input.context().nb_streams; ++i) {
        AVStream& stream = *input.context().streams[i];
        const AVMediaType type = stream.codecpar->codec_type;
        const bool isPicture = (stream.disposition & AV_DISPOSITION_ATTACHED_PIC) != 0;
        if ((type != AVMEDIA_TYPE_VIDEO && type != AVMEDIA_TYPE_AUDIO) || isPicture) continue;
        stream.discard = AVDISCARD_DEFAULT;  // of several video tracks the input leaves all but one out
        const auto [place, isNew] = decoders.try_emplace(stream.index, stream);
        if (place->second.canDecode()) continue;
        decoders.erase(place);
        result.problem = "no decoder for track " + std::to_string(stream.index) + " (" +
                         avcodec_get_name(stream.codecpar->codec_id) + ") on this machine";
    }
}

}  // namespace

DeepResult decodeFile(MediaInput& input, const DecodeProgress& progress) {
    DeepResult result;
    std::map<int, TrackDecoder> decoders;
    const auto pictures = [&] {
        const auto main = decoders.find(input.video() == nullptr ? -1 : input.video()->index);
        return main == decoders.end() ? 0 : main->second.frames();
    };
    const PacketPointer packet = makePacket();
    double seconds = 0;
    try {
        addDecoders(input, decoders, result);
        while (input.read(*packet)) {
            const AVStream& stream = *input.context().streams[packet->stream_index];
            if (packet->pts != AV_NOPTS_VALUE) {
                seconds = static_cast<double>(packet->pts - input.startOf(stream)) * av_q2d(stream.time_base);
            }
            if (const auto found = decoders.find(packet->stream_index); found != decoders.end()) {
                found->second.decode(packet.get());
            }
            av_packet_unref(packet.get());
            progress(pictures(), seconds);
        }
    } catch (const JobError& error) {
        throwIfStopRequested();
        result.problem = error.what();
    }
    for (auto& [index, decoder] : decoders) result.tracks.push_back(decoder.finish());
    progress(pictures(), seconds);
    return result;
}

}  // namespace corvex::tool
