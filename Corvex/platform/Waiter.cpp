#include <Corvex/platform/Waiter.h>

#include <string>

#include <Corvex/platform/Checked.h>

namespace corvex::inline v0 {

void WaiterLinks::stopForLateDestruction() const noexcept {
    fatalError(
        std::string(operation_).append(": ").append("a coroutine was destroyed after its resumption had been posted"));
}

}  // namespace corvex::inline v0
