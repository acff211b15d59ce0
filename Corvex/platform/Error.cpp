#include <Corvex/platform/Error.h>

namespace corvex::inline v0 {

Error::~Error() = default;  // here, so that the type information has one home across libraries

DecodingError::DecodingError(const std::string& key, const std::string& problem)
    : Error("key '" + key + "': " + problem), key_(key) {}

DecodingError::~DecodingError() = default;

}  // namespace corvex::inline v0
