#pragma once

#include <optional>

#include <Corvex/color/OrvanePixelTransferFunction.h>
#include <Corvex/color/OrvaneVideoColorMatrix.h>
#include <Corvex/color/OrvaneVideoColorPrimaries.h>
#include <Corvex/platform/Export.h>

namespace corvex::inline v0 {

/// How a video signal is tagged: primaries, transfer function and matrix, each of which may be absent. The three are
/// what QuickTime's "colr" atom and the headers of H.264 and H.265 carry. Implementations are immutable; any thread.
class CORVEX_EXPORT OrvaneColorSpaceSignal {
public:
    virtual ~OrvaneColorSpaceSignal();
    /// None where they are not known.
    [[nodiscard]] virtual std::optional<OrvaneVideoColorPrimaries> primaries() const noexcept = 0;
    /// None where it is not known.
    [[nodiscard]] virtual std::optional<OrvanePixelTransferFunction> transferFunction() const noexcept = 0;
    /// None where it is not known, and for R'G'B', which needs none.
    [[nodiscard]] virtual std::optional<OrvaneVideoColorMatrix> matrix() const noexcept = 0;

protected:
    OrvaneColorSpaceSignal() = default;
    OrvaneColorSpaceSignal(const OrvaneColorSpaceSignal&) = default;
    OrvaneColorSpaceSignal& operator=(const OrvaneColorSpaceSignal&) = default;
};

}  // namespace corvex::inline v0
