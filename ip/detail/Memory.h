#pragma once

/// Loads and stores of pixel memory: any alignment, no aliasing trouble.

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace zel::ip {

// Words and 16-bit elements are little-endian in memory and loaded as they stand.
static_assert(std::endian::native == std::endian::little);

template <class T>
T Load(const void* from) {
    T value;
    std::memcpy(&value, from, sizeof value);
    return value;
}

template <class T>
void Store(void* to, T value) {
    std::memcpy(to, &value, sizeof value);
}

/// `p` moved by `count` elements of type T; offsets beyond 2 GiB are fine.
template <class T>
std::byte* At(void* p, std::ptrdiff_t count) {
    return static_cast<std::byte*>(p) + count * static_cast<std::ptrdiff_t>(sizeof(T));
}

/// Element `index` of an array of T that may start at any address.
template <class T>
T LoadAt(void* array, std::ptrdiff_t index) {
    return Load<T>(At<T>(array, index));
}

template <class T>
void StoreAt(void* array, std::ptrdiff_t index, T value) {
    Store(At<T>(array, index), value);
}

constexpr std::uint32_t ByteReversed(std::uint32_t word) {
    return word << 24 | (word & 0xFF00u) << 8 | (word >> 8 & 0xFF00u) | word >> 24;
}

}  // namespace zel::ip
