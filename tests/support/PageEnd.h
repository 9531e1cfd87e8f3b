#pragma once

/// An array whose last element ends at a page that cannot be read: touching the element
/// behind it ends the test, whatever the value there.

#include <cstddef>
#include <new>
#include <type_traits>

#if defined(_WIN32)
#define NOMINMAX
#include <windows.h>
#else
#include <sys/mman.h>
#include <unistd.h>
#endif

namespace zel::test {

template <class T>
class PageEndArray {
    static_assert(std::is_trivially_copyable_v<T>);

public:
    /// Zeroed. Throws std::bad_alloc.
    explicit PageEndArray(std::size_t count) : m_count(count) {
        const std::size_t page = PageSize(), bytes = count * sizeof(T);
        const std::size_t readable = (bytes + page - 1) / page * page;
        m_mapped = readable + page;
        m_base = Map(m_mapped, readable);
        if (!m_base) throw std::bad_alloc();
        m_first = reinterpret_cast<T*>(static_cast<char*>(m_base) + readable - bytes);
    }
    ~PageEndArray() { Unmap(m_base, m_mapped); }
    PageEndArray(const PageEndArray&) = delete;
    PageEndArray& operator=(const PageEndArray&) = delete;

    T* data() { return m_first; }
    std::size_t size() const { return m_count; }
    T& operator[](std::size_t i) { return m_first[i]; }

private:
#if defined(_WIN32)
    static std::size_t PageSize() {
        SYSTEM_INFO info;
        GetSystemInfo(&info);
        return info.dwPageSize;
    }
    static void* Map(std::size_t bytes, std::size_t readable) {
        void* const base = VirtualAlloc(nullptr, bytes, MEM_RESERVE, PAGE_NOACCESS);
        if (base && readable && !VirtualAlloc(base, readable, MEM_COMMIT, PAGE_READWRITE)) {
            VirtualFree(base, 0, MEM_RELEASE);
            return nullptr;
        }
        return base;
    }
    static void Unmap(void* base, std::size_t) { VirtualFree(base, 0, MEM_RELEASE); }
#else
    static std::size_t PageSize() { return static_cast<std::size_t>(sysconf(_SC_PAGESIZE)); }
    static void* Map(std::size_t bytes, std::size_t readable) {
        void* const base = mmap(nullptr, bytes, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
        if (base == MAP_FAILED) return nullptr;
        if (readable && mprotect(base, readable, PROT_READ | PROT_WRITE) != 0) {
            munmap(base, bytes);
            return nullptr;
        }
        return base;
    }
    static void Unmap(void* base, std::size_t bytes) { munmap(base, bytes); }
#endif

    std::size_t m_count, m_mapped;
    void* m_base;
    T* m_first;
};

}  // namespace zel::test
