#pragma once

/// Choosing from a list of variants.

#include "ip/detail/Cpu.h"

#include <cstddef>
#include <cstdint>
#include <span>

namespace zel::ip {

/// The last row that needs no more than `level`; rows ascend from the reference to the
/// fastest.
template <class Variant>
const Variant& Pick(std::span<const Variant> variants, Cpu level = ActiveCpu()) {
    const Variant* best = &variants.front();
    for (const Variant& v : variants)
        if (v.needs <= level) best = &v;
    return *best;
}

/// Destinations of this size or more are stored past the caches, which they would only
/// sweep clean: what is written is not read again soon.
inline constexpr std::int64_t kStreamingBytes = std::int64_t{2} << 20;

inline bool StoresPastCaches(std::int64_t rowBytes, int height) {
    return rowBytes * height >= kStreamingBytes;
}

}  // namespace zel::ip
