#pragma once

#include <cstddef>
#include <functional>

#include <pthread.h>

namespace corvex {

/// Runs `work` on a thread with a stack of 128 KiB, which recursion over thousands of nodes overruns.
inline void onSmallStack(std::function<void()> work) {
    constexpr std::size_t stackSize = std::size_t{128} * 1024;
    pthread_attr_t attributes;
    pthread_attr_init(&attributes);
    pthread_attr_setstacksize(&attributes, stackSize);
    pthread_t thread{};
    const auto run = [](void* argument) -> void* {
        return (*static_cast<std::function<void()>*>(argument))(), nullptr;
    };
    const int failure = pthread_create(&thread, &attributes, run, &work);
    pthread_attr_destroy(&attributes);
    if (failure != 0) throw std::bad_function_call();
    pthread_join(thread, nullptr);
}

}  // namespace corvex
