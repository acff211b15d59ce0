#include <tools/corvex/ToolError.h>

#include <cstdio>

namespace corvex::tool {

void printError(const std::string& message) {
    std::string line = "corvex: " + message;
    for (char& character : line) {
        if (character == '\n' || character == '\r') character = ' ';  // a library's text may hold several lines
    }
    line += '\n';
    std::fwrite(line.data(), 1, line.size(), stderr);
    std::fflush(stderr);
}

}  // namespace corvex::tool
