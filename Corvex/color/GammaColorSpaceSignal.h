#pragma once

#include <optional>

#include <Corvex/color/OrvaneColorSpaceSignal.h>

namespace corvex::inline v0 {

/// A signal whose transfer function is a pure power. A plain value. Nothing requires the transfer function to be
/// OrvanePixelTransferFunction::gamma; with another the exponent is of no effect.
class CORVEX_EXPORT GammaColorSpaceSignal final : public OrvaneColorSpaceSignal {
public:
    /// `gamma` is above 0; it is not checked.
    GammaColorSpaceSignal(std::optional<OrvaneVideoColorPrimaries> primaries,
                          std::optional<OrvanePixelTransferFunction> transferFunction,
                          std::optional<OrvaneVideoColorMatrix> matrix, float gamma) noexcept
        : primaries_(primaries), transferFunction_(transferFunction), matrix_(matrix), gamma_(gamma) {}
    ~GammaColorSpaceSignal() override;
    GammaColorSpaceSignal(const GammaColorSpaceSignal&) = default;
    GammaColorSpaceSignal& operator=(const GammaColorSpaceSignal&) = default;

    /// As given, like the next two; none where it is not known.
    [[nodiscard]] std::optional<OrvaneVideoColorPrimaries> primaries() const noexcept override { return primaries_; }
    [[nodiscard]] std::optional<OrvanePixelTransferFunction> transferFunction() const noexcept override {
        return transferFunction_;
    }
    [[nodiscard]] std::optional<OrvaneVideoColorMatrix> matrix() const noexcept override { return matrix_; }
    /// The exponent by which code values become light; above 1 for displays.
    [[nodiscard]] float gamma() const noexcept { return gamma_; }

    /// Cinema projection: DCI-P3 primaries, gamma 2.6 (SMPTE RP 431-2), no matrix, as cinema pictures are R'G'B' or
    /// X'Y'Z'. Shared, kept until the process ends.
    [[nodiscard]] static const GammaColorSpaceSignal& dcip3Cinema();

    /// Equal in all four parts, the exponent exactly.
    friend bool operator==(const GammaColorSpaceSignal& a, const GammaColorSpaceSignal& b) noexcept {
        return a.primaries_ == b.primaries_ && a.transferFunction_ == b.transferFunction_ && a.matrix_ == b.matrix_ &&
               a.gamma_ == b.gamma_;
    }

private:
    std::optional<OrvaneVideoColorPrimaries> primaries_;
    std::optional<OrvanePixelTransferFunction> transferFunction_;
    std::optional<OrvaneVideoColorMatrix> matrix_;
    float gamma_;
};

}  // namespace corvex::inline v0
