#include <tools/corvex/analysis/ReadyPicture.h>

extern "C" {
#include <libavutil/md5.h>
}

#include <algorithm>
#include <array>
#include <cstdlib>
#include <string_view>
#include <utility>

#include <sys/stat.h>

#include <tools/corvex/worker/Decoder.h>

namespace corvex::tool {
namespace {

struct ThumbnailFolder {
    float side;  ///< Pixels of a square that the thumbnails fit into.
    const char* name;
};
constexpr ThumbnailFolder folders[] = {{128, "normal"}, {256, "large"}, {512, "x-large"}, {1024, "xx-large"}};

SourcePicture pictureOf(const AVFrame& frame) {
    SourcePicture picture;
    picture.size = {frame.width, frame.height};
    return picture;
}

std::optional<ReadyPicture> embeddedPicture(const MediaInput& input) {
    const AVFormatContext& context = input.context();
    for (unsigned i = 0; i < context.nb_streams; ++i) {
        const AVStream& stream = *context.streams[i];
        if ((stream.disposition & AV_DISPOSITION_ATTACHED_PIC) == 0 || stream.attached_pic.size == 0) continue;
        FramePointer result;
        const auto take = [&](AVFrame& frame) { result.reset(checkAllocated(av_frame_clone(&frame))); };
        try {
            Decoder decoder(input, stream, 1);
            decoder.decode(&stream.attached_pic, take);
            decoder.decode(nullptr, take);
        } catch (const JobError&) {
            continue;  // a picture that nobody can show is none
        }
        if (!result) continue;
        const SourcePicture picture = pictureOf(*result);
        return ReadyPicture{std::move(result), picture, "embedded"};
    }
    return std::nullopt;
}

std::filesystem::path thumbnailCache() {
    // XDG Base Directory Specification: a path that is not absolute does not count.
    const char* cache = std::getenv("XDG_CACHE_HOME");
    if (cache != nullptr && *cache == '/') return std::filesystem::path(cache) / "thumbnails";
    const char* home = std::getenv("HOME");
    return home == nullptr || *home != '/' ? std::filesystem::path()
                                           : std::filesystem::path(home) / ".cache/thumbnails";
}

std::string thumbnailName(const std::string& uri) {
    std::array<std::uint8_t, 16> digest{};
    av_md5_sum(digest.data(), reinterpret_cast<const std::uint8_t*>(uri.data()), uri.size());
    std::string name;
    for (const std::uint8_t byte : digest) {
        name += "0123456789abcdef"[byte >> 4U];
        name += "0123456789abcdef"[byte & 15U];
    }
    return name + ".png";
}

bool states(const AVFrame& frame, const char* key, const std::string& value) {
    const AVDictionaryEntry* entry = av_dict_get(frame.metadata, key, nullptr, 0);
    return entry != nullptr && entry->value == value;
}

FramePointer freshThumbnail(const std::filesystem::path& file, const std::string& uri, const std::string& changed) {
    std::error_code error;
    if (!std::filesystem::is_regular_file(file, error)) return nullptr;
    FramePointer result;
    const auto take = [&](AVFrame& frame) { result.reset(checkAllocated(av_frame_clone(&frame))); };
    try {
        MediaInput input(file.string());
        if (input.video() == nullptr) return nullptr;
        Decoder decoder(input, *input.video(), 1);
        const PacketPointer packet = makePacket();
        while (input.read(*packet)) {
            decoder.decode(packet.get(), take);
            av_packet_unref(packet.get());
        }
        decoder.decode(nullptr, take);
    } catch (const JobError&) {
        return nullptr;  // damaged, or no picture: the cache is nobody's promise
    }
    if (result && (!states(*result, "Thumb::URI", uri) || !states(*result, "Thumb::MTime", changed))) return nullptr;
    return result;
}

}  // namespace

std::string fileUri(const std::filesystem::path& file) {
    constexpr std::string_view kept = "/-._~!$&'()*+,:=@";
    const std::filesystem::path path = std::filesystem::absolute(file).lexically_normal();
    std::string uri = "file://";
    for (const char character : path.native()) {
        const bool isPlain = (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z') ||
                             (character >= '0' && character <= '9') || kept.find(character) != std::string_view::npos;
        if (isPlain) {
            uri += character;
        } else {
            const auto byte = static_cast<std::uint8_t>(character);
            uri += '%';
            uri += "0123456789ABCDEF"[byte >> 4U];
            uri += "0123456789ABCDEF"[byte & 15U];
        }
    }
    return uri;
}

std::optional<ReadyPicture> desktopThumbnail(const std::filesystem::path& file, float width) {
    struct stat status {};
    const std::filesystem::path cache = thumbnailCache();
    if (cache.empty() || stat(file.c_str(), &status) != 0) return std::nullopt;
    const std::string uri = fileUri(file);
    const std::string name = thumbnailName(uri);
    const std::string changed = std::to_string(status.st_mtim.tv_sec);
    std::array<ThumbnailFolder, std::size(folders)> order = std::to_array(folders);
    const auto wideEnough = std::stable_partition(order.begin(), order.end(),
                                                  [&](const ThumbnailFolder& folder) { return folder.side >= width; });
    std::reverse(wideEnough, order.end());
    for (const ThumbnailFolder& folder : order) {
        FramePointer frame = freshThumbnail(cache / folder.name / name, uri, changed);
        if (!frame) continue;
        const SourcePicture picture = pictureOf(*frame);
        return ReadyPicture{std::move(frame), picture, "desktop"};
    }
    return std::nullopt;
}

std::optional<ReadyPicture> readyPicture(const MediaInput& input, float width) {
    auto embedded = embeddedPicture(input);
    return embedded ? std::move(embedded) : desktopThumbnail(input.path(), width);
}

}  // namespace corvex::tool
