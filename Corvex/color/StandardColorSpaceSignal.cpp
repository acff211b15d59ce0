#include <Corvex/color/StandardColorSpaceSignal.h>

#include <Corvex/platform/Number.h>

namespace corvex::inline v0 {
namespace {

using P = OrvaneVideoColorPrimaries;
using T = OrvanePixelTransferFunction;
using M = OrvaneVideoColorMatrix;

template <class Enumeration>
std::optional<Enumeration> unwrapped(const Number* number) noexcept {
    if (number == nullptr || static_cast<double>(number->int64Value()) != number->doubleValue()) return std::nullopt;
    return fromRawValue<Enumeration>(number->int64Value());
}

template <class Enumeration>
std::optional<Number> wrapped(std::optional<Enumeration> value) noexcept {
    return value ? std::optional<Number>(rawValue(*value)) : std::nullopt;
}

template <class Enumeration>
std::string nameOf(std::optional<Enumeration> value) {
    return std::string(value ? caseName(*value) : "none");
}

template <class Enumeration>
std::size_t hashOf(std::optional<Enumeration> value) noexcept {
    return value ? static_cast<std::size_t>(rawValue(*value)) + 1 : 0;
}

}  // namespace

StandardColorSpaceSignal::StandardColorSpaceSignal(const Number* wrappedPrimaries,
                                                   const Number* wrappedTransferFunction,
                                                   const Number* wrappedMatrix) noexcept
    : primaries_(unwrapped<P>(wrappedPrimaries)),
      transferFunction_(unwrapped<T>(wrappedTransferFunction)),
      matrix_(unwrapped<M>(wrappedMatrix)) {}

StandardColorSpaceSignal::~StandardColorSpaceSignal() = default;

std::optional<Number> StandardColorSpaceSignal::wrappedPrimaries() const noexcept { return wrapped(primaries_); }
std::optional<Number> StandardColorSpaceSignal::wrappedTransferFunction() const noexcept {
    return wrapped(transferFunction_);
}
std::optional<Number> StandardColorSpaceSignal::wrappedMatrix() const noexcept { return wrapped(matrix_); }

// Never destroyed, so that destructors of static objects may still use them.
const StandardColorSpaceSignal& StandardColorSpaceSignal::rec2020() {
    static const auto& signal = *new StandardColorSpaceSignal(P::rec2020, T::rec2020, M::rec2020);
    return signal;
}
const StandardColorSpaceSignal& StandardColorSpaceSignal::rec2020HLG() {
    static const auto& signal = *new StandardColorSpaceSignal(P::rec2020, T::hlg, M::rec2020);
    return signal;
}
const StandardColorSpaceSignal& StandardColorSpaceSignal::rec2020PQ() {
    static const auto& signal = *new StandardColorSpaceSignal(P::rec2020, T::pq, M::rec2020);
    return signal;
}
const StandardColorSpaceSignal& StandardColorSpaceSignal::rec709() {
    static const auto& signal = *new StandardColorSpaceSignal(P::rec709, T::rec709, M::rec709);
    return signal;
}
const StandardColorSpaceSignal& StandardColorSpaceSignal::rec601Smpte() {
    static const auto& signal = *new StandardColorSpaceSignal(P::smpteC, T::rec709, M::rec601);
    return signal;
}
const StandardColorSpaceSignal& StandardColorSpaceSignal::rec601EBU() {
    static const auto& signal = *new StandardColorSpaceSignal(P::ebu3213, T::rec709, M::rec601);
    return signal;
}
const StandardColorSpaceSignal& StandardColorSpaceSignal::sRGB() {
    static const auto& signal = *new StandardColorSpaceSignal(P::rec709, T::sRGB, Matrix());
    return signal;
}
const StandardColorSpaceSignal& StandardColorSpaceSignal::p3D65RGB() {
    static const auto& signal = *new StandardColorSpaceSignal(P::p3D65, T::sRGB, Matrix());
    return signal;
}
const StandardColorSpaceSignal& StandardColorSpaceSignal::p3D65Video() {
    static const auto& signal = *new StandardColorSpaceSignal(P::p3D65, T::rec709, M::rec709);
    return signal;
}

std::string StandardColorSpaceSignal::description() const {
    return "primaries " + nameOf(primaries_) + ", transfer function " + nameOf(transferFunction_) + ", matrix " +
           nameOf(matrix_);
}

bool StandardColorSpaceSignal::isEqual(const Object& other) const {
    const auto* signal = dynamic_cast<const StandardColorSpaceSignal*>(&other);
    return signal != nullptr && primaries_ == signal->primaries_ && transferFunction_ == signal->transferFunction_ &&
           matrix_ == signal->matrix_;
}

std::size_t StandardColorSpaceSignal::hash() const {
    return combinedHash(combinedHash(hashOf(primaries_), hashOf(transferFunction_)), hashOf(matrix_));
}

}  // namespace corvex::inline v0
