#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include <tools/corvex/worker/MediaInput.h>

namespace corvex::tool {

/// A picture of a media file that somebody has made before.
struct ReadyPicture {
    FramePointer frame;
    SourcePicture picture;
    const char* source;  ///< embedded or desktop.
};

/// The picture that the file carries (a cover), else the desktop's thumbnail where that is fresh; none when there is
/// neither. `width`: of several thumbnails the smallest is taken that is at least so wide, else the largest.
[[nodiscard]] std::optional<ReadyPicture> readyPicture(const MediaInput& input, float width);

/// The thumbnail of a file: a PNG file in the user's cache, which names the file and the time of its last change
/// (freedesktop.org Thumbnail Managing Standard 0.9); fresh when both are the file's own.
[[nodiscard]] std::optional<ReadyPicture> desktopThumbnail(const std::filesystem::path& file, float width);

/// As desktops write it: the absolute path, escaped as RFC 3986 asks for.
[[nodiscard]] std::string fileUri(const std::filesystem::path& file);

}  // namespace corvex::tool
