#pragma once

#include <nlohmann/json.hpp>

#include <string>
#include <string_view>
#include <vector>

#include <Corvex/cli/transcode/TranscodeCliArguments.h>
#include <Corvex/platform/Json.h>

namespace corvex::tool {

/// One typed option that is set.
struct TypedOption {
    std::string_view accessor;
    std::vector<std::string_view> flags;  ///< Those of its flags that are set; valid while the arguments live.
    /// Numbers and lists as such, switches true, sizes {"width", "height"}, colours {"red", "green", "blue", "hex"},
    /// colour properties by case name, other choices by their text.
    Json value;
    std::string_view unit;

    /// The value with its unit, for people.
    [[nodiscard]] std::string text() const;
};

/// A flag whose text is no value of its option: "-vbr" and "abc: not a number".
struct UnreadableOption {
    std::string_view flag;  ///< Valid while the arguments live.
    std::string problem;
};

struct TypedOptions {
    std::vector<TypedOption> readable;  ///< In the order of the accessors.
    std::vector<UnreadableOption> unreadable;
};

/// What a job's flags say through the typed options: each accessor whose flags are set, but those that wrap another's
/// value as an object. An option that reads several flags is left out when together they give no value.
[[nodiscard]] TypedOptions typedOptions(const TranscodeCliArguments& arguments);

/// How the text of one flag is read: "integer" and "bit/s".
struct FlagReading {
    std::string_view type;  ///< Empty where no option reads the flag for itself.
    std::string_view unit;
};

/// By the same rows as the options.
[[nodiscard]] FlagReading flagReading(std::string_view flag);

}  // namespace corvex::tool
