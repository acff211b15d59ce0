#include <Corvex/color/OrvaneVideoColorSpace.h>

#include <array>
#include <memory>

#include <Corvex/color/GammaColorSpaceSignal.h>
#include <Corvex/color/StandardColorSpaceSignal.h>
#include <Corvex/color/definedSignals.h>

namespace corvex::inline v0 {
namespace {

using Signals = std::vector<std::shared_ptr<const OrvaneColorSpaceSignal>>;

template <class... Signal>
Signals copiesOf(const Signal&... signal) {
    return {std::make_shared<const Signal>(signal)...};
}

}  // namespace

std::optional<Signals> definedSignals(OrvaneVideoColorSpace space) {
    using Standard = StandardColorSpaceSignal;
    switch (space) {
        case OrvaneVideoColorSpace::rec2020: return copiesOf(Standard::rec2020());
        case OrvaneVideoColorSpace::rec709: return copiesOf(Standard::rec709());
        case OrvaneVideoColorSpace::rec601Smpte: return copiesOf(Standard::rec601Smpte());
        case OrvaneVideoColorSpace::rec601EBU: return copiesOf(Standard::rec601EBU());
        case OrvaneVideoColorSpace::sRGB: return copiesOf(Standard::sRGB());
        case OrvaneVideoColorSpace::dciP3Cinema: return copiesOf(GammaColorSpaceSignal::dcip3Cinema());
        case OrvaneVideoColorSpace::p3D65: return copiesOf(Standard::p3D65RGB(), Standard::p3D65Video());
        case OrvaneVideoColorSpace::custom8:
        case OrvaneVideoColorSpace::custom9:
        case OrvaneVideoColorSpace::custom10: return std::nullopt;
        case OrvaneVideoColorSpace::linear11:
            return copiesOf(Standard(OrvaneVideoColorPrimaries::custom10, OrvanePixelTransferFunction::linear, {}));
        case OrvaneVideoColorSpace::rec2020HLG: return copiesOf(Standard::rec2020HLG());
        case OrvaneVideoColorSpace::rec2020PQ: return copiesOf(Standard::rec2020PQ());
    }
    fatalError("unexpected enumeration case");
}

std::optional<OrvaneVideoColorSpace> colorSpaceFromCloudValue(int messageValue) noexcept {
    // Raw value by the number in the message; 0 stands for no colour space.
    constexpr std::array<std::int64_t, 11> rawValues{0, 0, 1, 2, 5, 6, 7, 3, 4, 12, 13};
    if (messageValue < 0 || messageValue >= static_cast<int>(rawValues.size())) return std::nullopt;
    return fromRawValue<OrvaneVideoColorSpace>(rawValues[static_cast<std::size_t>(messageValue)]);
}

}  // namespace corvex::inline v0
