#pragma once

#include <thread>
#include <vector>

namespace corvex::test {

/// Runs `work(0)` to `work(count - 1)`, each on a thread of its own, and returns when all have ended.
void onThreads(int count, const auto& work) {
    std::vector<std::jthread> threads;
    for (int i = 0; i < count; ++i) threads.emplace_back([&work, i] { work(i); });
}

}  // namespace corvex::test
