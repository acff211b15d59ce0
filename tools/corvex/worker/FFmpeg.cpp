#include <tools/corvex/worker/FFmpeg.h>

extern "C" {
#include <libavutil/pixdesc.h>
}

#include <array>
#include <cstdarg>
#include <mutex>
#include <utility>

#include <Corvex/platform/Text.h>

namespace corvex::tool {
namespace {

std::mutex messageMutex;
std::string lastMessage;
bool hadError = false;

void keepMessage(void* source, int level, const char* format, va_list arguments) {
    if (level > AV_LOG_WARNING) return;
    std::array<char, 512> line{};
    int printsPrefix = 1;
    if (av_log_format_line2(source, level, format, arguments, line.data(), static_cast<int>(line.size()),
                            &printsPrefix) < 0) {
        return;
    }
    std::string_view text = trimmed(std::string_view(line.data()));
    // "[encoder @ 0x5581] reason": the address says nothing to a reader.
    if (text.starts_with('[')) {
        const std::size_t end = text.find("] ");
        if (end != std::string_view::npos) text.remove_prefix(end + 2);
    }
    if (text.empty()) return;
    const std::lock_guard lock(messageMutex);
    hadError = hadError || level <= AV_LOG_ERROR;
    // "ff_frame_thread_encoder_init failed": what went wrong within it has been said before.
    if (!text.starts_with("ff_")) lastMessage = text;
}

}  // namespace

void Options::requireAllUsed(const std::string& by) const {
    if (const AVDictionaryEntry* left = av_dict_get(dictionary_, "", nullptr, AV_DICT_IGNORE_SUFFIX)) {
        throw JobError(by + " does not know the option '" + left->key + "'");
    }
}

std::string errorText(int code) {
    std::array<char, AV_ERROR_MAX_STRING_SIZE> text{};
    av_strerror(code, text.data(), text.size());
    return text.data();
}

int check(int result, std::string_view what) {
    if (result >= 0) return result;
    std::string message(what);
    message += ": " + errorText(result);
    if (const std::string detail = LibraryMessages::takeLast(); !detail.empty()) message += " (" + detail + ")";
    throw JobError(message);
}

PacketPointer makePacket() { return PacketPointer(checkAllocated(av_packet_alloc())); }
bool hasAlpha(int format) {
    const AVPixFmtDescriptor* description = av_pix_fmt_desc_get(static_cast<AVPixelFormat>(format));
    return description != nullptr && (description->flags & AV_PIX_FMT_FLAG_ALPHA) != 0;
}

FramePointer makeFrame() { return FramePointer(checkAllocated(av_frame_alloc())); }

LibraryMessages::LibraryMessages() { av_log_set_callback(keepMessage); }
LibraryMessages::~LibraryMessages() { av_log_set_callback(av_log_default_callback); }

std::string LibraryMessages::takeLast() {
    const std::lock_guard lock(messageMutex);
    return std::exchange(lastMessage, {});
}

bool LibraryMessages::takeHadError() {
    const std::lock_guard lock(messageMutex);
    return std::exchange(hadError, false);
}

}  // namespace corvex::tool
