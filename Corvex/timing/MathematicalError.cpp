#include <Corvex/timing/MathematicalError.h>

namespace corvex::inline v0 {

MathematicalError::MathematicalError(Case which) : Error("division by zero"), case_(which) {}

MathematicalError::~MathematicalError() = default;

}  // namespace corvex::inline v0
