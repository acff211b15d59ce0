#include <tools/corvex/worker/Decoder.h>

#include <algorithm>

namespace corvex::tool {
namespace {

/// Whether the file itself says so. Of a key frame that is damaged its packet does not tell.
bool beginsWithKeyFrame(const AVStream& stream) {
    const AVIndexEntry* first = avformat_index_get_entry(const_cast<AVStream*>(&stream), 0);
    return first != nullptr && (first->flags & AVINDEX_KEYFRAME) != 0 &&
           (stream.start_time == AV_NOPTS_VALUE || first->timestamp <= stream.start_time);
}

}  // namespace

Decoder::Decoder(const MediaInput& input, const AVStream& stream, int threads,
                 const std::map<std::string, std::string>& options)
    : name_("'" + input.path() + "': stream " + std::to_string(stream.index)),
      frame_(makeFrame()),
      hadKeyFrame_(beginsWithKeyFrame(stream)) {
    const AVCodec* codec = avcodec_find_decoder(stream.codecpar->codec_id);
    if (codec == nullptr) {
        throw JobError(name_ + ": no decoder for " + avcodec_get_name(stream.codecpar->codec_id) + " on this machine");
    }
    context_.reset(checkAllocated(avcodec_alloc_context3(codec)));
    check(avcodec_parameters_to_context(context_.get(), stream.codecpar), name_);
    context_->pkt_timebase = stream.time_base;
    context_->thread_count = threads;
    Options given;
    for (const auto& [key, value] : options) given.set(key.c_str(), value);
    check(avcodec_open2(context_.get(), codec, given.address()), name_ + ": cannot decode");
    given.requireAllUsed("-additional_decode_options: the decoder '" + std::string(codec->name) + "'");
}

/// A decoder that works at several pictures speaks of a packet when that many others have come.
void Decoder::noteKeyFrame(const AVPacket& packet) noexcept {
    if (hadKeyFrame_) {
        packetsBeforeKeyFrame_ = std::max(packetsBeforeKeyFrame_ - 1, 0);
    } else if ((packet.flags & AV_PKT_FLAG_KEY) != 0) {
        hadKeyFrame_ = true;
    } else {
        const int inFlight = (context_->active_thread_type & FF_THREAD_FRAME) != 0 ? context_->thread_count : 0;
        packetsBeforeKeyFrame_ = std::min(packetsBeforeKeyFrame_ + 1, inFlight);
    }
}

bool Decoder::mayLackWhatCameBefore() const noexcept {
    if (frameCount_ > 0) return false;
    return context_->codec_type != AVMEDIA_TYPE_VIDEO || !hadKeyFrame_ || packetsBeforeKeyFrame_ > 0;
}

void Decoder::send(const AVPacket* packet) {
    if (packet != nullptr) noteKeyFrame(*packet);
    const int result = avcodec_send_packet(context_.get(), packet);
    if (result == AVERROR_EOF || (result == AVERROR_INVALIDDATA && mayLackWhatCameBefore())) return;
    check(result, name_ + ": damaged after frame " + std::to_string(frameCount_));
}

bool Decoder::receive() {
    const int result = avcodec_receive_frame(context_.get(), frame_.get());
    if (result == AVERROR(EAGAIN) || result == AVERROR_EOF) return false;
    if (result == AVERROR_INVALIDDATA && mayLackWhatCameBefore()) return false;
    check(result, name_ + ": damaged after frame " + std::to_string(frameCount_));
    const bool isDamaged = frame_->decode_error_flags != 0 || (frame_->flags & AV_FRAME_FLAG_CORRUPT) != 0;
    if (isDamaged && !mayLackWhatCameBefore()) {
        throw JobError(name_ + ": frame " + std::to_string(frameCount_) + " is damaged");
    }
    ++frameCount_;
    return true;
}

}  // namespace corvex::tool
