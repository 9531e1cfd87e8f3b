#include "tests/support/Pages.h"

#if defined(_WIN32)
#include <windows.h>
#else
#include <sys/mman.h>
#include <unistd.h>
#endif

namespace zel::test {

#if defined(_WIN32)

std::size_t PageSize() {
    SYSTEM_INFO info;
    GetSystemInfo(&info);
    return info.dwPageSize;
}

void* ReservePages(std::size_t bytes) {
    return VirtualAlloc(nullptr, bytes, MEM_RESERVE, PAGE_NOACCESS);
}

bool OpenPages(void* first, std::size_t bytes) {
    return bytes == 0 || VirtualAlloc(first, bytes, MEM_COMMIT, PAGE_READWRITE);
}

void ReleasePages(void* reserved, std::size_t) { VirtualFree(reserved, 0, MEM_RELEASE); }

#else

std::size_t PageSize() { return static_cast<std::size_t>(sysconf(_SC_PAGESIZE)); }

void* ReservePages(std::size_t bytes) {
    constexpr int kFlags = MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE;
    void* const pages = mmap(nullptr, bytes, PROT_NONE, kFlags, -1, 0);
    return pages == MAP_FAILED ? nullptr : pages;
}

bool OpenPages(void* first, std::size_t bytes) {
    return bytes == 0 || mprotect(first, bytes, PROT_READ | PROT_WRITE) == 0;
}

void ReleasePages(void* reserved, std::size_t bytes) { munmap(reserved, bytes); }

#endif

}  // namespace zel::test
