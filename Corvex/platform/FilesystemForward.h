#pragma once

// Declares std::filesystem::path and std::filesystem::directory_entry for headers that only name them: <filesystem> takes
// longer to compile than most headers that use it. C++ has no such header; the GNU library's own is taken where it is.
#if __has_include(<bits/fs_fwd.h>)
#include <bits/fs_fwd.h>
#else
#include <filesystem>
#endif
