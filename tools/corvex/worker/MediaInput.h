#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include <tools/corvex/worker/FFmpeg.h>
#include <tools/corvex/worker/FrameGeometry.h>

namespace corvex::tool {

/// One media file, opened for reading. All errors are JobErrors that begin with the file's path in quotes.
class MediaInput {
public:
    /// Opens the file and reads what its container and first packets say. A file that is missing, empty, no media, or
    /// shorter than its own index says is an error.
    explicit MediaInput(std::string path);
    /// Throws JobError for a pipe: it gives its bytes once, and opening it again would wait for ever.
    static void requireReadableAgain(const std::string& path);

    [[nodiscard]] const std::string& path() const noexcept { return path_; }
    /// Read from the file so far; 0 for what the media libraries open by themselves.
    [[nodiscard]] std::int64_t bytesRead() const noexcept {
        return context_->pb != nullptr ? context_->pb->bytes_read : 0;
    }
    [[nodiscard]] const AVFormatContext& context() const noexcept { return *context_; }
    /// The main video stream (never a cover picture), or nullptr.
    [[nodiscard]] AVStream* video() const noexcept { return video_; }
    [[nodiscard]] const std::vector<AVStream*>& audio() const noexcept { return audio_; }

    /// Time stamps of the streams count from here: the file's start, in the stream's own time base.
    [[nodiscard]] std::int64_t startOf(const AVStream& stream) const noexcept;
    /// Whether it is a picture file, which has neither a rate nor a length, whatever the media libraries assume.
    [[nodiscard]] bool isStill() const noexcept;
    /// In seconds; 0 when unknown.
    [[nodiscard]] double duration() const noexcept;
    /// Frames per second of the video; {0, 1} when unknown.
    [[nodiscard]] AVRational frameRate() const noexcept;
    /// Whether the frames follow each other at that rate exactly.
    [[nodiscard]] bool hasConstantRate() const;
    /// Number of video frames as the container counts them, else estimated; 0 when unknown.
    [[nodiscard]] std::int64_t expectedFrames() const noexcept;
    /// How the pictures of the main video lie in the file, or those of another one.
    [[nodiscard]] SourcePicture picture() const noexcept;
    [[nodiscard]] SourcePicture pictureOf(AVStream& video) const noexcept;

    /// Goes to the last picture of the main video at or before `time` (in the stream's time base, as its time stamps count)
    /// that can be decoded by itself; a file that cannot be sought in is read on from where it stands.
    void seekVideo(std::int64_t time);
    /// Reads on. False at the end of the file. Throws when the file breaks off, or when the worker is to stop.
    [[nodiscard]] bool read(AVPacket& packet);

private:
    [[noreturn]] void fail(const std::string& problem) const;
    [[nodiscard]] bool beginsAtRate(AVRational rate);
    void requireCompleteIndex() const;
    void requireCompleteSegment() const;
    void requireCompleteStreams() const;

    std::string path_;
    InputPointer context_;
    AVStream* video_ = nullptr;
    std::vector<AVStream*> audio_;
    std::vector<std::int64_t> ends_;  ///< By stream: the highest end of a packet, in the stream's time base.
};

}  // namespace corvex::tool
