#include <Corvex/color/GammaColorSpaceSignal.h>

namespace corvex::inline v0 {

OrvaneColorSpaceSignal::~OrvaneColorSpaceSignal() = default;
GammaColorSpaceSignal::~GammaColorSpaceSignal() = default;

const GammaColorSpaceSignal& GammaColorSpaceSignal::dcip3Cinema() {
    // Never destroyed, so that destructors of static objects may still use it.
    static const auto& signal = *new GammaColorSpaceSignal(OrvaneVideoColorPrimaries::dciP3,
                                                           OrvanePixelTransferFunction::gamma, std::nullopt, 2.6F);
    return signal;
}

}  // namespace corvex::inline v0
