#pragma once

#include <optional>

#include <tools/corvex/worker/AudioRequest.h>
#include <tools/corvex/worker/Decoder.h>
#include <tools/corvex/worker/MediaOutput.h>
#include <tools/corvex/worker/Track.h>

namespace corvex::tool {

/// Decodes, resamples and encodes one audio stream. Samples keep their place beside the video: silence fills what a
/// source lacks, and what would overlap the next file is left out.
class AudioTrack : public Track {
public:
    /// `settings`: the format to encode. `channel`: the one of the source's channels, from 0, that the track carries;
    /// absent: all of them.
    AudioTrack(const AudioRequest& request, const AudioFormatSettings& settings, const MediaInput& first,
               const AVStream& source, MediaOutput& output, std::optional<int> channel = std::nullopt);

    void beginFile(const MediaInput& input, const AVStream& stream, std::int64_t start) override;
    void consume(const AVPacket& packet) override;
    void endFile() override;
    void finish() override;
    [[nodiscard]] std::int64_t end() const noexcept override;
    void limitTo(std::int64_t end) override;
    [[nodiscard]] bool isFull() const noexcept override;
    [[nodiscard]] int stream() const noexcept override { return stream_; }

private:
    void chooseLayout(const AudioRequest& request, const AVCodecParameters& source);
    void openEncoder(const AudioRequest& request, const AudioFormatSettings& settings, const MediaInput& first,
                     const AVStream& source);
    void resample(const AVFrame* frame);
    void openResampler(const AVFrame& frame);
    void pickChannel(int sourceChannels);
    void place(std::int64_t expectedStart);
    void addSilence(std::int64_t samples);
    void encodeWholeFrames();
    void encodeSamples(int count);

    MediaOutput& output_;
    CodecContextPointer encoder_;
    int stream_ = -1;
    int frameSize_ = 0;
    std::optional<int> channel_;
    std::optional<std::int64_t> limit_;  ///< Samples after which the track ends.

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

}  // namespace corvex::tool
