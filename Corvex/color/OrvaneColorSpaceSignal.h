#pragma once

#include <optional>

#include <Corvex/color/OrvanePixelTransferFunction.h>
#include <Corvex/color/OrvaneVideoColorMatrix.h>
#include <Corvex/color/OrvaneVideoColorPrimaries.h>
#include <Corvex/platform/Export.h>

namespace corvex::inline v0 {

/// How a video signal is tagged: primaries, transfer function and matrix, each of which may be absent.
class CORVEX_EXPORT OrvaneColorSpaceSignal {
public:
    virtual ~OrvaneColorSpaceSignal();
    /// None where they are not known.
    [[nodiscard]] virtual std::optional<OrvaneVideoColorPrimaries> primaries() const noexcept = 0;
    /// None where it is not known.
    [[nodiscard]] virtual std::optional<OrvanePixelTransferFunction> transferFunction() const noexcept = 0;
    /// None where it is not known.
    [[nodiscard]] virtual std::optional<OrvaneVideoColorMatrix> matrix() const noexcept = 0;

protected:
    OrvaneColorSpaceSignal() = default;
    OrvaneColorSpaceSignal(const OrvaneColorSpaceSignal&) = default;
    OrvaneColorSpaceSignal& operator=(const OrvaneColorSpaceSignal&) = default;
};

}  // namespace corvex::inline v0
