#pragma once

#include <compare>
#include <concepts>
#include <cstddef>
#include <span>
#include <string_view>
#include <type_traits>
#include <utility>

#include <Corvex/platform/Export.h>

namespace corvex::inline v0 {

/// A text that is part of the program and lives as long as it: made from literals only, which the compiler checks. So a
/// constant of a family needs no copy, no start-up code and no destructor.
class LiteralText {
public:
    // NOLINTNEXTLINE(google-explicit-constructor,hicpp-explicit-conversions): a literal is one
    consteval LiteralText(const char* literal) noexcept : text_(literal) {}
    /// Valid for ever.
    [[nodiscard]] constexpr std::string_view text() const noexcept { return text_; }

private:
    std::string_view text_;
};

/// Throws the DecodingError of a typed string for JSON of another kind.
[[noreturn]] CORVEX_EXPORT void throwNoTypedString(std::string_view jsonText);

/// The known values of a family in their fixed order: specialised beside those constants, with a constexpr std::array of
/// them, by a family that has such a list.
template <class Family>
inline constexpr auto knownValues = nullptr;

/// A text of one family of words: any spelling is legal, families never mix, the known ones are constants. A family
/// derives from it by its own name: `class FileFormat : public TypedString<FileFormat> { using TypedString…; }`
/// Made from a literal it is a compile-time constant that refers to the literal; made from any other text it owns a
/// copy. Copies of a constant cost nothing; a moved-from text is empty. Equality, order and hash are those of the
/// bytes.
/// Codes to JSON as one string; decoding anything else throws DecodingError. Threads: as std::string.
template <class Family>
class TypedString {
public:
    constexpr TypedString() noexcept = default;

    /// Refers to the literal; the compiler takes nothing else.
    constexpr explicit TypedString(LiteralText literal) noexcept : text_(literal.text()) {}

    /// Any text of the caller's own, a std::string, std::string_view or the like, which is copied.
    template <class Text>
        requires std::is_class_v<Text> && std::convertible_to<const Text&, std::string_view>
    constexpr explicit TypedString(const Text& text) : text_(own(text)), isOwner_(!text_.empty()) {}

    /// Copies what the other owns, and refers to the same literal where it owns nothing.
    constexpr TypedString(const TypedString& other)
        : text_(other.isOwner_ ? own(other.text_) : other.text_), isOwner_(other.isOwner_) {}
    constexpr TypedString(TypedString&& other) noexcept
        : text_(std::exchange(other.text_, {})), isOwner_(std::exchange(other.isOwner_, false)) {}
    constexpr TypedString& operator=(TypedString other) noexcept {
        std::swap(text_, other.text_);
        std::swap(isOwner_, other.isOwner_);
        return *this;
    }
    constexpr ~TypedString() {
        if (isOwner_) delete[] text_.data();
    }

    /// The family's known values; of a family that lists them. A view of a constant, which never ends.
    [[nodiscard]] static constexpr std::span<const Family> allCases() noexcept
        requires requires { knownValues<Family>.size(); }
    {
        return knownValues<Family>;
    }

    /// The text. Valid while this object lives and is not assigned to.
    [[nodiscard]] constexpr std::string_view rawValue() const noexcept { return text_; }

    friend constexpr bool operator==(const Family& a, const Family& b) noexcept { return a.rawValue() == b.rawValue(); }
    friend constexpr std::strong_ordering operator<=>(const Family& a, const Family& b) noexcept {
        return a.rawValue() <=> b.rawValue();
    }

    template <class JsonType>
    friend void to_json(JsonType& json, const Family& value) {
        json = typename JsonType::string_t(value.rawValue());
    }
    template <class JsonType>
    friend void from_json(const JsonType& json, Family& value) {
        const auto* text = json.template get_ptr<const typename JsonType::string_t*>();
        if (!text) throwNoTypedString(json.dump(-1, ' ', false, JsonType::error_handler_t::replace));
        value = Family(*text);
    }

private:
    /// A copy on the heap; nothing for the empty text.
    static constexpr std::string_view own(std::string_view text) {
        if (text.empty()) return {};
        char* copy = new char[text.size()];
        text.copy(copy, text.size());
        return {copy, text.size()};
    }

    /// The literal, or the copy that `isOwner_` says is its own.
    std::string_view text_;
    bool isOwner_ = false;
};

/// A class that derives from TypedString by its own name.
template <class T>
concept TypedStringFamily = std::derived_from<T, TypedString<T>>;

}  // namespace corvex::inline v0

template <corvex::TypedStringFamily Family>
struct std::hash<Family> {
    std::size_t operator()(const Family& value) const noexcept {
        return std::hash<std::string_view>{}(value.rawValue());
    }
};
