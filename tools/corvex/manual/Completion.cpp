#include <tools/corvex/manual/Completion.h>

#include <algorithm>
#include <string_view>

namespace corvex::tool {
namespace {

constexpr std::string_view header = "completion of corvex; 'corvex generate' writes it.\n";

std::string shellQuoted(std::string_view text) {
    std::string result = "'";
    for (const char character : text) {
        if (character == '\'') {
            result += "'\\''";
        } else {
            result += character;
        }
    }
    return result + "'";
}

std::string joined(const std::vector<std::string>& words) {
    std::string text;
    for (const std::string& word : words) text += (text.empty() ? "" : " ") + word;
    return text;
}

bool takesPaths(const CommandPlace& place) {
    return std::any_of(place.operands.begin(), place.operands.end(),
                       [](const CommandWord& operand) { return operand.takesPath; });
}

/// What bash and zsh have in common: how far the words lead into the commands, and what the flag before the cursor takes:
/// its values, "<path>" or "<any>"; nothing if it takes none.
std::string placeOf(std::span<const CommandPlace> places) {
    std::string text = "        case \"$place $word\" in\n";
    for (const CommandPlace& place : places) {
        if (place.path.find(' ') == std::string::npos) continue;
        text += "            " + shellQuoted(place.path) + ") place+=\" $word\" flag= ;;\n";
    }
    return text +
           "            'corvex args --') place='corvex transcode' flag= ;;\n"
           "            *' -'*) flag=$word ;;\n"
           "        esac\n";
}

std::string valuesOf(std::span<const CommandPlace> places) {
    std::string text = "    case \"$place $flag\" in\n        'corvex transcode -in_'*) values='<path>' ;;\n";
    for (const CommandPlace& place : places) {
        for (const CommandWord& option : place.options) {
            if (option.valueName.empty()) continue;
            const std::string values = option.takesPath        ? "<path>"
                                       : option.values.empty() ? "<any>"
                                                               : joined(option.values);
            text +=
                "        " + shellQuoted(place.path + " " + option.text) + ") values=" + shellQuoted(values) + " ;;\n";
        }
        if (takesPaths(place)) text += "        " + shellQuoted(place.path + " ") + ") values='<path>' ;;\n";
    }
    return text + "    esac\n";
}

}  // namespace

std::string bashCompletion(std::span<const CommandPlace> places) {
    std::string text = "# bash " + std::string(header) +
                       "_corvex() {\n"
                       "    local place=corvex flag= word words= values= current=${COMP_WORDS[COMP_CWORD]}\n"
                       "    for word in \"${COMP_WORDS[@]:1:COMP_CWORD-1}\"; do\n" +
                       placeOf(places) + "    done\n" + valuesOf(places) + "    case $place in\n";
    for (const CommandPlace& place : places) {
        std::string words = joined(place.subcommands);
        for (const CommandWord& option : place.options) words += (words.empty() ? "" : " ") + option.text;
        text += "        " + shellQuoted(place.path) + ") words=" + shellQuoted(words) + " ;;\n";
    }
    return text +
           "    esac\n"
           "    if [[ $current == -* || -z $values ]]; then\n"
           "        mapfile -t COMPREPLY < <(compgen -W \"$words\" -- \"$current\")\n"
           "    elif [[ $values == '<path>' ]]; then\n"
           "        compopt -o filenames 2>/dev/null\n"
           "        mapfile -t COMPREPLY < <(compgen -f -- \"$current\")\n"
           "    elif [[ $values != '<any>' ]]; then\n"
           "        mapfile -t COMPREPLY < <(compgen -W \"$values\" -- \"$current\")\n"
           "    fi\n"
           "}\n"
           "complete -F _corvex corvex\n";
}

std::string zshCompletion(std::span<const CommandPlace> places) {
    std::string text = "#compdef corvex\n# zsh " + std::string(header) +
                       "_corvex() {\n"
                       "    local place=corvex flag= word values=\n"
                       "    local -a entries\n"
                       "    for word in \"${(@)words[2,CURRENT-1]}\"; do\n" +
                       placeOf(places) + "    done\n" + valuesOf(places) + "    case $place in\n";
    for (const CommandPlace& place : places) {
        text += "        " + shellQuoted(place.path) + ")\n            entries=(\n";
        for (const CommandPlace& below : places) {
            const bool isChild = below.path.starts_with(place.path + " ") &&
                                 below.path.find(' ', place.path.size() + 1) == std::string::npos;
            if (!isChild) continue;
            text +=
                "                " + shellQuoted(below.path.substr(place.path.size() + 1) + ":" + below.purpose) + "\n";
        }
        for (const CommandWord& option : place.options) {
            text += "                " + shellQuoted(option.text + ":" + option.meaning) + "\n";
        }
        text += "            ) ;;\n";
    }
    return text +
           "    esac\n"
           "    if [[ ${words[CURRENT]} == -* ]]; then\n"
           "        _describe -o flag entries\n"
           "    elif [[ -z $values ]]; then\n"
           "        _describe word entries\n"
           "    elif [[ $values == '<path>' ]]; then\n"
           "        _files\n"
           "    elif [[ $values != '<any>' ]]; then\n"
           "        compadd -- ${=values}\n"
           "    fi\n"
           "}\n"
           "if [[ ${zsh_eval_context[-1]} == loadautofunc ]]; then\n"
           "    _corvex \"$@\"\n"
           "else\n"
           "    compdef _corvex corvex\n"
           "fi\n";
}

std::string fishCompletion(std::span<const CommandPlace> places) {
    std::string text = "# fish " + std::string(header) +
                       "function __corvex_at\n"
                       "    set -l place corvex\n"
                       "    for word in (commandline -opc)[2..-1]\n"
                       "        switch \"$place $word\"\n"
                       "            case";
    for (const CommandPlace& place : places) {
        if (place.path.find(' ') != std::string::npos) text += " " + shellQuoted(place.path);
    }
    text +=
        " 'corvex args --'\n"
        "                set place \"$place $word\"\n"
        "        end\n"
        "    end\n"
        "    test \"$place\" = \"$argv\"\n"
        "end\n"
        // Behind "--" fish knows operands alone, so the words of a job are completed as those of a transcode.
        "function __corvex_job\n"
        "    set -l words (commandline -opc)\n"
        "    set -l behind (string escape -- $words[(math 1 + (contains -i -- -- $words))..-1])\n"
        "    complete -C (string join -- ' ' corvex transcode $behind (commandline -ct))\n"
        "end\n"
        "complete -c corvex -f\n"
        "complete -c corvex -n '__corvex_at corvex args --' -k -a '(__corvex_job)'\n";
    for (const CommandPlace& place : places) {
        const std::string here = "complete -c corvex -n '__corvex_at " + place.path + "' ";
        const std::size_t blank = place.path.rfind(' ');
        if (blank != std::string::npos) {
            text += "complete -c corvex -n '__corvex_at " + place.path.substr(0, blank) + "' -a " +
                    place.path.substr(blank + 1) + " -d " + shellQuoted(place.purpose) + "\n";
        }
        if (takesPaths(place)) text += here + "-F\n";
        for (const CommandWord& option : place.options) {
            const bool isLong = option.text.starts_with("--");
            text += here + (isLong ? "-l " + option.text.substr(2) : "-o " + option.text.substr(1));
            if (option.takesPath) text += " -r -F";
            if (!option.takesPath && !option.valueName.empty()) text += " -x";
            if (!option.values.empty()) text += " -a " + shellQuoted(joined(option.values));
            text += " -d " + shellQuoted(option.meaning) + "\n";
        }
    }
    return text;
}

}  // namespace corvex::tool
