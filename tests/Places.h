#pragma once

namespace corvex::test {

/// Where the build keeps what tests read or run. In a source of their own, so that all others are the same for the
/// compiler's cache wherever the tree lies.
extern const char* const dataDirectory;    ///< tests/data
extern const char* const localeDirectory;  ///< the compiled catalogues of translated texts
extern const char* const toolPath;         ///< the program corvex

}  // namespace corvex::test
