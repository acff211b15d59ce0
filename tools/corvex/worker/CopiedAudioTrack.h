#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include <tools/corvex/worker/MediaOutput.h>
#include <tools/corvex/worker/Track.h>

namespace corvex::tool {

/// How an audio stream is coded, as bytes to compare: streams can follow each other in one track when theirs are equal.
[[nodiscard]] std::vector<std::uint8_t> audioCoding(const AVCodecParameters& source);

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
    void limitTo(std::int64_t end) override;
    [[nodiscard]] bool isFull() const noexcept override { return limit_ && nextTime_ >= *limit_; }
    [[nodiscard]] int stream() const noexcept override { return stream_; }

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
    std::optional<std::int64_t> limit_;     ///< Packets that start here or later are left out.
    std::vector<std::uint8_t> parameters_;  ///< What later files must share with the first.
    PacketPointer packet_;
};

}  // namespace corvex::tool
