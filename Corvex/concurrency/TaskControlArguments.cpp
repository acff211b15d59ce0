#include <Corvex/concurrency/TaskControlArguments.h>

namespace corvex::inline v0 {

TaskControlArguments::~TaskControlArguments() = default;

}  // namespace corvex::inline v0
