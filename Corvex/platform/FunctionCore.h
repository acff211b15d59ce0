#pragma once

// std::function alone, for headers that keep one: the rest of <functional> (searchers, binders) brings containers along. C++
// has no such header; the GNU library's own is taken where it is.
#if __has_include(<bits/std_function.h>)
#include <bits/std_function.h>
#else
#include <functional>
#endif
