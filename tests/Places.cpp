#include <tests/Places.h>

namespace corvex::test {

const char* const dataDirectory = CORVEX_TEST_DATA;
const char* const localeDirectory = CORVEX_TEST_LOCALE;
const char* const toolPath = CORVEX_TOOL_PATH;

}  // namespace corvex::test
