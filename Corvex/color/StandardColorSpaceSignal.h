#pragma once

#include <optional>
#include <string>

#include <Corvex/color/OrvaneColorSpaceSignal.h>
#include <Corvex/platform/Number.h>
#include <Corvex/platform/Object.h>

namespace corvex::inline v0 {

/// The signal of the ordinary cases. Immutable; any thread.
class CORVEX_EXPORT StandardColorSpaceSignal final : public Object, public OrvaneColorSpaceSignal {
public:
    using Primaries = std::optional<OrvaneVideoColorPrimaries>;
    using TransferFunction = std::optional<OrvanePixelTransferFunction>;
    using Matrix = std::optional<OrvaneVideoColorMatrix>;

    /// All three absent.
    StandardColorSpaceSignal() = default;
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
    [[nodiscard]] std::optional<Number> wrappedTransferFunction() const noexcept;
    [[nodiscard]] std::optional<Number> wrappedMatrix() const noexcept;

    // Shared instances, made on first use and kept until the process ends.
    [[nodiscard]] static const StandardColorSpaceSignal& rec2020();
    [[nodiscard]] static const StandardColorSpaceSignal& rec2020HLG();
    [[nodiscard]] static const StandardColorSpaceSignal& rec2020PQ();
    [[nodiscard]] static const StandardColorSpaceSignal& rec709();
    [[nodiscard]] static const StandardColorSpaceSignal& rec601Smpte();
    [[nodiscard]] static const StandardColorSpaceSignal& rec601EBU();
    [[nodiscard]] static const StandardColorSpaceSignal& sRGB();
    [[nodiscard]] static const StandardColorSpaceSignal& p3D65RGB();
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
