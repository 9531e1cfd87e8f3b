#pragma once

/// Look-ups through prepared tables: what variants share, and their ragged ends.

#include "ip/detail/LutVariants.h"
#include "ip/detail/Memory.h"

#include <bit>

namespace zel::ip {

inline constexpr float kCodeToUnit = 1.0f / 1023.0f;
static_assert(std::bit_cast<std::uint32_t>(kCodeToUnit) == 0x3A802008);

/// Cells hold what a 16-bit sample becomes: the code left-aligned, in the low half.
PrepareTablesFn PrepareShifted;

/// Cells hold what a float sample becomes.
PrepareTablesFn PrepareUnits;

/// Pixel after pixel, straight from the caller's tables.
IpScanLutFn LutRow8Portable;

/// Table and shift, sample after sample.
IpScanLutFn LutRow16Prepared;

/// The indices of a few pixels, then their cells.
IpScanLutFn LutRowFloatPrepared;

}  // namespace zel::ip
