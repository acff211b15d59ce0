#include <tools/corvex/worker/CopiedAudioTrack.h>

#include <algorithm>
#include <cstring>
#include <utility>

namespace corvex::tool {
namespace {

/// The byte that codes silence (the companded codes: ITU-T G.711).
int pcmSilence(AVCodecID codec) {
    switch (codec) {
        case AV_CODEC_ID_PCM_U8: return 0x80;
        case AV_CODEC_ID_PCM_ALAW: return 0xD5;
        case AV_CODEC_ID_PCM_MULAW: return 0xFF;
        default: return 0;
    }
}

}  // namespace

std::vector<std::uint8_t> audioCoding(const AVCodecParameters& source) {
    std::vector<std::uint8_t> coding(source.extradata, source.extradata + source.extradata_size);
    for (const int value :
         {static_cast<int>(source.codec_id), source.sample_rate, source.ch_layout.nb_channels, source.format}) {
        coding.push_back(static_cast<std::uint8_t>(value));
        coding.push_back(static_cast<std::uint8_t>(value >> 8));
        coding.push_back(static_cast<std::uint8_t>(value >> 16));
    }
    return coding;
}

CopiedAudioTrack::CopiedAudioTrack(const AVStream& source, MediaOutput& output)
    : output_(output), stream_(output.addCopiedStream(source)), timeBase_(source.time_base), packet_(makePacket()) {
    const AVCodecParameters& parameters = *source.codecpar;
    if (!isPcm(parameters.codec_id)) return;
    sampleTime_ = {1, parameters.sample_rate};
    bytesPerSample_ = parameters.ch_layout.nb_channels * av_get_bits_per_sample(parameters.codec_id) / 8;
    silence_ = pcmSilence(parameters.codec_id);
}

void CopiedAudioTrack::beginFile(const MediaInput& input, const AVStream& stream, std::int64_t start) {
    std::vector<std::uint8_t> parameters = audioCoding(*stream.codecpar);
    if (parameters_.empty()) parameters_ = parameters;
    if (parameters != parameters_) {  // it was looked at before, so the file has changed since
        throw JobError("'" + input.path() + "': -acopy joins files only when their audio is coded alike; stream " +
                       std::to_string(stream.index) + " differs from the first file's");
    }
    inputTimeBase_ = stream.time_base;
    shift_ = av_rescale_q(start, microseconds, stream.time_base) - input.startOf(stream);
    isFirstOfFile_ = true;
}

void CopiedAudioTrack::consume(const AVPacket& packet) {
    check(av_packet_ref(packet_.get(), &packet), "audio copy");
    if (packet_->pts != AV_NOPTS_VALUE) packet_->pts += shift_;
    if (packet_->dts != AV_NOPTS_VALUE) packet_->dts += shift_;
    if (!isFirstOfFile_ || join()) writePacket();
    av_packet_unref(packet_.get());
}

bool CopiedAudioTrack::join() {
    if (packet_->pts == AV_NOPTS_VALUE) return true;
    const std::int64_t next = av_rescale_q(nextTime_, timeBase_, inputTimeBase_);
    if (nextTime_ > 0 && packet_->pts < next) {
        const std::int64_t overlap = next - packet_->pts;
        const std::int64_t bytes = av_rescale_q(overlap, inputTimeBase_, sampleTime_) * bytesPerSample_;
        if (bytes == 0 || bytes >= packet_->size) return false;
        packet_->data += bytes;
        packet_->size -= static_cast<int>(bytes);
        packet_->duration = std::max<std::int64_t>(0, packet_->duration - overlap);
        packet_->pts = packet_->dts = next;
    }
    isFirstOfFile_ = false;
    if (nextTime_ > 0 && bytesPerSample_ > 0) fillGap(next, packet_->pts);
    return true;
}

void CopiedAudioTrack::fillGap(std::int64_t from, std::int64_t to) {
    const PacketPointer firstPacket = std::exchange(packet_, makePacket());
    const std::int64_t second = std::max<std::int64_t>(1, av_rescale_q(1, {1, 1}, inputTimeBase_));
    for (; from < to; from += std::min(second, to - from)) {
        const std::int64_t length = std::min(second, to - from);
        const std::int64_t bytes = av_rescale_q(length, inputTimeBase_, sampleTime_) * bytesPerSample_;
        if (bytes == 0) break;
        check(av_new_packet(packet_.get(), static_cast<int>(bytes)), "audio copy");
        std::memset(packet_->data, silence_, static_cast<std::size_t>(bytes));
        packet_->pts = packet_->dts = from;
        packet_->duration = length;
        writePacket();
        av_packet_unref(packet_.get());
    }
    av_packet_move_ref(packet_.get(), firstPacket.get());
}

void CopiedAudioTrack::limitTo(std::int64_t end) { limit_ = av_rescale_q(end, microseconds, timeBase_); }

void CopiedAudioTrack::writePacket() {
    if (limit_ && packet_->pts != AV_NOPTS_VALUE && av_rescale_q(packet_->pts, inputTimeBase_, timeBase_) >= *limit_) {
        nextTime_ = std::max(nextTime_, *limit_);
        return;
    }
    if (packet_->pts != AV_NOPTS_VALUE) {
        nextTime_ = std::max(nextTime_, av_rescale_q(packet_->pts + packet_->duration, inputTimeBase_, timeBase_));
    }
    output_.write(*packet_, stream_, inputTimeBase_);
}

std::int64_t CopiedAudioTrack::end() const noexcept { return av_rescale_q(nextTime_, timeBase_, microseconds); }

}  // namespace corvex::tool
