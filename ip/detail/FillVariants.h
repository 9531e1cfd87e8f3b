#pragma once

/// The fill family's variants. A layout's unit repeats within 16 bytes, so all layouts
/// share one list: rows of a 16-byte pattern. Row 0 stands for the scan fills themselves,
/// which are the reference.

#include "ip/IpFill.h"
#include "ip/detail/Cpu.h"

#include <array>
#include <cstddef>
#include <span>

namespace zel::ip {

using FillPattern = std::array<std::byte, 16>;

/// The first `bytes` bytes of a row; 0 or less does nothing.
using IpFillRowFn = void(void* row, std::ptrdiff_t bytes, const FillPattern& pattern);

struct FillVariant {
    const char* name;
    Cpu needs;
    IpFillRowFn* row;  // null: the scan fill
    /// The same with stores past the caches; null where there is none.
    IpFillRowFn* streamingRow;
};

/// A storage unit: so many pixels in so many bytes, of which 16 is a multiple.
struct FillUnit {
    int pixels, bytes;
};

std::span<const FillVariant> FillVariants();

/// IpFrame_Fill_Master with one variant.
void FillFrame(const FillVariant& variant, IpScanFillFn* scanFn, FillUnit unit, void* base,
               int rowBytes, int width, int height, float r, float g, float b, float a,
               bool normalised);

/// The same with the variant for this processor.
void FillFrame(IpScanFillFn* scanFn, FillUnit unit, void* base, int rowBytes, int width, int height,
               float r, float g, float b, float a, bool normalised);

}  // namespace zel::ip
