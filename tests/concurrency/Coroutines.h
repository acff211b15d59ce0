#pragma once

#include <exception>
#include <string>
#include <utility>

#include <Corvex/platform/Task.h>
#include <Corvex/platform/TaskHandle.h>

namespace corvex {

/// What a result's error says, empty without one.
template <class Result>
std::string errorOf(const Result& result) {
    try {
        if (result.error()) std::rethrow_exception(result.error());
    } catch (const std::exception& error) {
        return error.what();
    }
    return "";
}

/// A coroutine that is resumed by hand and destroyed whenever its owner goes: for frames that end while they wait.
template <class T>
class Abandoned {
public:
    explicit Abandoned(Task<T> task) : coroutine_(task.release()) { coroutine_.resume(); }
    ~Abandoned() { coroutine_.destroy(); }
    Abandoned(const Abandoned&) = delete;
    Abandoned& operator=(const Abandoned&) = delete;

private:
    typename Task<T>::Handle coroutine_;
};

}  // namespace corvex
