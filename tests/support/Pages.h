#pragma once

/// Memory in whole pages from the operating system, some of it not to be touched.

#include <cstddef>

namespace zel::test {

std::size_t PageSize();

/// Bytes rounded up to whole pages.
inline std::size_t WholePages(std::size_t bytes) {
    const std::size_t page = PageSize();
    return (bytes + page - 1) / page * page;
}

/// Addresses that fault when touched; null when there is no room for them.
void* ReservePages(std::size_t bytes);

/// Makes reserved pages memory, zeroed. Memory is taken page by page, as it is touched.
bool OpenPages(void* first, std::size_t bytes);

/// Gives back all that one ReservePages() has taken.
void ReleasePages(void* reserved, std::size_t bytes);

}  // namespace zel::test
