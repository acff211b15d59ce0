#include <Corvex/media/OrvaneAudioFormat.h>

#include <algorithm>
#include <iterator>

namespace corvex::inline v0 {
namespace {

struct Replacement {
    FourCharacterCode source;
    OrvaneAudioFormat whenPreserving, otherwise;
};

/// Formats that can be encoded themselves are answered before this table; all others become linear PCM.
constexpr Replacement replacements[] = {
    {"ac-3", OrvaneAudioFormat::appleLossless, OrvaneAudioFormat::aac},
    {"cac3", OrvaneAudioFormat::appleLossless, OrvaneAudioFormat::aac},
    {"alaw", OrvaneAudioFormat::lpcm, OrvaneAudioFormat::aac},
    {"ulaw", OrvaneAudioFormat::lpcm, OrvaneAudioFormat::aac},
    {"ima4", OrvaneAudioFormat::lpcm, OrvaneAudioFormat::aac},
    {"MAC3", OrvaneAudioFormat::lpcm, OrvaneAudioFormat::aac},
    {"MAC6", OrvaneAudioFormat::lpcm, OrvaneAudioFormat::aac},
    {"aacs", OrvaneAudioFormat::lpcm, OrvaneAudioFormat::aac},
    {"aace", OrvaneAudioFormat::aac, OrvaneAudioFormat::aac},
    {"aacf", OrvaneAudioFormat::aac, OrvaneAudioFormat::aac},
    {"aacg", OrvaneAudioFormat::aac, OrvaneAudioFormat::aac},
    {"aacl", OrvaneAudioFormat::aac, OrvaneAudioFormat::aac},
    {"aacp", OrvaneAudioFormat::aac, OrvaneAudioFormat::aac},
    {"Qclp", OrvaneAudioFormat::aac, OrvaneAudioFormat::aac},
    {"QDM2", OrvaneAudioFormat::aac, OrvaneAudioFormat::aac},
    {"QDMC", OrvaneAudioFormat::aac, OrvaneAudioFormat::aac},
    {"celp", OrvaneAudioFormat::aac, OrvaneAudioFormat::aac},
    {"hvxc", OrvaneAudioFormat::aac, OrvaneAudioFormat::aac},
    {"twvq", OrvaneAudioFormat::aac, OrvaneAudioFormat::aac},
    {"samr", OrvaneAudioFormat::aac, OrvaneAudioFormat::aac},
    {"sawb", OrvaneAudioFormat::aac, OrvaneAudioFormat::aac},
    {"usac", OrvaneAudioFormat::aac, OrvaneAudioFormat::aac},
    {".mp1", OrvaneAudioFormat::aac, OrvaneAudioFormat::aac},
    {".mp2", OrvaneAudioFormat::aac, OrvaneAudioFormat::aac},
    {".mp3", OrvaneAudioFormat::aac, OrvaneAudioFormat::aac},
};

}  // namespace

std::optional<OrvaneAudioFormat> audioFormatFromCoreAudio(FourCharacterCode code) noexcept {
    for (const auto& row : caseTable<OrvaneAudioFormat>) {
        if (row.coreAudioEquivalent == code) return row.value;
    }
    return std::nullopt;
}

OrvaneAudioFormat encodingReplacement(FourCharacterCode coreAudioFormat, bool preserveLossless) noexcept {
    const auto own = audioFormatFromCoreAudio(coreAudioFormat);
    if (own && avEncodingSupportLevel(*own) == AVFoundationAudioEncodingSupportLevel::fullyEncodable) return *own;
    const auto* found = std::find_if(std::begin(replacements), std::end(replacements),
                                     [&](const Replacement& row) { return row.source == coreAudioFormat; });
    if (found == std::end(replacements)) return OrvaneAudioFormat::lpcm;
    return preserveLossless ? found->whenPreserving : found->otherwise;
}

}  // namespace corvex::inline v0
