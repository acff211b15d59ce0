#include <Corvex/concurrency/OSStatusError.h>

#include <Corvex/platform/StatusMessages.h>

namespace corvex::inline v0 {

OSStatusError::OSStatusError(std::int32_t status)
    : Error(errorMessage(status).value_or("")), status_(status), hasDescription_(status != 0) {}

OSStatusError::OSStatusError(std::int32_t status, const std::string& errorDescription, bool includeStatusDescription)
    : Error(includeStatusDescription && status != 0 ? errorDescription + " - " + errorMessage(status).value_or("")
                                                    : errorDescription),
      status_(status),
      hasDescription_(true) {}

OSStatusError::~OSStatusError() = default;

}  // namespace corvex::inline v0
