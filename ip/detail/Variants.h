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

/// Destinations of this size or more are stored past the caches: such a frame is not read
/// again soon, and fetching its lines only to overwrite them costs as much as reading the
/// source.
inline constexpr std::int64_t kStreamingBytes = std::int64_t{2} << 20;

/// The variant's row function for a frame. Frames in place stay in the caches, where
/// their lines are already.
template <class Variant>
auto* PickRow(const Variant& variant, const void* dst, const void* src, std::int64_t rowBytes,
              int height) {
    const bool large = height > 0 && rowBytes * height >= kStreamingBytes;
    return large && dst != src && variant.streamingRow ? variant.streamingRow : variant.row;
}

}  // namespace zel::ip
