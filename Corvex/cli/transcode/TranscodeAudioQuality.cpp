#include <Corvex/cli/transcode/TranscodeAudioQuality.h>

#include <Corvex/platform/Number.h>

namespace corvex::inline v0 {

std::optional<Number> audioQualityNumber(std::string_view text) noexcept {
    const auto quality = fromRawValue<TranscodeAudioQuality>(text);
    return quality ? std::optional<Number>(static_cast<int>(*quality)) : std::nullopt;
}

}  // namespace corvex::inline v0
