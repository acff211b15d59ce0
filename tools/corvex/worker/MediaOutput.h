#pragma once

#include <string>

#include <Corvex/exported/OAVTranscodeArgumentFileFormatValue.h>
#include <tools/corvex/worker/FFmpeg.h>
#include <tools/corvex/worker/OutputFile.h>

namespace corvex::tool {

/// The container that is written. Streams are added, then start(), packets, finish(). Errors are JobErrors that name the
/// target.
class MediaOutput {
public:
    MediaOutput(OutputFile& file, const OAVTranscodeArgumentFileFormatValue& format, bool indexInFront);
    ~MediaOutput();
    MediaOutput(const MediaOutput&) = delete;
    MediaOutput& operator=(const MediaOutput&) = delete;

    /// Whether encoders must give their headers apart from the packets.
    [[nodiscard]] bool wantsGlobalHeaders() const noexcept;
    [[nodiscard]] bool carries(AVCodecID codec) const;
    /// Throws JobError when the container cannot hold the codec.
    void requireCarries(AVCodecID codec) const;

    /// Adds a stream with the encoder's parameters, or with those of a stream that is copied. `tag`: the four characters
    /// of the sample entry, or nullptr for the container's usual one.
    int addStream(const AVCodecContext& encoder, const char* tag);
    int addCopiedStream(const AVStream& source);

    /// Facts of the first source that stay true of the result, as its creation time.
    void copyMetadata(const AVDictionary* metadata);

    /// The label of the video's first frame: a timecode track is written. The language is an ISO 639-2 code.
    void setTimecode(int stream, const std::string& timecode);
    void setLanguage(int stream, const std::string& language);

    /// Written so far.
    [[nodiscard]] std::int64_t bytesWritten() const noexcept {
        return context_->pb != nullptr ? context_->pb->bytes_written : 0;
    }

    void start();
    /// Takes the packet's contents. Its time stamps are in `timeBase`.
    void write(AVPacket& packet, int stream, AVRational timeBase);
    void finish();

private:
    /// What failed. It is the disk of the work directory that may be full.
    [[nodiscard]] std::string what() const;

    OutputFile& file_;
    OutputPointer context_;
    bool indexInFront_;
    bool hasTimecode_ = false;
};

}  // namespace corvex::tool
