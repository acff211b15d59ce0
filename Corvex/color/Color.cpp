#include <Corvex/color/Color.h>

#include <algorithm>
#include <cmath>

namespace corvex::inline v0 {
namespace {

/// IEC 61966-2-1, from code value to light and back.
double toLight(double code) noexcept { return code <= 0.04045 ? code / 12.92 : std::pow((code + 0.055) / 1.055, 2.4); }
double toCode(double light) noexcept {
    return light <= 0.0031308 ? light * 12.92 : 1.055 * std::pow(light, 1 / 2.4) - 0.055;
}

/// Light in the P3 primaries with a D65 white point (SMPTE EG 432-1) to light in those of ITU-R BT.709.
std::array<double, 3> bt709FromP3(const std::array<double, 3>& p3) noexcept {
    return {1.2249401762805598 * p3[0] - 0.2249401762805598 * p3[1],
            -0.0420569547096881 * p3[0] + 1.0420569547096881 * p3[1],
            -0.0196375545903344 * p3[0] - 0.0786360455506319 * p3[1] + 1.0982736001409663 * p3[2]};
}

/// What std::shuffle takes, of a generator whose type is not known.
struct Generator {
    using result_type = std::uint32_t;

    static constexpr result_type min() noexcept { return 0; }
    static constexpr result_type max() noexcept { return UINT32_MAX; }
    result_type operator()() const { return draw(drawn); }

    result_type (*draw)(void* generator);
    void* drawn;
};

float limited(double value) noexcept { return static_cast<float>(std::clamp(std::isnan(value) ? 0 : value, 0.0, 1.0)); }

std::optional<std::uint8_t> hexDigit(char character) noexcept {
    if (character >= '0' && character <= '9') return static_cast<std::uint8_t>(character - '0');
    if (character >= 'a' && character <= 'f') return static_cast<std::uint8_t>(character - 'a' + 10);
    if (character >= 'A' && character <= 'F') return static_cast<std::uint8_t>(character - 'A' + 10);
    return std::nullopt;
}

constexpr std::array rainbowColors{Color::sRGB(1, 0, 0),   Color::sRGB(1, 0.5, 0), Color::sRGB(1, 1, 0),
                                   Color::sRGB(0, 1, 0),   Color::sRGB(0, 0, 1),   Color::sRGB(0.29, 0, 0.51),
                                   Color::sRGB(0.56, 0, 1)};

/// Saturated colours that stay apart on light and dark backgrounds.
constexpr std::array systemColors{
    Color::sRGB(0.00, 0.48, 1.00), Color::sRGB(0.64, 0.52, 0.37), Color::sRGB(0.00, 0.75, 0.80),
    Color::sRGB(0.16, 0.80, 0.25), Color::sRGB(0.35, 0.34, 0.84), Color::sRGB(0.00, 0.78, 0.75),
    Color::sRGB(1.00, 0.58, 0.00), Color::sRGB(1.00, 0.18, 0.33), Color::sRGB(0.69, 0.32, 0.87),
    Color::sRGB(1.00, 0.23, 0.19), Color::sRGB(1.00, 0.80, 0.00), Color::sRGB(0.56, 0.56, 0.58)};

}  // namespace

std::optional<std::array<std::uint8_t, 4>> hexTo8BitRGBA(std::string_view text) noexcept {
    if (text.starts_with('#')) text.remove_prefix(1);
    const std::size_t digitsEach = text.size() == 3 || text.size() == 4 ? 1 : 2;
    if (digitsEach == 2 && text.size() != 6 && text.size() != 8) return std::nullopt;
    std::array<std::uint8_t, 4> components{0, 0, 0, 255};
    for (std::size_t i = 0; i < text.size() / digitsEach; ++i) {
        const auto high = hexDigit(text[i * digitsEach]);
        const auto low = hexDigit(text[i * digitsEach + digitsEach - 1]);
        if (!high || !low) return std::nullopt;
        components[i] = static_cast<std::uint8_t>(*high * 16 + *low);
    }
    return components;
}

std::optional<std::array<float, 4>> hexTo8BitFloatingPointRGBA(std::string_view text) noexcept {
    const auto bytes = hexTo8BitRGBA(text);
    if (!bytes) return std::nullopt;
    std::array<float, 4> components{};
    for (std::size_t i = 0; i < components.size(); ++i) components[i] = static_cast<float>((*bytes)[i]) / 255.0F;
    return components;
}

std::optional<Color> Color::fromHex(std::string_view text) noexcept {
    const auto bytes = hexTo8BitRGBA(text);
    if (!bytes) return std::nullopt;
    return sRGB((*bytes)[0] / 255.0, (*bytes)[1] / 255.0, (*bytes)[2] / 255.0, (*bytes)[3] / 255.0);
}

std::optional<std::array<float, 4>> Color::toRGBA() const noexcept {
    if (!hasComponents_) return std::nullopt;
    std::array<double, 3> rgb{components_[0], components_[1], components_[2]};
    if (model_ == ColorModel::displayP3) {
        for (double& component : rgb) component = toLight(component);
        rgb = bt709FromP3(rgb);
    }
    if (model_ == ColorModel::displayP3 || model_ == ColorModel::linearSRGB) {
        for (double& component : rgb) component = toCode(component);
    }
    return std::array{limited(rgb[0]), limited(rgb[1]), limited(rgb[2]), limited(components_[3])};
}

std::vector<float> Color::toRGB(bool alpha) const {
    const auto rgba = toRGBA();
    if (!rgba) return {};
    return {rgba->begin(), rgba->begin() + (alpha ? 4 : 3)};
}

std::optional<std::string> Color::toHex(bool alpha) const {
    const auto rgba = toRGBA();
    if (!rgba) return std::nullopt;
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string text;
    for (std::size_t i = 0; i < (alpha ? 4U : 3U); ++i) {
        const auto byte = static_cast<std::size_t>(std::lround((*rgba)[i] * 255.0F));
        text += digits[byte / 16];
        text += digits[byte % 16];
    }
    return text;
}

bool Color::isDarkColor() const noexcept {
    const auto rgba = toRGBA();
    if (!rgba) return false;
    // In double: the three weights add up to 1, so that a grey of exactly 0.5 is not dark.
    const double luma = 0.2126 * static_cast<double>((*rgba)[0]) + 0.7152 * static_cast<double>((*rgba)[1]) +
                        0.0722 * static_cast<double>((*rgba)[2]);
    return luma < 0.5;
}

std::span<const Color> Color::rainbow() noexcept { return rainbowColors; }

std::vector<Color> Color::tenRandomSystemColors(std::uint32_t (*draw)(void* generator), void* generator) {
    std::vector<Color> colors(systemColors.begin(), systemColors.end());
    std::shuffle(colors.begin(), colors.end(), Generator{draw, generator});
    colors.resize(10);
    return colors;
}

}  // namespace corvex::inline v0
