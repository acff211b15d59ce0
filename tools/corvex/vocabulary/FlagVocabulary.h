#pragma once

#include <string_view>
#include <vector>

namespace corvex::tool {

/// What there is to know of one flag of the argument vectors.
struct VocabularyFlag {
    std::string_view flag;     ///< As it is written: "-vcodec".
    std::string_view command;  ///< Whose words it belongs to: "transcode", "analyze", or "worker" for a host's own.
    std::string_view group;    ///< "video".
    bool takesValue = false;
    std::string_view type;  ///< "switch", "text", "path", "integer", "list of integers"; how the value is read.
    std::string_view unit;  ///< Empty: none.
    std::vector<std::string_view> values;  ///< The known ones of a choice, in their fixed order; else none.
    std::string_view meaning;              ///< For people, without a full stop.
    bool isCarriedOut = true;              ///< By this machine's workers.
    bool takesPath = false;

    /// Whether a value behind it means something: a few switches are read the same with one and without.
    [[nodiscard]] bool wantsValue() const noexcept { return takesValue && type != "switch"; }
};

/// Every flag, in the order of commands and groups.
[[nodiscard]] const std::vector<VocabularyFlag>& flagVocabulary();

}  // namespace corvex::tool
