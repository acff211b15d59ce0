#include <Corvex/concurrency/AtomicSwitch.h>

namespace corvex::inline v0 {

AtomicSwitch::~AtomicSwitch() = default;

}  // namespace corvex::inline v0
