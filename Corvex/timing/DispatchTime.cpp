#include <Corvex/timing/DispatchTime.h>

#include <chrono>

namespace corvex::inline v0 {

DispatchTime DispatchTime::now() noexcept {
    const auto sinceStart = std::chrono::steady_clock::now().time_since_epoch();
    return DispatchTime(
        static_cast<std::uint64_t>(std::chrono::duration_cast<std::chrono::nanoseconds>(sinceStart).count()));
}

}  // namespace corvex::inline v0
