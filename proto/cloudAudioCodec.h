#pragma once

#include <optional>

#include <Corvex/media/OrvaneAudioFormat.h>
#include <proto/corvex_cloud.pb.h>

namespace corvex::inline v0 {

/// The codec by which a job's conversion options name the format; none for a format that the messages have no name for.
[[nodiscard]] constexpr std::optional<Cloud_AudioCodec> protobufEquivalent(OrvaneAudioFormat format) noexcept {
    switch (format) {
        case OrvaneAudioFormat::lpcm: return CLOUD_AUDIO_CODEC_LPCM;
        case OrvaneAudioFormat::appleLossless: return CLOUD_AUDIO_CODEC_APPLE_LOSSLESS;
        case OrvaneAudioFormat::aac: return CLOUD_AUDIO_CODEC_AAC;
        case OrvaneAudioFormat::aacHe: return CLOUD_AUDIO_CODEC_AAC_HE;
        case OrvaneAudioFormat::aacEld: return CLOUD_AUDIO_CODEC_AAC_ELD;
        case OrvaneAudioFormat::appleIma4: return CLOUD_AUDIO_CODEC_APPLE_IMA4;
    }
    return std::nullopt;
}

}  // namespace corvex::inline v0
