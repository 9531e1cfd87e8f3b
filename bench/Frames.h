#pragma once

/// Frames of units (pixels, pairs or groups) without gaps between their rows.

#include "bench/Beside.h"

#include <cstring>

namespace zel::bench {

constexpr int RowBytes(int width, int pixels, int bytes) {
    return (width + pixels - 1) / pixels * bytes;
}

constexpr std::size_t FrameBytes(int rowBytes, Size size) {
    return static_cast<std::size_t>(rowBytes) * static_cast<std::size_t>(size.height);
}

/// RunBeside a copy of as many bytes as are read and written, half of them each.
template <class Routine>
void RunBesideCopy(benchmark::State& state, const Row& row, std::size_t dstBytes,
                   std::size_t srcBytes, Samples samples, Routine routine) {
    const std::size_t moved = (dstBytes + srcBytes) / 2;
    Ring ring(std::max(dstBytes, moved), std::max(srcBytes, moved), samples, row.caches);
    const auto run = [&] {
        const auto [dst, src] = ring.Next();
        routine(dst, src);
    };
    const auto copy = [&] {
        const auto [dst, src] = ring.Next();
        std::memcpy(dst, src, moved);
    };
    RunBeside(state, row, run, Plain::memcpy, copy);
}

}  // namespace zel::bench
