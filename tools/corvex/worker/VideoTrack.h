#pragma once

#include <optional>

#include <tools/corvex/worker/Decoder.h>
#include <tools/corvex/worker/MediaOutput.h>
#include <tools/corvex/worker/PictureStages.h>
#include <tools/corvex/worker/Track.h>
#include <tools/corvex/worker/VideoRequest.h>

namespace corvex::tool {

/// When pictures can follow each other in the output.
struct VideoTiming {
    AVRational frameRate;          ///< Nominal frames per second.
    bool hasConstantRate = false;  ///< All inputs have that rate: time stamps count frames.
};

/// Decodes, brings to size and format, and encodes the video.
class VideoTrack : public Track {
public:
    /// The raster and the colour tags of the output follow from the first input. Adds its stream to `output`.
    VideoTrack(const VideoRequest& request, const MediaInput& first, VideoTiming timing, MediaOutput& output);

    void beginFile(const MediaInput& input, const AVStream& stream, std::int64_t start) override;
    void consume(const AVPacket& packet) override;
    void endFile() override;
    void finish() override;
    /// The video is limited by its number of frames alone.
    void limitTo(std::int64_t) override {}
    [[nodiscard]] std::int64_t end() const noexcept override;
    [[nodiscard]] std::int64_t frameCount() const noexcept { return frameCount_; }
    /// Whether the output has all the frames that it may have; further ones are left out.
    [[nodiscard]] bool isFull() const noexcept override {
        return request_.maxFrames && frameCount_ >= *request_.maxFrames;
    }
    [[nodiscard]] int stream() const noexcept override { return stream_; }
    /// Where the output ends at the latest, in microseconds, if the request limits its frames and they have one length.
    [[nodiscard]] std::optional<std::int64_t> knownLimit() const noexcept;
    /// The rate at which the frames are counted.
    [[nodiscard]] AVRational frameRate() const noexcept { return timing_.frameRate; }

private:
    void openEncoder(const MediaInput& first, PixelSize size, PixelAspect pixelAspect);
    void limitFramesInFlight(const AVCodecParameters& source);
    void prepareStages(const MediaInput& first);
    void setKeyFrameDistance(AVCodecContext& encoder) const;
    void openWithRateClass();
    [[nodiscard]] CodecContextPointer makeEncoder(std::optional<std::int64_t> bitsPerSecond) const;
    void take(AVFrame& frame);
    [[nodiscard]] bool place(AVFrame& frame, AVRational timeBase);
    void encodeFrame(AVFrame& frame);
    void write(AVPacket& packet);

    VideoRequest request_;
    VideoTiming timing_;
    MediaOutput& output_;
    AVRational timeBase_{};           ///< Of the encoder.
    int threads_ = 0;                 ///< Of decoder and encoder each; 0: as many as the machine has processors.
    std::size_t picturesAtWork_ = 1;  ///< How many may be worked on or wait for it.
    int lookahead_ = -1;              ///< Frames that the encoder may look ahead; -1: as many as it likes.
    std::int64_t frameTicks_ = 1;     ///< Length of a frame at the nominal rate, in that time base.
    CodecContextPointer encoder_;
    int stream_ = -1;

    std::optional<Decoder> decoder_;
    AVRational inputTimeBase_{};
    std::int64_t inputStart_ = 0;   ///< In the input's time base.
    std::int64_t outputStart_ = 0;  ///< Of the current file, in the encoder's time base.
    std::int64_t lastTime_ = 0;     ///< Of the last frame, in the same.
    std::int64_t nextTime_ = 0;     ///< Where the last frame ends at the nominal rate, in the same.
    std::int64_t frameCount_ = 0;
    std::int64_t framesBeforeFile_ = 0;
    bool hasPictures_ = false;  ///< The current file.
    std::string inputPath_;

    PacketPointer packet_;
    std::optional<PictureStages> stages_;  ///< Last: what works in it ends before the encoder goes.
};

}  // namespace corvex::tool
