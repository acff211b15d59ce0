#include <Corvex/platform/Object.h>

namespace corvex::inline v0 {

Object::~Object() = default;

}  // namespace corvex::inline v0
