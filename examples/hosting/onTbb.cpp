// A host that computes with oneTBB: the library's tasks run on the threads of its arena and call its algorithms.
#include <cstdio>
#include <numeric>
#include <vector>

#include <Corvex/platform/adapters/TbbExecutor.h>
#include <oneapi/tbb/parallel_for.h>

#include <Corvex/concurrency/TaskSemaphore.h>
#include <Corvex/platform/TaskGroup.h>
#include <Corvex/platform/TaskHandle.h>

namespace {

/// Squares one picture with all threads; at most as many pictures at once as the semaphore allows.
corvex::Task<long> square(corvex::TaskSemaphore inFlight, long size) {
    co_await inFlight.wait();
    std::vector<long> picture(static_cast<std::size_t>(size));
    std::iota(picture.begin(), picture.end(), 1);
    oneapi::tbb::parallel_for(std::size_t{0}, picture.size(), [&picture](std::size_t i) { picture[i] *= picture[i]; });
    const long sum = std::accumulate(picture.begin(), picture.end(), 0L);
    inFlight.signal();
    co_return sum;
}

corvex::Task<long> squareAll(corvex::TaskGroup<long>& group) {
    const corvex::TaskSemaphore inFlight(2);
    for (long size = 1; size <= 100; ++size) group.add(square(inFlight, size));
    long total = 0;
    while (const auto sum = co_await group.next()) total += *sum;
    co_return total;
}

}  // namespace

int main() {
    oneapi::tbb::task_arena arena;
    corvex::TbbExecutor executor(arena);
    const auto handle = corvex::spawn(corvex::withTaskGroup<long>(squareAll), executor);
    const long total = handle.waitSync()->value();
    std::printf("%ld\n", total);
    return total == 8670850 ? 0 : 1;  // the sum of n (n + 1) (2 n + 1) / 6 up to 100
}
