#pragma once

#include <optional>

#include <tools/corvex/worker/Decoder.h>
#include <tools/corvex/worker/MediaOutput.h>
#include <tools/corvex/worker/Track.h>
#include <tools/corvex/worker/TranscodeJob.h>

namespace corvex::tool {

/// Decodes, resamples and encodes one audio stream. Samples keep their place beside the video: silence fills what a
/// source lacks, and what would overlap the next file is left out.
class AudioTrack : public Track {
public:
    AudioTrack(const AudioRequest& request, const MediaInput& first, const AVStream& source, MediaOutput& output);

    void beginFile(const MediaInput& input, const AVStream& stream, std::int64_t start) override;
    void consume(const AVPacket& packet) override;
    void endFile() override;
    void finish() override;
    [[nodiscard]] std::int64_t end() const noexcept override;

private:
    void openEncoder(const AudioRequest& request, const MediaInput& first, const AVStream& source);
    void resample(const AVFrame* frame);
    void openResampler(const AVFrame& frame);
    void place(std::int64_t expectedStart);
    void addSilence(std::int64_t samples);
    void encodeWholeFrames();
    void encodeSamples(int count);

    MediaOutput& output_;
    CodecContextPointer encoder_;
    int stream_ = -1;
    int frameSize_ = 0;

    std::optional<Decoder> decoder_;
    AVRational inputTimeBase_{};
    std::int64_t inputStart_ = 0;   ///< In the input's time base.
    std::int64_t outputStart_ = 0;  ///< Of the current file, in samples.
    ResamplerPointer resampler_;
    int resampledRate_ = 0, resampledFormat_ = -1, resampledChannels_ = 0;  ///< What the resampler was made for.
    std::int64_t taken_ = 0;                                                ///< Samples taken into the queue so far.
    std::int64_t encoded_ = 0;                                              ///< Samples handed to the encoder.
    std::int64_t toSkip_ = 0;                                               ///< Samples still to be left out.
    bool isFirstOfFile_ = true;
    AudioFifoPointer queue_;
    FramePointer frame_;
    FramePointer converted_;
    PacketPointer packet_;
};

/// Copies the packets of one audio stream as they are. Where two files meet, PCM is trimmed or filled with silence to the
/// sample; of other codes, packets that would lie on top of the file before are left out.
class CopiedAudioTrack : public Track {
public:
    CopiedAudioTrack(const AVStream& source, MediaOutput& output);

    void beginFile(const MediaInput& input, const AVStream& stream, std::int64_t start) override;
    void consume(const AVPacket& packet) override;
    void endFile() override {}
    void finish() override {}
    [[nodiscard]] std::int64_t end() const noexcept override;

private:
    /// Fits the first packet of a file to what is already there. False: nothing of it is left.
    bool join();
    void fillGap(std::int64_t from, std::int64_t to);  ///< In the input's time base.
    void writePacket();

    MediaOutput& output_;
    int stream_;
    AVRational timeBase_;  ///< Of the first source, in which all is counted.
    AVRational sampleTime_{1, 1};
    std::int64_t bytesPerSample_ = 0;  ///< Of all channels together; 0: no PCM.
    int silence_ = 0;
    AVRational inputTimeBase_{};
    std::int64_t shift_ = 0;  ///< Added to the packets' times, in the input's time base.
    bool isFirstOfFile_ = true;
    std::int64_t nextTime_ = 0;
    std::vector<std::uint8_t> parameters_;  ///< What later files must share with the first.
    PacketPointer packet_;
};

}  // namespace corvex::tool
