#include <Corvex/platform/InputFile.h>

#include <cerrno>
#include <filesystem>
#include <string_view>
#include <system_error>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace corvex::inline v0 {

std::optional<InputFile> InputFile::open(const std::filesystem::path& path) noexcept {
    int descriptor = -1;
    do {
        descriptor = ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
    } while (descriptor < 0 && errno == EINTR);
    if (descriptor < 0) return std::nullopt;
    InputFile file(descriptor);
    struct stat status {};
    if (::fstat(descriptor, &status) != 0 || !S_ISREG(status.st_mode)) return std::nullopt;
    file.size_ = static_cast<std::uint64_t>(status.st_size);
    return file;
}

InputFile::InputFile(InputFile&& other) noexcept
    : descriptor_(std::exchange(other.descriptor_, -1)), size_(other.size_) {}

InputFile::~InputFile() {
    if (descriptor_ >= 0) ::close(descriptor_);
}

std::optional<std::size_t> InputFile::read(std::span<char> buffer) noexcept {
    std::size_t filled = 0;
    while (filled < buffer.size()) {
        const ssize_t count = ::read(descriptor_, buffer.data() + filled, buffer.size() - filled);
        if (count == 0) break;
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) return std::nullopt;
        filled += static_cast<std::size_t>(count);
    }
    return filled;
}

bool InputFile::close() noexcept { return ::close(std::exchange(descriptor_, -1)) == 0; }

std::string fileUrlText(const std::filesystem::path& path) {
    constexpr std::string_view plain =  // RFC 3986: the characters of a path segment, and its separator
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-._~!$&'()*+,;=:@/";
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::error_code problem;
    const auto absolute = std::filesystem::absolute(path, problem);
    std::string url = "file://";
    for (const char character : (problem ? path : absolute).native()) {
        if (plain.find(character) != std::string_view::npos) {
            url += character;
        } else {
            const auto byte = static_cast<unsigned char>(character);
            url += {'%', digits[byte >> 4U], digits[byte & 15U]};
        }
    }
    return url;
}

}  // namespace corvex::inline v0
