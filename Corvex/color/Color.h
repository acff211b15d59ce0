#pragma once

#include <array>
#include <concepts>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include <Corvex/platform/Export.h>

namespace corvex::inline v0 {

/// The colour spaces that a Color may be given in. Grey is one component on sRGB's own tone curve.
enum class ColorModel : std::uint8_t { sRGB, linearSRGB, displayP3, genericGray };

/// A colour for display: red, green and blue (or grey) and alpha, each 0 to 1. One without components stands for a
/// colour that has no concrete value and cannot be converted. A plain value; all functions are pure.
class CORVEX_EXPORT Color {
public:
    /// Without components.
    constexpr Color() noexcept = default;
    /// Of a grey only the first component counts.
    constexpr Color(ColorModel model, double red, double green, double blue, double alpha = 1) noexcept
        : components_{red, model == ColorModel::genericGray ? red : green,
                      model == ColorModel::genericGray ? red : blue, alpha},
          model_(model),
          hasComponents_(true) {}
    /// Components from 0 to 1, not checked.
    [[nodiscard]] static constexpr Color gray(double white, double alpha = 1) noexcept {
        return {ColorModel::genericGray, white, white, white, alpha};
    }
    /// Components from 0 to 1, not checked.
    [[nodiscard]] static constexpr Color sRGB(double red, double green, double blue, double alpha = 1) noexcept {
        return {ColorModel::sRGB, red, green, blue, alpha};
    }
    /// From hexadecimal text (see hexTo8BitRGBA); none for any other text.
    [[nodiscard]] static std::optional<Color> fromHex(std::string_view text) noexcept;

    [[nodiscard]] constexpr bool hasComponents() const noexcept { return hasComponents_; }
    [[nodiscard]] constexpr ColorModel model() const noexcept { return model_; }

    /// Red, green, blue and alpha in sRGB, 0 to 1 (what lies outside of sRGB is limited); none without components.
    [[nodiscard]] std::optional<std::array<float, 4>> toRGBA() const noexcept;
    /// Red, green, blue and, if `alpha`, alpha; empty without components.
    [[nodiscard]] std::vector<float> toRGB(bool alpha) const;
    /// Two upper-case hexadecimal digits for each of these, without a leading mark; halves are rounded away from zero.
    /// None without components.
    [[nodiscard]] std::optional<std::string> toHex(bool alpha) const;
    /// toHex without alpha.
    [[nodiscard]] std::optional<std::string> hexValue() const { return toHex(false); }

    /// Whether 0.2126 R + 0.7152 G + 0.0722 B in sRGB (the luma weights of ITU-R BT.709) is below 0.5. A colour without
    /// components is not dark.
    [[nodiscard]] bool isDarkColor() const noexcept;
    [[nodiscard]] bool isDark() const noexcept { return isDarkColor(); }

    /// Red, orange, yellow, green, blue, indigo, violet.
    [[nodiscard]] static std::span<const Color> rainbow() noexcept;
    /// Ten different ones of twelve system colours, in an order that `generator` decides: it gives 32 random bits a call,
    /// as std::mt19937.
    template <class Generator>
        requires(Generator::min() == 0 && Generator::max() == UINT32_MAX)
    [[nodiscard]] static std::vector<Color> tenRandomSystemColors(Generator& generator) {
        return tenRandomSystemColors(
            [](void* from) { return static_cast<std::uint32_t>((*static_cast<Generator*>(from))()); }, &generator);
    }

    friend constexpr bool operator==(const Color&, const Color&) noexcept = default;

private:
    /// Calls `draw` with `generator`, whatever that is.
    [[nodiscard]] static std::vector<Color> tenRandomSystemColors(std::uint32_t (*draw)(void* generator),
                                                                  void* generator);

    std::array<double, 4> components_{};
    ColorModel model_ = ColorModel::sRGB;
    bool hasComponents_ = false;
};

/// Red, green, blue and alpha of hexadecimal text: an optional "#" and then 3 (RGB), 4 (RGBA), 6 (RRGGBB) or 8
/// (RRGGBBAA) digits in either case; one digit stands for two alike. Without alpha it is 255. None for any other text.
[[nodiscard]] CORVEX_EXPORT std::optional<std::array<std::uint8_t, 4>> hexTo8BitRGBA(std::string_view text) noexcept;
/// The same over 255.
[[nodiscard]] CORVEX_EXPORT std::optional<std::array<float, 4>> hexTo8BitFloatingPointRGBA(
    std::string_view text) noexcept;

}  // namespace corvex::inline v0
