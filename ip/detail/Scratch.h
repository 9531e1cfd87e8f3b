#pragma once

/// Memory for an intermediate frame.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <new>
#include <utility>

namespace zel::ip {

struct FreeScratch {
    void operator()(std::byte* memory) const { ::operator delete[](memory); }
};
using Scratch = std::unique_ptr<std::byte[], FreeScratch>;

/// width x bytesPerPixel x height bytes, zero-filled; null when there is no room.
/// The allocation function is called directly: a compiler may drop a
/// new-expression whose memory it finds unused, and with it the failure.
inline Scratch NewScratch(int width, int bytesPerPixel, int height) {
    const auto extent = [](int n) { return static_cast<std::uint64_t>(std::max(n, 0)); };
    const std::uint64_t bytes = extent(width) * extent(bytesPerPixel) * extent(height);
    if (!std::in_range<std::size_t>(bytes)) return nullptr;
    const auto size = static_cast<std::size_t>(bytes);
    void* const memory = ::operator new[](size, std::nothrow);
    if (memory) std::memset(memory, 0, size);
    return Scratch(static_cast<std::byte*>(memory));
}

}  // namespace zel::ip
