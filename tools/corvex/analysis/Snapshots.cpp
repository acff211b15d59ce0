#include <tools/corvex/analysis/Snapshots.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

#include <unistd.h>

#include <Corvex/platform/NumberText.h>
#include <tools/corvex/worker/Decoder.h>
#include <tools/corvex/worker/OutputFile.h>
#include <tools/corvex/worker/StopRequest.h>
#include <tools/corvex/writeBytes.h>

namespace corvex::tool {
namespace {

struct TimedFrame {
    FramePointer frame;
    SourcePicture picture;
    std::int64_t time = AV_NOPTS_VALUE;  ///< In the stream's time base.
    double seconds = 0;                  ///< From the start of the file.
};

/// When the frame at a location starts, in the stream's time base: a location is a part of the way from the first frame
/// to the last.
std::int64_t timeAt(const MediaInput& input, double location) {
    const AVStream& stream = *input.video();
    const AVRational rate = input.frameRate();
    const double frame = rate.num > 0 ? av_q2d(av_inv_q(rate)) : 0;
    double seconds = static_cast<double>(std::max<std::int64_t>(0, input.expectedFrames() - 1)) * frame;
    if (seconds == 0) seconds = std::max(0.0, input.duration() - frame);
    const std::int64_t start = stream.start_time == AV_NOPTS_VALUE ? input.startOf(stream) : stream.start_time;
    // In the middle of the frame, as time stamps are rounded.
    return start + static_cast<std::int64_t>(std::floor((seconds * location + frame / 2) / av_q2d(stream.time_base)));
}

/// Reads on until the picture that is shown at `time` is known: the last one that does not start later, else the first.
void readTo(std::int64_t time, MediaInput& input, TimedFrame& result) {
    const AVStream& stream = *input.video();
    bool isFound = false;
    Decoder decoder(input, stream);
    const auto take = [&](AVFrame& frame) {
        const std::int64_t stamp = frame.best_effort_timestamp;
        isFound = isFound || (result.frame && stamp != AV_NOPTS_VALUE && stamp > time);
        if (isFound) return;
        result.frame.reset(checkAllocated(av_frame_clone(&frame)));
        result.time = stamp;
    };
    const PacketPointer packet = makePacket();
    while (!isFound && input.read(*packet)) {
        if (packet->stream_index == stream.index) decoder.decode(packet.get(), take);
        av_packet_unref(packet.get());
    }
    if (!isFound) decoder.decode(nullptr, take);
}

/// Throws JobError.
TimedFrame frameAt(const std::string& path, double location) {
    MediaInput::requireReadableAgain(path);
    // Streams without an index are sought in by time alone, which may lead behind the picture that all else depends on.
    for (const double secondsBefore : {0.0, 10.0, std::numeric_limits<double>::infinity()}) {
        MediaInput input(path);
        if (input.video() == nullptr) throw JobError(inQuotes(path) + ": holds no video");
        const AVStream& stream = *input.video();
        const std::int64_t time = timeAt(input, location);
        const bool isWhole = std::isinf(secondsBefore);
        if (!isWhole) input.seekVideo(time - std::llround(secondsBefore / av_q2d(stream.time_base)));
        TimedFrame result;
        readTo(time, input, result);
        const bool isLate = result.frame && result.time != AV_NOPTS_VALUE && result.time > time;
        if (!result.frame || (isLate && !isWhole)) continue;
        result.picture = input.picture();
        result.picture.size = {result.frame->width, result.frame->height};
        if (result.time != AV_NOPTS_VALUE) {
            result.seconds = static_cast<double>(result.time - input.startOf(stream)) * av_q2d(stream.time_base);
        }
        return result;
    }
    throw JobError(inQuotes(path) + ": no picture can be decoded");
}

}  // namespace

PendingFiles::~PendingFiles() {
    for (const auto& file : files_) unlink(file.c_str());
}

void PendingFiles::write(const std::filesystem::path& file, const std::vector<std::uint8_t>& bytes) {
    std::error_code error;  // of what does not exist
    if (std::filesystem::exists(std::filesystem::symlink_status(file, error))) {
        throw JobError("cannot write " + inQuotes(file.string()) + ": the file exists");
    }
    OutputFile output(file, {}, false);
    writeBytes(output, std::as_bytes(std::span(bytes)));
    files_.reserve(files_.size() + 1);
    output.publish();
    files_.push_back(file);
}

Snapshots::Snapshots(const MediaAnalysisImageRequest& request, std::filesystem::path folder, std::string stem,
                     PendingFiles& files)
    : request_(request), folder_(std::move(folder)), stem_(std::move(stem)), files_(files) {
    still_.maxWidth = request_.maxImageWidth;
    still_.maxHeight = request_.imageHeight;
    still_.quality = request_.compressionFactor;
    if (!request_.lutFile.empty()) still_.table = LookUpTable::read(request_.lutFile);
}

std::vector<SnapshotResult> Snapshots::take(const std::string& path, const MediaInput* input, std::size_t number) {
    std::vector<SnapshotResult> results;
    for (std::size_t i = 0; i < request_.snapshotLocations.size(); ++i) {
        SnapshotResult& result = results.emplace_back();
        result.location = *parseFloat<double>(shortestText(request_.snapshotLocations[i]));  // 0.3, as it was given
        const std::filesystem::path file =
            folder_ / (stem_ + "-" + std::to_string(number) + "-" + std::to_string(i + 1) + ".jpg");
        if (const auto still = stillAt(path, result)) {
            store(*still, result, file);
        } else if (request_.allowFinderImages) {
            const auto ready = input != nullptr ? readyPicture(*input, request_.maxImageWidth)
                                                : desktopThumbnail(path, request_.maxImageWidth);
            if (ready) takeReadyPicture(*ready, result, file);
        }
    }
    return results;
}

std::optional<StillPicture> Snapshots::stillAt(const std::string& path, SnapshotResult& result) const {
    try {
        const TimedFrame taken = frameAt(path, result.location);
        StillPicture still = makeStill(*taken.frame, taken.picture, still_);
        result.source = "frame";
        result.timeInSeconds = taken.seconds;
        return still;
    } catch (const JobError& error) {
        throwIfStopRequested();
        result.problem = error.what();
        return std::nullopt;
    }
}

void Snapshots::takeReadyPicture(const ReadyPicture& ready, SnapshotResult& result, const std::filesystem::path& file) {
    StillRequest request = still_;
    request.table.reset();  // it was made to be looked at
    store(makeStill(*ready.frame, ready.picture, request), result, file);
    result.source = ready.source;
    result.problem.reset();
}

void Snapshots::store(const StillPicture& still, SnapshotResult& result, const std::filesystem::path& file) {
    files_.write(file, still.bytes);
    result.file = file.string();
    result.width = still.size.width;
    result.height = still.size.height;
}

}  // namespace corvex::tool
