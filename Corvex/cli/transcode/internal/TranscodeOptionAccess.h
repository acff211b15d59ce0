#pragma once

#include <concepts>
#include <optional>
#include <string>
#include <string_view>

#include <Corvex/cli/transcode/TranscodeCliArguments.h>
#include <Corvex/platform/NumberText.h>

// NOLINTNEXTLINE(modernize-concat-nested-namespaces): they are; the check does not know inline ones
namespace corvex::inline v0::options {

// How the typed options read and write the texts of their flags. Internal.

/// None: the flag is absent. The empty text: it is there without a value. A view into the arguments.
using OptionalText = std::optional<std::string_view>;

/// `flag` here and below is of any family that has cliFlag(). The value as it is stored.
inline OptionalText valueOf(const TranscodeCliArguments& arguments, const auto& flag) {
    return arguments.argumentFlagValue(flag.cliFlag());
}

/// A switch is on as soon as it is there, whatever its value: "-overwrite no" is on.
inline bool isSet(const TranscodeCliArguments& arguments, const auto& flag) {
    return valueOf(arguments, flag).has_value();
}

/// The one place that writes; none removes the flag.
inline void setText(TranscodeCliArguments& arguments, OptionalText text, const auto& flag) {
    arguments.setArgumentFlagValue(text, flag.cliFlag());
}

/// On as the empty text, which renders as the flag and an empty word.
inline void setSwitch(TranscodeCliArguments& arguments, bool isOn, const auto& flag) {
    setText(arguments, isOn ? OptionalText("") : std::nullopt, flag);
}

/// A value of an open family: any text is one.
template <class Value>
std::optional<Value> typedValueOf(const TranscodeCliArguments& arguments, const auto& flag) {
    const auto text = valueOf(arguments, flag);
    return text ? std::optional<Value>(std::in_place, *text) : std::nullopt;
}

/// Writes the raw value of a typed string or of an anchor.
inline void setTypedValue(TranscodeCliArguments& arguments, const auto& value, const auto& flag) {
    setText(arguments, value ? OptionalText(value->rawValue()) : std::nullopt, flag);
}

/// `Anchor` is a kind of AnchorOption.
template <class Anchor>
std::optional<Anchor> anchorOf(const TranscodeCliArguments& arguments, const auto& flag) {
    auto anchor = typedValueOf<OAVTranscodeArgumentOverlayAnchorValue>(arguments, flag);
    return anchor ? std::optional<Anchor>(std::in_place, *std::move(anchor)) : std::nullopt;
}

/// The whole text as a decimal, whatever the locale; none for anything else, as "30fps". Floating-point numbers are
/// finite.
template <class T>
std::optional<T> numberOf(const TranscodeCliArguments& arguments, const auto& flag) {
    const auto text = valueOf(arguments, flag);
    if (!text) return std::nullopt;
    // No range is looked at here: what a number may be, its option knows.
    if constexpr (std::integral<T>) {
        return parseInteger<T>(*text);
    } else {
        return parseFloat<T>(*text);
    }
}

/// Writes the shortest text that reads back as the same number.
template <class T>
void setNumber(TranscodeCliArguments& arguments, const std::optional<T>& value, const auto& flag) {
    if (!value) {
        setText(arguments, std::nullopt, flag);
    } else if constexpr (std::integral<T>) {
        setText(arguments, std::to_string(*value), flag);
    } else {
        setText(arguments, shortestText(*value), flag);
    }
}

}  // namespace corvex::inline v0::options
