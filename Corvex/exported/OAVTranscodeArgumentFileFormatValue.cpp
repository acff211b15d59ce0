#include <Corvex/exported/OAVTranscodeArgumentFileFormatValue.h>

#include <Corvex/exported/FileExtension.h>

namespace corvex::inline v0 {
namespace {

constexpr std::array quickTimeExtensions{FileExtension::mov, FileExtension::mp4};
constexpr std::array mpeg4Extensions{FileExtension::mp4, FileExtension::mov};
constexpr std::array waveExtensions{FileExtension::wav};

}  // namespace

std::span<const FileExtension> OAVTranscodeArgumentFileFormatValue::validExtensions() const noexcept {
    if (*this == OAVQuickTimeFileFormat) return quickTimeExtensions;
    if (*this == OAVMp4Format) return mpeg4Extensions;
    if (*this == OAVWaveFileFormat) return waveExtensions;
    return {};
}

std::optional<FileExtension> OAVTranscodeArgumentFileFormatValue::preferredExtension() const noexcept {
    const auto extensions = validExtensions();
    return extensions.empty() ? std::nullopt : std::optional(extensions.front());
}

}  // namespace corvex::inline v0
