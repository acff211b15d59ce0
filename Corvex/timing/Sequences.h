#pragma once

#include <optional>
#include <span>

namespace corvex::inline v0 {

/// The sum, added up in order in single precision, over the count; 0 for no values. Many values lose digits: it is for
/// a handful, as of measured speeds.
[[nodiscard]] constexpr float average(std::span<const float> values) noexcept {
    float sum = 0;
    for (const float value : values) sum += value;
    return values.empty() ? 0.0F : sum / static_cast<float>(values.size());
}

/// A copy of the element in the middle, the upper one of an even count; none for no elements. By position: nothing is
/// sorted.
template <class Element>
[[nodiscard]] constexpr std::optional<Element> middle(std::span<const Element> elements) {
    return elements.empty() ? std::nullopt : std::optional<Element>(elements[elements.size() / 2]);
}

}  // namespace corvex::inline v0
