#include <tools/corvex/writeBytes.h>

#include <cerrno>
#include <cstring>

#include <fcntl.h>
#include <unistd.h>

#include <tools/corvex/ToolError.h>

namespace corvex::tool {
namespace {

/// 0, or why not all of the bytes were taken.
int errorOfWriting(int descriptor, std::span<const std::byte> bytes) noexcept {
    while (!bytes.empty()) {
        const ssize_t count = write(descriptor, bytes.data(), bytes.size());
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) return errno;
        bytes = bytes.subspan(static_cast<std::size_t>(count));
    }
    return 0;
}

}  // namespace

void writeBytes(const OutputFile& file, std::span<const std::byte> bytes) {
    const int descriptor = open(file.pathWhileWriting().c_str(), O_WRONLY | O_CLOEXEC);
    int error = descriptor < 0 ? errno : errorOfWriting(descriptor, bytes);
    // A file system over a network may tell only now that there is no room.
    if (descriptor >= 0 && close(descriptor) != 0 && error == 0) error = errno;
    if (error != 0) throw JobError("cannot write " + inQuotes(file.target().native()) + ": " + std::strerror(error));
}

}  // namespace corvex::tool
