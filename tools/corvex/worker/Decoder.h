#pragma once

#include <cstdint>
#include <map>
#include <string>

#include <tools/corvex/worker/FFmpeg.h>
#include <tools/corvex/worker/MediaInput.h>

namespace corvex::tool {

/// Decodes one stream of an input. A packet or a picture that is damaged is an error: footage is never silently lost.
/// (Before the first key frame there may be packets that nothing can be made of: a recording that starts between two.
/// Sound may start with a packet that needs the one before it.)
class Decoder {
public:
    /// `threads` 0: as many as the machine has processors. `options` are the decoder's own; one that it does not know is an
    /// error.
    Decoder(const MediaInput& input, const AVStream& stream, int threads = 0,
            const std::map<std::string, std::string>& options = {});

    /// Decodes a packet, or with nullptr what is still inside, and calls `consume(AVFrame&)` for each frame. Time stamps
    /// of the frames are in the stream's time base.
    template <class Consumer>
    void decode(const AVPacket* packet, Consumer&& consume) {
        send(packet);
        while (receive()) consume(*frame_);
    }

private:
    void send(const AVPacket* packet);
    bool receive();
    void noteKeyFrame(const AVPacket& packet) noexcept;
    [[nodiscard]] bool mayLackWhatCameBefore() const noexcept;

    std::string name_;
    CodecContextPointer context_;
    FramePointer frame_;
    std::int64_t frameCount_ = 0;
    bool hadKeyFrame_ = false;
    int packetsBeforeKeyFrame_ = 0;  ///< Of these, as many as may still be in the decoder.
};

}  // namespace corvex::tool
