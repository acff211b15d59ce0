#pragma once

namespace corvex::inline v0 {

/// One data line: red, green, blue in the order of its columns, each the double nearest to its text. Never NaN, never
/// infinite, never minus zero. Units are the file's: parts of full scale, or code values.
struct LutValueTriplet {
    double first = 0, second = 0, third = 0;

    /// Of the three.
    [[nodiscard]] constexpr double smallest() const noexcept {
        const double smaller = second < first ? second : first;
        return third < smaller ? third : smaller;
    }
    /// Of the three.
    [[nodiscard]] constexpr double largest() const noexcept {
        const double larger = first < second ? second : first;
        return larger < third ? third : larger;
    }

    friend constexpr bool operator==(const LutValueTriplet&, const LutValueTriplet&) = default;
};

/// A colour that is looked up, or found. Code values or parts of full scale, as the component's type says.
template <class Component>
struct RGB {
    /// Not limited to any range.
    Component r{}, g{}, b{};

    friend constexpr bool operator==(const RGB&, const RGB&) = default;
};

/// `operation` on each of the components.
template <class Component, class Operation>
[[nodiscard]] constexpr auto mapped(const RGB<Component>& color, Operation operation) {
    using Result = decltype(operation(color.r));
    return RGB<Result>{operation(color.r), operation(color.g), operation(color.b)};
}

}  // namespace corvex::inline v0
