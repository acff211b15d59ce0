#include <tools/corvex/worker/MediaInput.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <utility>

extern "C" {
#include <libavutil/display.h>
}

#include <tools/corvex/worker/StopRequest.h>

namespace corvex::tool {
namespace {

/// A stream that ends this much before the length that the file states has been cut off.
constexpr double missingSeconds = 1.0;

int wantsToStop(void*) { return stopReason() == StopReason::none ? 0 : 1; }

}  // namespace

void MediaInput::fail(const std::string& problem) const { throw JobError("'" + path_ + "': " + problem); }

MediaInput::MediaInput(std::string path) : path_(std::move(path)) {
    // Words name files only: a path such as "concat:a" or "http://host/a" is a file of that name or nothing.
    std::error_code error;
    const auto status = std::filesystem::status(path_, error);
    if (!std::filesystem::exists(status)) {
        fail(status.type() == std::filesystem::file_type::not_found ? "no such file" : error.message());
    }
    if (std::filesystem::is_directory(status)) fail("is a directory; expected a media file");
    if (std::filesystem::is_regular_file(status) && std::filesystem::file_size(path_, error) == 0 && !error) {
        fail("the file is empty");
    }
    AVFormatContext* context = checkAllocated(avformat_alloc_context());
    context->interrupt_callback = {wantsToStop, nullptr};
    const std::string context_path = "file:" + path_;
    check(avformat_open_input(&context, context_path.c_str(), nullptr, nullptr), "'" + path_ + "': no readable media");
    context_.reset(context);
    check(avformat_find_stream_info(context, nullptr), "'" + path_ + "': no readable media");
    throwIfStopRequested();

    const int best = av_find_best_stream(context, AVMEDIA_TYPE_VIDEO, -1, -1, nullptr, 0);
    if (best >= 0 && (context->streams[best]->disposition & AV_DISPOSITION_ATTACHED_PIC) == 0) {
        video_ = context->streams[best];
    }
    for (unsigned i = 0; i < context->nb_streams; ++i) {
        AVStream* stream = context->streams[i];
        const bool isAudio = stream->codecpar->codec_type == AVMEDIA_TYPE_AUDIO;
        if (isAudio) audio_.push_back(stream);
        if (!isAudio && stream != video_) stream->discard = AVDISCARD_ALL;
    }
    if (video_ == nullptr && audio_.empty()) fail("holds neither video nor audio");
    ends_.assign(context->nb_streams, 0);
    requireCompleteIndex();
}

void MediaInput::requireCompleteIndex() const {
    if (context_->pb == nullptr) return;
    const std::int64_t size = avio_size(context_->pb);
    if (size <= 0) return;  // a pipe
    std::int64_t needed = 0;
    for (unsigned i = 0; i < context_->nb_streams; ++i) {
        AVStream* stream = context_->streams[i];
        const int count = avformat_index_get_entries_count(stream);
        if (count == 0) continue;
        const AVIndexEntry* last = avformat_index_get_entry(stream, count - 1);
        needed = std::max(needed, last->pos + last->size);
    }
    if (needed > size) {
        fail("is truncated: its index names " + std::to_string(needed) + " bytes, the file has " +
             std::to_string(size));
    }
}

void MediaInput::requireCompleteStreams() const {
    if (context_->duration_estimation_method != AVFMT_DURATION_FROM_STREAM) return;
    for (unsigned i = 0; i < context_->nb_streams; ++i) {
        const AVStream& stream = *context_->streams[i];
        if (stream.discard == AVDISCARD_ALL || stream.duration <= 0 || ends_[i] <= 0) continue;
        const std::int64_t start = stream.start_time == AV_NOPTS_VALUE ? 0 : stream.start_time;
        const double missing = static_cast<double>(stream.duration - (ends_[i] - start)) * av_q2d(stream.time_base);
        if (missing > missingSeconds) {
            fail("is truncated: stream " + std::to_string(i) + " ends " + std::to_string(std::lround(missing)) +
                 " s before the length that the file states");
        }
    }
}

std::int64_t MediaInput::startOf(const AVStream& stream) const noexcept {
    if (context_->start_time == AV_NOPTS_VALUE) return 0;
    return av_rescale_q(context_->start_time, AV_TIME_BASE_Q, stream.time_base);
}

double MediaInput::duration() const noexcept {
    return context_->duration == AV_NOPTS_VALUE ? 0 : static_cast<double>(context_->duration) / AV_TIME_BASE;
}

AVRational MediaInput::frameRate() const noexcept {
    return video_ == nullptr ? AVRational{0, 1} : av_guess_frame_rate(context_.get(), video_, nullptr);
}

bool MediaInput::hasConstantRate() const noexcept {
    if (video_ == nullptr || video_->avg_frame_rate.num <= 0 || video_->r_frame_rate.num <= 0) return false;
    const double average = av_q2d(video_->avg_frame_rate);
    return std::fabs(average - av_q2d(video_->r_frame_rate)) <= 0.001 * average;
}

std::int64_t MediaInput::expectedFrames() const noexcept {
    if (video_ == nullptr) return 0;
    if (video_->nb_frames > 0) return video_->nb_frames;
    return std::llround(duration() * av_q2d(frameRate()));
}

SourcePicture MediaInput::picture() const noexcept {
    SourcePicture picture;
    if (video_ == nullptr) return picture;
    picture.size = {video_->codecpar->width, video_->codecpar->height};
    const AVRational aspect = av_guess_sample_aspect_ratio(context_.get(), video_, nullptr);
    if (aspect.num > 0 && aspect.den > 0) picture.pixelAspect = {aspect.num, aspect.den};
    const std::uint8_t* matrix = av_stream_get_side_data(video_, AV_PKT_DATA_DISPLAYMATRIX, nullptr);
    if (matrix != nullptr) {
        // The library counts counter-clockwise and in fractions; cameras only turn by quarters.
        const double angle = av_display_rotation_get(reinterpret_cast<const std::int32_t*>(matrix));
        if (!std::isnan(angle)) picture.turn = ((static_cast<int>(std::lround(-angle / 90)) * 90) % 360 + 360) % 360;
    }
    return picture;
}

bool MediaInput::read(AVPacket& packet) {
    for (;;) {
        throwIfStopRequested();
        const int result = av_read_frame(context_.get(), &packet);
        if (result == AVERROR_EOF) {
            if (context_->pb != nullptr && context_->pb->error < 0) check(context_->pb->error, "'" + path_ + "'");
            requireCompleteStreams();
            return false;
        }
        if (result < 0) throwIfStopRequested();
        check(result, "'" + path_ + "': reading failed");
        const auto index = static_cast<std::size_t>(packet.stream_index);
        if (index >= ends_.size() || context_->streams[index]->discard == AVDISCARD_ALL) {  // found while reading
            av_packet_unref(&packet);
            continue;
        }
        if ((packet.flags & AV_PKT_FLAG_CORRUPT) != 0) fail("is truncated or damaged: a packet is incomplete");
        if (packet.pts != AV_NOPTS_VALUE) ends_[index] = std::max(ends_[index], packet.pts + packet.duration);
        return true;
    }
}

}  // namespace corvex::tool
