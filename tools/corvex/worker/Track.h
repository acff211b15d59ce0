#pragma once

#include <cstdint>

#include <tools/corvex/worker/FFmpeg.h>
#include <tools/corvex/worker/MediaInput.h>

namespace corvex::tool {

/// One stream of the output, fed by one stream of each input in turn.
class Track {
public:
    virtual ~Track() = default;

    /// The packets that follow come from `stream` of `input`, whose start stands at `start` (microseconds) of the output.
    virtual void beginFile(const MediaInput& input, const AVStream& stream, std::int64_t start) = 0;
    virtual void consume(const AVPacket& packet) = 0;
    virtual void endFile() = 0;
    /// After the last file: hands on what is still inside.
    virtual void finish() = 0;

    /// How far the output has got: the end of the last frame or sample taken in, in microseconds.
    [[nodiscard]] virtual std::int64_t end() const noexcept = 0;

    /// Ends the output at this time (microseconds): what lies beyond is left out.
    virtual void limitTo(std::int64_t end) = 0;
    /// Whether the output has reached its limit and nothing more is taken in.
    [[nodiscard]] virtual bool isFull() const noexcept = 0;
    /// The number of the stream in the output.
    [[nodiscard]] virtual int stream() const noexcept = 0;
};

/// Sends a frame (nullptr: no more) to an encoder and calls `write(AVPacket&)` for each packet that comes out.
template <class Writer>
void encode(AVCodecContext& encoder, const AVFrame* frame, AVPacket& packet, Writer&& write) {
    check(avcodec_send_frame(&encoder, frame), "encoding failed");
    for (;;) {
        const int result = avcodec_receive_packet(&encoder, &packet);
        if (result == AVERROR(EAGAIN) || result == AVERROR_EOF) return;
        check(result, "encoding failed");
        write(packet);
    }
}

}  // namespace corvex::tool
