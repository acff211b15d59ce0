#pragma once

#include <optional>
#include <string>

#include <Corvex/color/OrvaneColorSpaceSignal.h>
#include <Corvex/platform/Object.h>

namespace corvex::inline v0 {

class Number;

/// The signal of the ordinary cases: three enumerators, each of which may be absent. Immutable; any thread. As an
/// object it is equal to another of its kind with the same three parts.
class CORVEX_EXPORT StandardColorSpaceSignal final : public Object, public OrvaneColorSpaceSignal {
public:
    using Primaries = std::optional<OrvaneVideoColorPrimaries>;
    using TransferFunction = std::optional<OrvanePixelTransferFunction>;
    using Matrix = std::optional<OrvaneVideoColorMatrix>;

    /// All three absent.
    StandardColorSpaceSignal() = default;
    /// Any combination; whether the parts belong together is not checked.
    StandardColorSpaceSignal(Primaries primaries, TransferFunction transferFunction, Matrix matrix) noexcept
        : primaries_(primaries), transferFunction_(transferFunction), matrix_(matrix) {}
    /// From raw values as objects; nullptr, or a number that is no raw value, gives an absent part.
    StandardColorSpaceSignal(const Number* wrappedPrimaries, const Number* wrappedTransferFunction,
                             const Number* wrappedMatrix) noexcept;
    ~StandardColorSpaceSignal() override;
    StandardColorSpaceSignal(const StandardColorSpaceSignal&) = default;
    StandardColorSpaceSignal& operator=(const StandardColorSpaceSignal&) = default;

    [[nodiscard]] Primaries primaries() const noexcept override { return primaries_; }
    [[nodiscard]] TransferFunction transferFunction() const noexcept override { return transferFunction_; }
    [[nodiscard]] Matrix matrix() const noexcept override { return matrix_; }

    /// The raw values as objects, or none.
    [[nodiscard]] std::optional<Number> wrappedPrimaries() const noexcept;
    [[nodiscard]] std::optional<Number> wrappedTransferFunction() const noexcept;  ///< As wrappedPrimaries().
    [[nodiscard]] std::optional<Number> wrappedMatrix() const noexcept;            ///< As wrappedPrimaries().

    // Shared instances, made on first use and kept until the process ends.
    /// ITU-R BT.2020, standard dynamic range.
    [[nodiscard]] static const StandardColorSpaceSignal& rec2020();
    /// ITU-R BT.2100, HLG: the primaries and the matrix of BT.2020.
    [[nodiscard]] static const StandardColorSpaceSignal& rec2020HLG();
    /// ITU-R BT.2100, PQ: the primaries and the matrix of BT.2020.
    [[nodiscard]] static const StandardColorSpaceSignal& rec2020PQ();
    [[nodiscard]] static const StandardColorSpaceSignal& rec709();  ///< ITU-R BT.709.
    /// ITU-R BT.601, 525 lines: the primaries of SMPTE ST 170, the transfer function of BT.709.
    [[nodiscard]] static const StandardColorSpaceSignal& rec601Smpte();
    /// ITU-R BT.601, 625 lines: the primaries of EBU Tech 3213, the transfer function of BT.709.
    [[nodiscard]] static const StandardColorSpaceSignal& rec601EBU();
    [[nodiscard]] static const StandardColorSpaceSignal& sRGB();  ///< IEC 61966-2-1.
    /// SMPTE EG 432-1 primaries, the transfer function of sRGB, as R'G'B' without a matrix.
    [[nodiscard]] static const StandardColorSpaceSignal& p3D65RGB();
    /// SMPTE EG 432-1 primaries, transfer function and matrix of BT.709, as Y'CbCr.
    [[nodiscard]] static const StandardColorSpaceSignal& p3D65Video();

    [[nodiscard]] std::string description() const override;
    [[nodiscard]] bool isEqual(const Object& other) const override;
    [[nodiscard]] std::size_t hash() const override;

private:
    Primaries primaries_;
    TransferFunction transferFunction_;
    Matrix matrix_;
};

}  // namespace corvex::inline v0
