#include <cstddef>
#include <cstdint>

#include "Fuzzer.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-reinterpret-cast): bytes as characters
    corvex::fuzz({reinterpret_cast<const char*>(data), size});
    return 0;
}
