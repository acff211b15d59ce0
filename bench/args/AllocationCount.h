#pragma once

#include <cstddef>

/// How many times this program has called operator new so far. One thread.
std::size_t allocationCount() noexcept;
