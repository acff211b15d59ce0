#include "AllocationCount.h"

#include <cstdlib>
#include <new>

namespace {
std::size_t count = 0;
}

std::size_t allocationCount() noexcept { return count; }

// The other forms of operator new, but for the aligned ones that nothing here uses, come down to this one.
void* operator new(std::size_t size) {
    ++count;
    if (void* memory = std::malloc(size == 0 ? 1 : size)) return memory;
    throw std::bad_alloc();
}
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }
