#include <tools/corvex/worker/TranscodeWorker.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <map>
#include <memory>
#include <optional>

extern "C" {
#include <libavutil/cpu.h>
}

#include <Corvex/filesystem/ApplicationIOTrackingDelegate.h>
#include <tools/corvex/FileUrl.h>
#include <tools/corvex/worker/AudioChoice.h>
#include <tools/corvex/worker/AudioTrack.h>
#include <tools/corvex/worker/CopiedAudioTrack.h>
#include <tools/corvex/worker/ProgressReporter.h>
#include <tools/corvex/worker/StopRequest.h>
#include <tools/corvex/worker/TranscodeJob.h>
#include <tools/corvex/worker/TransferReporter.h>
#include <tools/corvex/worker/VideoTrack.h>

namespace corvex::tool {
namespace {

/// When the container does not tell.
constexpr AVRational assumedFrameRate{25, 1};

/// What all inputs together are, learnt before anything is written.
struct JobFacts {
    std::unique_ptr<MediaInput> first;  ///< Still open.
    VideoTiming timing;
    std::vector<std::vector<std::uint8_t>> audioCoding;  ///< Of the first input's wanted tracks.
    std::vector<bool> isCodedAlike;                      ///< Whether all inputs code the track so.
    std::int64_t frames = 0;
    double seconds = 0;
};

/// The progress file is emptied when it is opened, so it must be none of the job's own files.
void requireOwnProgressFile(const TranscodeJob& job, const TranscodeCliArguments& arguments) {
    if (job.progressFile.empty()) return;
    namespace fs = std::filesystem;
    std::error_code error;  // of a file that does not exist yet
    const fs::path place = fs::weakly_canonical(fs::absolute(job.progressFile, error), error);
    const auto isSame = [&](const fs::path& other) {
        if (other.empty()) return false;
        // A pipe that is open, as /dev/stderr, has no place.
        return fs::equivalent(job.progressFile, other, error) ||
               (!place.empty() && place == fs::weakly_canonical(fs::absolute(other, error), error));
    };
    const bool isTable = isSame(arguments.lutFile().value_or("")),
               isImage = isSame(arguments.watermarkFilePath().value_or(""));
    if (isSame(job.output) || std::any_of(job.inputs.begin(), job.inputs.end(), isSame) || isTable || isImage) {
        throw JobError("-progress_file " + inQuotes(job.progressFile) + ": is a file of the job itself");
    }
}

/// The audio streams of an input, by its number, that are not to be left out.
std::vector<const AVStream*> wantedAudio(const TranscodeJob& job, const MediaInput& input, std::size_t file) {
    std::vector<const AVStream*> wanted;
    if (!job.audio) return wanted;
    const auto ignored = job.audio->ignoredTracks.find(file);
    for (std::size_t track = 0; track < input.audio().size(); ++track) {
        const bool isIgnored = ignored != job.audio->ignoredTracks.end() && ignored->second.contains(track);
        if (!isIgnored) wanted.push_back(input.audio()[track]);
    }
    return wanted;
}

void requireIgnoredTracksExist(const TranscodeJob& job, const MediaInput& input, std::size_t file) {
    if (!job.audio) return;
    const auto ignored = job.audio->ignoredTracks.find(file);
    if (ignored == job.audio->ignoredTracks.end() || *ignored->second.rbegin() < input.audio().size()) return;
    throw JobError("-ac_omit_" + std::to_string(file) + ": names track " + std::to_string(*ignored->second.rbegin()) +
                   ", '" + input.path() + "' has " + std::to_string(input.audio().size()) + " audio tracks, from 0");
}

/// Compares the audio of an input with that of the first.
void compareAudio(const std::vector<const AVStream*>& wanted, JobFacts& facts) {
    const bool isFirst = !facts.first;
    for (std::size_t i = 0; i < wanted.size(); ++i) {
        auto coding = audioCoding(*wanted[i]->codecpar);
        if (isFirst) {
            facts.audioCoding.push_back(std::move(coding));
            facts.isCodedAlike.push_back(true);
        } else if (coding != facts.audioCoding[i]) {
            facts.isCodedAlike[i] = false;
        }
    }
}

JobFacts inspect(const TranscodeJob& job) {
    JobFacts facts;
    if (job.audio && !job.audio->ignoredTracks.empty() &&
        job.audio->ignoredTracks.rbegin()->first >= job.inputs.size()) {
        throw UsageError("-ac_omit_" + std::to_string(job.audio->ignoredTracks.rbegin()->first) + ": there are " +
                         std::to_string(job.inputs.size()) + " input files, numbered from 0");
    }
    for (std::size_t file = 0; file < job.inputs.size(); ++file) {
        const std::string& path = job.inputs[file];
        std::error_code error;  // of a target that does not exist yet
        if (std::filesystem::equivalent(path, job.output, error)) {
            throw JobError("-out '" + job.output.string() + "' is also an input; a source is never replaced");
        }
        if (file > 0) MediaInput::requireReadableAgain(path);  // the first one stays open
        auto input = std::make_unique<MediaInput>(path);
        if (job.video && input->video() == nullptr) {
            throw JobError("'" + path + "': holds no video; -vn would write its audio alone");
        }
        if (!job.video && input->audio().empty()) throw JobError("'" + path + "': holds no audio to write");
        requireIgnoredTracksExist(job, *input, file);
        const auto wanted = wantedAudio(job, *input, file);
        if (facts.first && wanted.size() > facts.audioCoding.size()) {
            throw JobError("'" + path + "': gives " + std::to_string(wanted.size()) + " audio tracks, the first file " +
                           std::to_string(facts.audioCoding.size()));
        }
        compareAudio(wanted, facts);
        facts.frames += job.video ? input->expectedFrames() : 0;
        facts.seconds += input->duration();
        const AVRational known = input->frameRate(), rate = known.num > 0 ? known : assumedFrameRate;
        if (!facts.first) {
            facts.timing = {rate, input->hasConstantRate()};
            facts.first = std::move(input);
        } else if (!input->hasConstantRate() || av_cmp_q(rate, facts.timing.frameRate) != 0) {
            facts.timing.hasConstantRate = false;
        }
    }
    if (job.video && job.video->frameRate) facts.frames = std::llround(facts.seconds * av_q2d(*job.video->frameRate));
    if (job.video && job.video->maxFrames) facts.frames = std::min(facts.frames, *job.video->maxFrames);
    return facts;
}

/// The output and the tracks that feed it.
class Transcode {
public:
    Transcode(const TranscodeJob& job, JobFacts facts, OutputFile& file, ProgressReporter& progress)
        : job_(job),
          first_(std::move(facts.first)),
          progress_(progress),
          transfers_(job.output),
          output_(file, job.format, job.indexInFront) {
        if (job.video) video_.emplace(*job.video, *first_, facts.timing, output_);
        if (job.audio) addAudioTracks(facts.isCodedAlike);
        if (!video_ && audio_.empty()) throw JobError("'" + first_->path() + "': nothing of it can be written");
        if (job.timecode && job.timecode->addsTrack) {
            output_.setTimecode(video_->stream(), job.timecode->start(*first_, video_->frameRate()).timecodeString());
        }
        if (video_ && !job.language.empty()) output_.setLanguage(video_->stream(), job.language);
        const std::string& audioLanguage =
            job.audio && !job.audio->language.empty() ? job.audio->language : job.language;
        for (const auto& track : audio_) {
            if (!audioLanguage.empty()) output_.setLanguage(track->stream(), audioLanguage);
        }
        output_.copyMetadata(first_->context().metadata);
        output_.start();
    }

    void run() {
        const PacketPointer packet = makePacket();
        if (const auto limit = video_ ? video_->knownLimit() : std::nullopt) limitAudio(*limit);
        for (std::size_t file = 0; file < job_.inputs.size() && !isFull(); ++file) {
            const std::unique_ptr<MediaInput> input =
                first_ ? std::move(first_) : std::make_unique<MediaInput>(job_.inputs[file]);
            const auto tracks = beginFile(*input, file);
            while (!isFull() && input->read(*packet)) {
                for (auto [track, end] = tracks.equal_range(packet->stream_index); track != end; ++track) {
                    track->second->consume(*packet);
                }
                transfers_.report(input->path(), input->bytesRead(), output_.bytesWritten());
                progress_.update(frameCount(), static_cast<double>(end()) / AV_TIME_BASE);
                av_packet_unref(packet.get());
                if (video_ && video_->isFull()) limitAudio(video_->end());
            }
            av_packet_unref(packet.get());
            for (const auto& [stream, track] : tracks) track->endFile();
            transfers_.endInput(input->path(), input->bytesRead(), output_.bytesWritten());
        }
        if (video_) video_->finish();
        for (const auto& track : audio_) track->finish();
        progress_.update(frameCount(), static_cast<double>(end()) / AV_TIME_BASE);
        progress_.report("finishing");
        output_.finish();
    }

private:
    using TracksByStream = std::multimap<int, Track*>;

    void addAudioTracks(const std::vector<bool>& isCodedAlike) {
        const auto streams = wantedAudio(job_, *first_, 0);
        for (std::size_t i = 0; i < streams.size(); ++i) {
            const AVStream& stream = *streams[i];
            if (job_.audio->copies && isCodedAlike[i] && output_.carries(stream.codecpar->codec_id)) {
                audio_.push_back(std::make_unique<CopiedAudioTrack>(stream, output_));
            } else {
                addEncodedTracks(stream, encodingOf(stream, isCodedAlike[i]));
            }
        }
        if (job_.format == OAVWaveFileFormat && audio_.size() > 1) {
            throw JobError("'" + first_->path() + "': gives " + std::to_string(audio_.size()) +
                           " audio tracks; a wav file holds one, and -ac_omit_0 would leave others out");
        }
    }

    /// What a track is encoded as: the request's format, or a choice by the source's own.
    const AudioFormatSettings& encodingOf(const AVStream& stream, bool isCodedAlike) {
        const AudioRequest& request = *job_.audio;
        if (request.format != nullptr) return *request.format;
        const AudioFormatSettings& chosen = chosenAudioFormat(*stream.codecpar, request.copies, job_.format);
        request.requireFits(chosen);
        if (request.copies) {
            printError("-acopy: stream " + std::to_string(stream.index) + " of " + inQuotes(first_->path()) + " (" +
                       avcodec_get_name(stream.codecpar->codec_id) + ") is encoded as " +
                       std::string(chosen.format.rawValue()) +
                       (isCodedAlike ? ", as the file's format does not carry it"
                                     : ", as the files that are joined are not coded alike"));
        }
        return chosen;
    }

    void addEncodedTracks(const AVStream& stream, const AudioFormatSettings& settings) {
        if (!job_.audio->isDiscrete) {
            audio_.push_back(std::make_unique<AudioTrack>(*job_.audio, settings, *first_, stream, output_));
            return;
        }
        for (int channel = 0; channel < stream.codecpar->ch_layout.nb_channels; ++channel) {
            audio_.push_back(std::make_unique<AudioTrack>(*job_.audio, settings, *first_, stream, output_, channel));
        }
    }

    TracksByStream beginFile(const MediaInput& input, std::size_t file) {
        const std::int64_t start = end();
        TracksByStream tracks;
        const auto feed = [&](Track& track, const AVStream& stream) {
            track.beginFile(input, stream, start);
            tracks.emplace(stream.index, &track);
        };
        if (video_) feed(*video_, *input.video());
        std::size_t next = 0;
        for (const AVStream* stream : wantedAudio(job_, input, file)) {
            const int count = job_.audio->isDiscrete ? stream->codecpar->ch_layout.nb_channels : 1;
            for (int i = 0; i < count && next < audio_.size(); ++i) feed(*audio_[next++], *stream);
        }
        return tracks;
    }

    void limitAudio(std::int64_t end) {
        for (const auto& track : audio_) track->limitTo(end);
    }
    /// Whether nothing that is still to be read would be taken in.
    [[nodiscard]] bool isFull() const noexcept {
        return video_ && video_->isFull() &&
               std::all_of(audio_.begin(), audio_.end(), [](const auto& track) { return track->isFull(); });
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
    TransferReporter transfers_;
    MediaOutput output_;
    std::optional<VideoTrack> video_;
    std::vector<std::unique_ptr<Track>> audio_;
};

}  // namespace

ExitStatus runTranscodeWorker(const std::vector<std::string>& words) {
    const LibraryMessages messages;
    // A picture for each processor to work on, and one that waits for it.
    TranscodeCliArguments::setDefaultVideoFrameCapacity(2ULL * static_cast<unsigned>(std::max(1, av_cpu_count())));
    TranscodeCliArguments arguments(words);
    replaceFileUrls(arguments);
    const TranscodeJob job = TranscodeJob::make(arguments);
    watchForStopRequests(job.parentPid);
    requireOwnProgressFile(job, arguments);
    ProgressReporter progress(job.progressFile, job.progressPrefix);
    const auto transfers = std::make_shared<TransferMeter>();
    ApplicationIOTrackingDelegate::shared().setupIOTrackingBehavior(
        [transfers](const IOActivityUpdate& update) { transfers->take(update); });
    progress.setTransfers(transfers);
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
