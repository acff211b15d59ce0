#include <tools/corvex/worker/Decoder.h>

namespace corvex::tool {

Decoder::Decoder(const MediaInput& input, const AVStream& stream, int threads,
                 const std::map<std::string, std::string>& options)
    : name_("'" + input.path() + "': stream " + std::to_string(stream.index)), frame_(makeFrame()) {
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

void Decoder::send(const AVPacket* packet) {
    const int result = avcodec_send_packet(context_.get(), packet);
    if (result == AVERROR_EOF || (result == AVERROR_INVALIDDATA && frameCount_ == 0)) return;
    check(result, name_ + ": damaged after frame " + std::to_string(frameCount_));
}

bool Decoder::receive() {
    const int result = avcodec_receive_frame(context_.get(), frame_.get());
    if (result == AVERROR(EAGAIN) || result == AVERROR_EOF) return false;
    if (result == AVERROR_INVALIDDATA && frameCount_ == 0) return false;
    check(result, name_ + ": damaged after frame " + std::to_string(frameCount_));
    const bool isDamaged = frame_->decode_error_flags != 0 || (frame_->flags & AV_FRAME_FLAG_CORRUPT) != 0;
    if (isDamaged && frameCount_ > 0) {
        throw JobError(name_ + ": frame " + std::to_string(frameCount_) + " is damaged");
    }
    ++frameCount_;
    return true;
}

}  // namespace corvex::tool
