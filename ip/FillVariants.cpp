#include "ip/detail/FillVariants.h"

#include "ip/arm/FillRows.h"
#include "ip/detail/Rows.h"
#include "ip/detail/Variants.h"
#include "ip/x86/FillRows.h"

#include <cstdlib>

namespace zel::ip {

namespace {

// clang-format off
constexpr FillVariant kVariants[] = {
    {"scalar", Cpu::scalar, nullptr,           nullptr},
#if ZEL_X86
    {"sse2",   Cpu::sse2,   x86::FillRow_Sse2, x86::FillRowStreaming_Sse2},
#endif
#if ZEL_NEON
    {"neon",   Cpu::neon,   arm::FillRow_Neon, nullptr},
#endif
};
// clang-format on

}  // namespace

std::span<const FillVariant> FillVariants() { return kVariants; }

void FillFrame(const FillVariant& variant, IpScanFillFn* scanFn, FillUnit unit, void* base,
               int rowBytes, int width, int height, float r, float g, float b, float a,
               bool normalised) {
    if (!variant.row)
        return IpFrame_Fill_Master(scanFn, base, rowBytes, width, height, r, g, b, a, normalised);
    FillPattern pattern;
    scanFn(pattern.data(), 0, 16 / unit.bytes * unit.pixels, r, g, b, a, normalised);
    std::ptrdiff_t bytes = std::ptrdiff_t{width / unit.pixels} * unit.bytes;
    if (std::abs(std::int64_t{rowBytes}) == bytes && height > 1) {
        // Rows without gaps are one row, in which the pattern goes on.
        base = Upwards({base, rowBytes}, height).first;
        bytes *= height;
        height = 1;
    }
    WithRow(variant, base, nullptr, bytes, height, [&](IpFillRowFn* row) {
        ForEach(
            height, [&](void* to) { row(to, bytes, pattern); }, Upwards({base, rowBytes}, height));
    });
}

void FillFrame(IpScanFillFn* scanFn, FillUnit unit, void* base, int rowBytes, int width, int height,
               float r, float g, float b, float a, bool normalised) {
    FillFrame(Pick(FillVariants()), scanFn, unit, base, rowBytes, width, height, r, g, b, a,
              normalised);
}

}  // namespace zel::ip
