#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

#include <Corvex/exported/OAVTranscodeArgumentVideoCodecValue.h>
#include <tools/corvex/worker/FFmpeg.h>

namespace corvex::tool {

/// How the bit rate of a codec is chosen.
enum class RateChoice : std::uint8_t {
    free,     ///< Any rate, or the encoder's own constant quality when none is asked for.
    fixed,    ///< The profile and the raster fix it; asking for one is an error.
    classes,  ///< One of a few rates that the codec's standard lists for the raster and frame rate.
};

/// The pixel formats of a codec or profile by bit depth; AV_PIX_FMT_NONE where it has no such depth.
struct PictureFormats {
    AVPixelFormat bits8 = AV_PIX_FMT_NONE;
    AVPixelFormat bits10 = AV_PIX_FMT_NONE;
    AVPixelFormat bits12 = AV_PIX_FMT_NONE;

    /// The format of a depth, or of the least depth that there is.
    [[nodiscard]] std::optional<AVPixelFormat> format(std::optional<int> bitDepth) const noexcept;
    /// "8, 10" and the like.
    [[nodiscard]] std::string depths() const;
};

/// How a codec value is encoded by the media libraries.
struct VideoCodecSettings {
    OAVTranscodeArgumentVideoCodecValue codec;
    const char* encoder;        ///< The encoder's name in libavcodec.
    const char* profile;        ///< Value of its "profile" option where the codec value fixes it, or nullptr.
    PictureFormats formats;     ///< For pictures without alpha.
    AVPixelFormat alphaFormat;  ///< For pictures with alpha; AV_PIX_FMT_NONE where the codec carries none.
    RateChoice rate;
    bool hasInterFrames;  ///< Whether frames refer to others, so that key frames have a distance.
    const char* tag;      ///< The sample entry's four characters where the usual one of the muxer is not wanted.
};

/// A profile that can be chosen for a codec ("-vprofile").
struct CodecProfile {
    OAVTranscodeArgumentVideoCodecValue codec;
    const char* name;
    PictureFormats formats;
};

/// The profile of a codec. Throws UsageError naming it when the codec has no such one to choose.
[[nodiscard]] const CodecProfile& codecProfile(const VideoCodecSettings& settings, std::string_view name);

/// All profiles that can be chosen, by codec.
[[nodiscard]] std::span<const CodecProfile> allCodecProfiles() noexcept;

/// All codec values that a worker can be asked for.
[[nodiscard]] std::span<const VideoCodecSettings> allVideoCodecSettings() noexcept;

/// The settings of a codec value. Throws UsageError naming it when there are none, JobError when the libraries of this
/// machine lack the encoder.
[[nodiscard]] const VideoCodecSettings& videoCodecSettings(const OAVTranscodeArgumentVideoCodecValue& codec);

/// Whether the libraries of this machine have the encoder.
[[nodiscard]] bool canEncode(const VideoCodecSettings& settings) noexcept;

}  // namespace corvex::tool
