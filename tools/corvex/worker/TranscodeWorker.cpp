#include <tools/corvex/worker/TranscodeWorker.h>

#include <algorithm>
#include <filesystem>
#include <map>
#include <memory>
#include <optional>

#include <tools/corvex/worker/AudioTrack.h>
#include <tools/corvex/worker/ProgressReporter.h>
#include <tools/corvex/worker/StopRequest.h>
#include <tools/corvex/worker/TranscodeJob.h>
#include <tools/corvex/worker/VideoTrack.h>

namespace corvex::tool {
namespace {

/// When the container does not tell.
constexpr AVRational assumedFrameRate{25, 1};

/// What all inputs together are, learnt before anything is written.
struct JobFacts {
    std::unique_ptr<MediaInput> first;  ///< Still open.
    VideoTiming timing;
    std::int64_t frames = 0;
    double seconds = 0;
};

/// The progress file is emptied when it is opened, so it must be none of the job's own files.
void requireOwnProgressFile(const TranscodeJob& job) {
    if (job.progressFile.empty()) return;
    const auto isSame = [&](const std::filesystem::path& other) {
        std::error_code error;  // of a file that does not exist yet
        return std::filesystem::equivalent(job.progressFile, other, error) ||
               std::filesystem::weakly_canonical(job.progressFile, error) ==
                   std::filesystem::weakly_canonical(other, error);
    };
    if (isSame(job.output) || std::any_of(job.inputs.begin(), job.inputs.end(), isSame)) {
        throw JobError("-progress_file " + inQuotes(job.progressFile) + ": is a file of the job itself");
    }
}

JobFacts inspect(const TranscodeJob& job) {
    JobFacts facts;
    for (const std::string& path : job.inputs) {
        std::error_code error;  // of a target that does not exist yet
        if (std::filesystem::equivalent(path, job.output, error)) {
            throw JobError("-out '" + job.output.string() + "' is also an input; a source is never replaced");
        }
        auto input = std::make_unique<MediaInput>(path);
        if (job.video && input->video() == nullptr) {
            throw JobError("'" + path + "': holds no video; -vn would write its audio alone");
        }
        if (!job.video && input->audio().empty()) throw JobError("'" + path + "': holds no audio to write");
        if (facts.first && input->audio().size() > facts.first->audio().size()) {
            throw JobError("'" + path + "': has " + std::to_string(input->audio().size()) +
                           " audio tracks, the first file " + std::to_string(facts.first->audio().size()));
        }
        facts.frames += job.video ? input->expectedFrames() : 0;
        facts.seconds += input->duration();
        const AVRational rate = input->frameRate();
        if (!facts.first) {
            facts.timing = {rate.num > 0 ? rate : assumedFrameRate, input->hasConstantRate()};
            facts.first = std::move(input);
        } else if (!input->hasConstantRate() || av_cmp_q(rate, facts.timing.frameRate) != 0) {
            facts.timing.hasConstantRate = false;
        }
    }
    return facts;
}

/// The output and the tracks that feed it.
class Transcode {
public:
    Transcode(const TranscodeJob& job, JobFacts facts, OutputFile& file, ProgressReporter& progress)
        : job_(job), first_(std::move(facts.first)), progress_(progress), output_(file, job.format, job.indexInFront) {
        if (job.video) video_.emplace(*job.video, *first_, facts.timing, output_);
        if (job.audio) addAudioTracks();
        if (!video_ && audio_.empty()) throw JobError("'" + first_->path() + "': nothing of it can be written");
        output_.copyMetadata(first_->context().metadata);
        output_.start();
    }

    void run() {
        const PacketPointer packet = makePacket();
        for (const std::string& path : job_.inputs) {
            const std::unique_ptr<MediaInput> input = first_ ? std::move(first_) : std::make_unique<MediaInput>(path);
            const auto tracks = beginFile(*input);
            while (input->read(*packet)) {
                if (const auto track = tracks.find(packet->stream_index); track != tracks.end()) {
                    track->second->consume(*packet);
                    progress_.update(frameCount(), static_cast<double>(end()) / AV_TIME_BASE);
                }
                av_packet_unref(packet.get());
            }
            for (const auto& [stream, track] : tracks) track->endFile();
        }
        if (video_) video_->finish();
        for (const auto& track : audio_) track->finish();
        progress_.update(frameCount(), static_cast<double>(end()) / AV_TIME_BASE);
        progress_.report("finishing");
        output_.finish();
    }

private:
    void addAudioTracks() {
        if (job_.format == OAVWaveFileFormat && first_->audio().size() > 1) {
            throw JobError("'" + first_->path() + "': has " + std::to_string(first_->audio().size()) +
                           " audio tracks; a wav file holds one");
        }
        for (const AVStream* stream : first_->audio()) {
            if (job_.audio->format == nullptr) {
                audio_.push_back(std::make_unique<CopiedAudioTrack>(*stream, output_));
            } else {
                audio_.push_back(std::make_unique<AudioTrack>(*job_.audio, *first_, *stream, output_));
            }
        }
    }

    std::map<int, Track*> beginFile(const MediaInput& input) {
        const std::int64_t start = end();
        std::map<int, Track*> tracks;
        if (video_) {
            video_->beginFile(input, *input.video(), start);
            tracks[input.video()->index] = &*video_;
        }
        for (std::size_t i = 0; i < std::min(audio_.size(), input.audio().size()); ++i) {
            const AVStream& stream = *input.audio()[i];
            audio_[i]->beginFile(input, stream, start);
            tracks[stream.index] = audio_[i].get();
        }
        return tracks;
    }

    /// Where the next file starts: pictures follow each other without a gap, and audio keeps to them.
    [[nodiscard]] std::int64_t end() const noexcept {
        if (video_) return video_->end();
        std::int64_t latest = 0;
        for (const auto& track : audio_) latest = std::max(latest, track->end());
        return latest;
    }
    [[nodiscard]] std::int64_t frameCount() const noexcept { return video_ ? video_->frameCount() : 0; }

    const TranscodeJob& job_;
    std::unique_ptr<MediaInput> first_;
    ProgressReporter& progress_;
    MediaOutput output_;
    std::optional<VideoTrack> video_;
    std::vector<std::unique_ptr<Track>> audio_;
};

}  // namespace

ExitStatus runTranscodeWorker(const std::vector<std::string>& words) {
    const LibraryMessages messages;
    const TranscodeJob job = TranscodeJob::make(TranscodeCliArguments(words));
    watchForStopRequests(job.parentPid);
    requireOwnProgressFile(job);
    ProgressReporter progress(job.progressFile, job.progressPrefix);
    try {
        OutputFile file(job.output, job.workDirectory, job.overwrites);
        JobFacts facts = inspect(job);
        progress.setTotal(facts.frames, facts.seconds);
        {
            Transcode transcode(job, std::move(facts), file, progress);
            transcode.run();
        }
        throwIfStopRequested();  // the index may have taken its time
        file.publish();
    } catch (const Error&) {
        progress.report("failed");
        throw;
    }
    progress.report("done");
    return ExitStatus::success;
}

}  // namespace corvex::tool
