#pragma once

#include <memory>
#include <string>
#include <string_view>

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavfilter/avfilter.h>
#include <libavformat/avformat.h>
#include <libavutil/audio_fifo.h>
#include <libavutil/frame.h>
#include <libavutil/opt.h>
#include <libswresample/swresample.h>
}

#include <tools/corvex/ToolError.h>

namespace corvex::tool {

/// Owners of the media libraries' objects. All of them are used by one thread at a time.
template <auto free>
struct FreeByAddress {
    template <class T>
    void operator()(T* pointer) const noexcept {
        free(&pointer);
    }
};
template <auto free>
struct Free {
    template <class T>
    void operator()(T* pointer) const noexcept {
        free(pointer);
    }
};
using PacketPointer = std::unique_ptr<AVPacket, FreeByAddress<av_packet_free>>;
using FramePointer = std::unique_ptr<AVFrame, FreeByAddress<av_frame_free>>;
using CodecContextPointer = std::unique_ptr<AVCodecContext, FreeByAddress<avcodec_free_context>>;
using InputPointer = std::unique_ptr<AVFormatContext, FreeByAddress<avformat_close_input>>;
using OutputPointer = std::unique_ptr<AVFormatContext, Free<avformat_free_context>>;
using FilterGraphPointer = std::unique_ptr<AVFilterGraph, FreeByAddress<avfilter_graph_free>>;
using ResamplerPointer = std::unique_ptr<SwrContext, FreeByAddress<swr_free>>;
using AudioFifoPointer = std::unique_ptr<AVAudioFifo, Free<av_audio_fifo_free>>;

/// The time base of whole files (AV_TIME_BASE_Q, which is no expression of C++).
inline constexpr AVRational microseconds{1, AV_TIME_BASE};

/// A dictionary of options that frees what a library left in it.
class Options {
public:
    Options() = default;
    Options(const Options&) = delete;
    Options& operator=(const Options&) = delete;
    ~Options() { av_dict_free(&dictionary_); }
    void set(const char* key, const std::string& value) { av_dict_set(&dictionary_, key, value.c_str(), 0); }
    [[nodiscard]] AVDictionary** address() noexcept { return &dictionary_; }
    /// Throws JobError naming the first option that nobody took.
    void requireAllUsed(const std::string& by) const;

private:
    AVDictionary* dictionary_ = nullptr;
};

/// The library's text for an error code.
[[nodiscard]] std::string errorText(int code);

/// Passes a result that is no error through; throws JobError "WHAT: the library's text" for one.
int check(int result, std::string_view what);

/// Throws when an allocation of the media libraries gave nothing.
template <class T>
T* checkAllocated(T* pointer) {
    if (pointer == nullptr) throw JobError("out of memory");
    return pointer;
}

/// Codes whose samples are all of one size, so that any number of them can be taken off or put in between.
[[nodiscard]] constexpr bool isPcm(AVCodecID codec) noexcept {
    return codec >= AV_CODEC_ID_FIRST_AUDIO && codec < AV_CODEC_ID_ADPCM_IMA_QT;
}

[[nodiscard]] PacketPointer makePacket();
[[nodiscard]] FramePointer makeFrame();

/// Whether pictures of a pixel format have alpha.
[[nodiscard]] bool hasAlpha(int format);

/// Keeps the media libraries' own messages off standard error while it lives, and keeps the last error or warning of
/// each thread's work for the one line that the worker reports.
class LibraryMessages {
public:
    LibraryMessages();
    ~LibraryMessages();
    LibraryMessages(const LibraryMessages&) = delete;
    LibraryMessages& operator=(const LibraryMessages&) = delete;
    /// The last message since the start or the last call; empty when there was none.
    [[nodiscard]] static std::string takeLast();
    /// Whether there was an error since the start or the last call, not only warnings.
    [[nodiscard]] static bool takeHadError();
};

}  // namespace corvex::tool
