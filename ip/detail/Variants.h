#pragma once

/// Choosing from a list of variants.

#include "ip/detail/Cpu.h"
#include "ip/x86/Fence.h"

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

/// Calls walk(row function), with the one that suits a frame: stores past the caches for
/// large ones, but not for frames in place, whose lines are in the caches already.
template <class Variant, class Walk>
void WithRow(const Variant& variant, const void* dst, const void* src, std::int64_t rowBytes,
             int height, Walk walk) {
    const bool large = height > 0 && rowBytes * height >= kStreamingBytes;
    if (!large || dst == src || !variant.streamingRow) return walk(variant.row);
    walk(variant.streamingRow);
#if ZEL_X86
    x86::StreamFence();
#endif
}

}  // namespace zel::ip
