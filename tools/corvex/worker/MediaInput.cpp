#include <tools/corvex/worker/MediaInput.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <string_view>
#include <utility>

#include <tools/corvex/worker/StopRequest.h>

namespace corvex::tool {
namespace {

/// A stream that ends this much before the length that the file states has been cut off.
constexpr double missingSeconds = 1.0;

/// Pictures that are looked at to learn whether time stamps follow the rate that a file claims.
constexpr std::size_t scannedPictures = 250;

/// Time stamps in whole milliseconds are rounded, the first as well as the others.
constexpr double roundingSeconds = 0.0015;

/// A number of EBML (RFC 8794): the leading zero bits of its first byte tell its length. An identifier keeps the bit that
/// marks the length; a size without it that is all ones is unknown.
std::optional<std::uint64_t> readEbmlNumber(std::istream& file, bool isSize) {
    const int first = file.get();
    if (first <= 0) return std::nullopt;
    const int length = 1 + std::countl_zero(static_cast<std::uint8_t>(first));
    const std::uint64_t mark = std::uint64_t{1} << (7 * length);
    auto value = static_cast<std::uint64_t>(first);
    for (int i = 1; i < length; ++i) {
        const int next = file.get();
        if (next < 0) return std::nullopt;
        value = value << 8 | static_cast<std::uint64_t>(next);
    }
    if (!isSize) return value;
    value -= mark;
    return value == mark - 1 ? std::nullopt : std::optional(value);
}

/// Where a Matroska file (RFC 9559) says that it ends: behind its segment; none when it does not say.
std::optional<std::uint64_t> matroskaSegmentEnd(const std::string& path) {
    constexpr std::uint64_t header = 0x1A45DFA3;
    constexpr std::uint64_t segment = 0x18538067;
    if (!std::filesystem::is_regular_file(path)) return std::nullopt;  // reading a pipe would take its bytes away
    std::ifstream file(path, std::ios::binary);
    if (readEbmlNumber(file, false) != header) return std::nullopt;
    const auto headerSize = readEbmlNumber(file, true);
    if (!headerSize || !file.seekg(static_cast<std::streamoff>(*headerSize), std::ios::cur)) return std::nullopt;
    if (readEbmlNumber(file, false) != segment) return std::nullopt;
    const auto size = readEbmlNumber(file, true);
    if (!size) return std::nullopt;
    return static_cast<std::uint64_t>(file.tellg()) + *size;
}

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
    const int opened = avformat_open_input(&context, context_path.c_str(), nullptr, nullptr);
    if (opened < 0) throwIfStopRequested();
    check(opened, "'" + path_ + "': no readable media");
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
    requireCompleteSegment();
}

void MediaInput::requireReadableAgain(const std::string& path) {
    std::error_code error;  // of what does not exist
    if (!std::filesystem::is_fifo(path, error)) return;
    throw JobError(inQuotes(path) + ": is a pipe, which gives its bytes once; expected a file");
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

void MediaInput::requireCompleteSegment() const {
    if (std::string_view(context_->iformat->name).find("matroska") == std::string_view::npos) return;
    const auto end = matroskaSegmentEnd(path_);
    std::error_code error;
    const std::uintmax_t size = std::filesystem::file_size(path_, error);
    if (end && !error && size < *end) {
        fail("is truncated: its header names " + std::to_string(*end) + " bytes, the file has " + std::to_string(size));
    }
}

void MediaInput::requireCompleteStreams() const {
    if (context_->duration_estimation_method != AVFMT_DURATION_FROM_STREAM) return;
    for (unsigned i = 0; i < context_->nb_streams; ++i) {
        const AVStream& stream = *context_->streams[i];
        // Without a count of its own a stream's length is the whole file's, which another stream may have made longer.
        if (stream.nb_frames == 0 && context_->nb_streams > 1) continue;
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
    return av_rescale_q(context_->start_time, microseconds, stream.time_base);
}

bool MediaInput::isStill() const noexcept {
    const std::string_view format = context_->iformat->name;
    return format == "image2" || format.ends_with("_pipe");
}

double MediaInput::duration() const noexcept {
    return context_->duration == AV_NOPTS_VALUE || isStill() ? 0
                                                             : static_cast<double>(context_->duration) / AV_TIME_BASE;
}

AVRational MediaInput::frameRate() const noexcept {
    return video_ == nullptr || isStill() ? AVRational{0, 1} : av_guess_frame_rate(context_.get(), video_, nullptr);
}

bool MediaInput::hasConstantRate() const {
    if (isStill()) return true;
    if (video_ == nullptr || video_->avg_frame_rate.num <= 0 || video_->r_frame_rate.num <= 0) return false;
    const double average = av_q2d(video_->avg_frame_rate);
    if (std::fabs(average - av_q2d(video_->r_frame_rate)) > 0.001 * average) return false;
    // These know each picture's length; in others the rate is a claim that time stamps need not follow.
    const std::string_view format = context_->iformat->name;
    if (format.starts_with("mov") || format == "avi" || format == "mxf") return true;
    return !std::filesystem::is_regular_file(path_) || MediaInput(path_).beginsAtRate(frameRate());
}

bool MediaInput::beginsAtRate(AVRational rate) {
    const PacketPointer packet = makePacket();
    std::vector<double> times;
    while (times.size() < scannedPictures && read(*packet)) {
        const bool isPicture = packet->stream_index == video_->index && packet->pts != AV_NOPTS_VALUE;
        if (isPicture) times.push_back(static_cast<double>(packet->pts) * av_q2d(video_->time_base));
        av_packet_unref(packet.get());
    }
    if (times.empty()) return true;
    const double first = *std::min_element(times.begin(), times.end());
    return std::all_of(times.begin(), times.end(), [&](double time) {
        const double frames = (time - first) * av_q2d(rate);
        return std::fabs(frames - std::round(frames)) <= roundingSeconds * av_q2d(rate);
    });
}

std::int64_t MediaInput::expectedFrames() const noexcept {
    if (video_ == nullptr) return 0;
    if (video_->nb_frames > 0) return video_->nb_frames;
    if (isStill()) return 1;
    return std::llround(duration() * av_q2d(frameRate()));
}

SourcePicture MediaInput::picture() const noexcept { return video_ == nullptr ? SourcePicture{} : pictureOf(*video_); }

SourcePicture MediaInput::pictureOf(AVStream& video) const noexcept {
    SourcePicture picture;
    picture.size = {video.codecpar->width, video.codecpar->height};
    const AVRational aspect = av_guess_sample_aspect_ratio(context_.get(), &video, nullptr);
    if (aspect.num > 0 && aspect.den > 0) picture.pixelAspect = {aspect.num, aspect.den};
    const std::uint8_t* matrix = av_stream_get_side_data(&video, AV_PKT_DATA_DISPLAYMATRIX, nullptr);
    if (matrix != nullptr) {
        picture.orientation = Orientation::fromDisplayMatrix(reinterpret_cast<const std::int32_t*>(matrix));
    }
    return picture;
}

void MediaInput::seekVideo(std::int64_t time) {
    static_cast<void>(av_seek_frame(context_.get(), video_->index, time, AVSEEK_FLAG_BACKWARD));
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
