#pragma once

// The durations, time points and clocks of std::chrono, with their literals, for headers that need no more: the calendar and
// the time zones of <chrono> bring streams along. C++ has no such header; the GNU library's own is taken where it is.
#if __has_include(<bits/chrono.h>)
#include <bits/chrono.h>
#else
#include <chrono>
#endif
