#include <Corvex/platform/TypedString.h>

#include <string>

#include <Corvex/platform/Error.h>

namespace corvex::inline v0 {

void throwNoTypedString(std::string_view jsonText) {
    throw DecodingError("rawValue", "expected a text, not " + std::string(jsonText));
}

}  // namespace corvex::inline v0
