#pragma once

/// An array whose last element ends at a page that cannot be read: touching the element
/// behind it ends the test, whatever the value there.

#include "tests/support/Pages.h"

#include <cstddef>
#include <new>
#include <type_traits>

namespace zel::test {

template <class T>
class PageEndArray {
    static_assert(std::is_trivially_copyable_v<T>);

public:
    /// Zeroed. Throws std::bad_alloc.
    explicit PageEndArray(std::size_t count) : m_count(count) {
        const std::size_t bytes = count * sizeof(T), readable = WholePages(bytes);
        m_reserved = readable + PageSize();
        m_base = ReservePages(m_reserved);
        if (!m_base) throw std::bad_alloc();
        if (!OpenPages(m_base, readable)) {
            ReleasePages(m_base, m_reserved);
            throw std::bad_alloc();
        }
        m_first = reinterpret_cast<T*>(static_cast<char*>(m_base) + readable - bytes);
    }
    ~PageEndArray() { ReleasePages(m_base, m_reserved); }
    PageEndArray(const PageEndArray&) = delete;
    PageEndArray& operator=(const PageEndArray&) = delete;

    T* data() { return m_first; }
    std::size_t size() const { return m_count; }
    T& operator[](std::size_t i) { return m_first[i]; }

private:
    std::size_t m_count, m_reserved;
    void* m_base;
    T* m_first;
};

}  // namespace zel::test
