#include <Corvex/concurrency/TimeoutError.h>

namespace corvex::inline v0 {

TimeoutError::TimeoutError(Case which, std::uint64_t seconds, const std::string& description)
    : Error(description), case_(which), seconds_(seconds) {}

TimeoutError::~TimeoutError() = default;

TimeoutError TimeoutError::timedOut(std::uint64_t seconds) {
    return {Case::timedOut, seconds, "Timed out after " + std::to_string(seconds)};
}

TimeoutError TimeoutError::undefined() { return {Case::undefined, 0, "Undefined timeout"}; }

}  // namespace corvex::inline v0
