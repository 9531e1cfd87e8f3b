#include "tests/host/CurveHeap.h"

#include <cstddef>

namespace {

constexpr std::size_t kCurveBytes = sizeof(float) * 3 * 1024;
constexpr std::size_t kMost = 16;

void* g_live[kMost];
bool g_refuse = false;

}  // namespace

// Names that the linker gives to both sides of a wrapped function.
extern "C" {
void* __real_malloc(std::size_t size);
void __real_free(void* block);

void* __wrap_malloc(std::size_t size);
void* __wrap_malloc(std::size_t size) {
    if (size != kCurveBytes) return __real_malloc(size);
    if (g_refuse) return nullptr;
    void* const block = __real_malloc(size);
    for (void*& slot : g_live)
        if (!slot) {
            slot = block;
            break;
        }
    return block;
}

void __wrap_free(void* block);
void __wrap_free(void* block) {
    for (void*& slot : g_live)
        if (block && slot == block) slot = nullptr;
    __real_free(block);
}
}

namespace zel::test {

int LiveCurves() {
    int count = 0;
    for (const void* slot : g_live) count += slot != nullptr;
    return count;
}

NoMemoryForCurves::NoMemoryForCurves() { g_refuse = true; }
NoMemoryForCurves::~NoMemoryForCurves() { g_refuse = false; }

}  // namespace zel::test
