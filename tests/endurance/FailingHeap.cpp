#include "tests/endurance/FailingHeap.h"

#include <cerrno>
#include <cstddef>

// What the functions below stand in front of.
extern "C" {
void* __libc_malloc(std::size_t);
void* __libc_calloc(std::size_t, std::size_t);
void* __libc_realloc(void*, std::size_t);
void* __libc_memalign(std::size_t, std::size_t);
}

namespace {

thread_local long left = 0;  // allocations until the one that fails; 0: none does

bool Fails() { return left > 0 && --left == 0; }

}  // namespace

#define EXPORT extern "C" __attribute__((visibility("default")))

EXPORT void* malloc(std::size_t bytes) { return Fails() ? nullptr : __libc_malloc(bytes); }
EXPORT void* calloc(std::size_t number, std::size_t size) {
    return Fails() ? nullptr : __libc_calloc(number, size);
}
EXPORT void* realloc(void* block, std::size_t bytes) {
    return Fails() ? nullptr : __libc_realloc(block, bytes);
}
EXPORT void* aligned_alloc(std::size_t alignment, std::size_t bytes) {
    return Fails() ? nullptr : __libc_memalign(alignment, bytes);
}
EXPORT int posix_memalign(void** block, std::size_t alignment, std::size_t bytes) {
    if (Fails()) return ENOMEM;
    *block = __libc_memalign(alignment, bytes);
    return *block ? 0 : ENOMEM;
}

namespace zel::test {

FailingAllocation::FailingAllocation(long number) { left = number; }
FailingAllocation::~FailingAllocation() { left = 0; }
bool FailingAllocation::HasFailed() const { return left == 0; }

}  // namespace zel::test
