#pragma once

#include <cstdint>
#include <string>

#include <tools/corvex/worker/FFmpeg.h>

namespace corvex::tool {

/// A chain of the media libraries' filters for pictures of one size and format. One thread at a time.
class PictureGraph {
public:
    /// What comes in.
    struct Input {
        int width = 0, height = 0, format = -1;
        AVRational timeBase{1, 1}, pixelAspect{0, 1};
    };

    /// `filters` is the chain in the libraries' own language. `threads` 0: as many as the machine has processors.
    /// Throws JobError.
    PictureGraph(const Input& input, const std::string& filters, int threads = 0);

    /// Takes a picture, which is empty afterwards. Throws JobError.
    void push(AVFrame& frame);
    /// No more pictures come; the last one ended at `end`, in the input's time base.
    void close(std::int64_t end);
    /// The next picture, if there is one yet. Throws JobError.
    [[nodiscard]] bool pull(AVFrame& frame);

    /// Of the pictures that come out.
    [[nodiscard]] AVRational timeBase() const noexcept;

private:
    FilterGraphPointer graph_;
    AVFilterContext* source_ = nullptr;
    AVFilterContext* sink_ = nullptr;
};

}  // namespace corvex::tool
