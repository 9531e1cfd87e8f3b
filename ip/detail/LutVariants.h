#pragma once

/// The look-up family's variants: one list per sample type, row 0 the reference. The
/// frame routines, the checker, the benchmarks and `zelfx info` walk these lists.

#include "ip/IpLut.h"
#include "ip/detail/Cpu.h"

#include <array>
#include <cstdint>
#include <span>

namespace zel::ip {

/// The four tables of a frame in the form that a variant looks samples up in, made once
/// per frame: 1024 cells for each memory channel, channel after channel.
using PreparedTables = std::array<std::uint32_t, 4 * 1024>;

using PrepareTablesFn = void(PreparedTables& prepared, void* t0, void* t1, void* t2, void* t3);

struct LutVariant {
    const char* name;
    Cpu needs;
    /// Null: the row functions take the caller's tables as they are. Otherwise table ti
    /// that they get is cell 1024 x i of the prepared ones.
    PrepareTablesFn* prepare;
    IpScanLutFn* row;
    /// The same with stores past the caches; null where there is none.
    IpScanLutFn* streamingRow;
};

struct LutFamily {
    const char* name;
    int pixelBytes;
    std::span<const LutVariant> variants;
};

extern const LutFamily kLut8, kLut16, kLutFloat;

std::span<const LutFamily* const> LutFamilies();

/// A frame through one variant of a family.
void LutFrame(const LutFamily& family, const LutVariant& variant, void* dst, int dstRowBytes,
              void* src, int srcRowBytes, int width, int height, void* t0, void* t1, void* t2,
              void* t3);

}  // namespace zel::ip
