#include <Corvex/concurrency/AsyncPoolError.h>

namespace corvex::inline v0 {

AsyncPoolError::AsyncPoolError(Case which) : Error("the pool is empty"), case_(which) {}

AsyncPoolError::~AsyncPoolError() = default;

}  // namespace corvex::inline v0
