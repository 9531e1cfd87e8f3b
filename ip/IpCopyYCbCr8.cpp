// 8-bit YCbCr layouts, to and from.

#include "ip/IpCopy.h"

#include "ip/detail/CopyVariants.h"
#include "ip/detail/Layouts.h"
#include "ip/detail/OpaqueRGB.h"
#include "ip/detail/Scratch.h"
#include "ip/detail/Units.h"

namespace {

using namespace zel::ip;

/// What the unfinished members do: an RGB8 frame of zeros, opaque, into the
/// destination. The source is not read. docs/quirks.md, "unfinished members".
template <Order To>
void OpaqueScratch(Rows dst, int width, int height) {
    const Scratch scratch = NewScratch(width, kRGB.elements, height);
    if (!scratch) return;
    OpaqueFrame<To>(dst, {scratch.get(), std::ptrdiff_t{width} * kRGB.elements}, width, height);
}

}  // namespace

// --- rows ---------------------------------------------------------------------

void IpScan_Copy_VUYA8_To_VUY8(void* dst, int, void* src, int, int width) {
    using Pixel = std::array<std::uint8_t, 4>;
    // Deliberate: four bytes, V A A Y. docs/quirks.md, "VUY8".
    MapUnits<Pixel>(dst, src, width, [](const Pixel& p) { return Pixel{p[0], p[3], p[3], p[2]}; });
}

void IpScan_Copy_VUYA8_To_YCbYCr8(void* dst, int, void* src, int, int width) {
    using Pixels = std::array<std::uint8_t, 8>;
    using Pair = std::array<std::uint8_t, 4>;
    // Deliberate: U, the second pixel's Y, V, the first pixel's Y.
    // docs/quirks.md, "VUYA8 pair".
    MapUnits<Pixels>(dst, src, width / 2, [](const Pixels& p) {
        return Pair{p[1], p[4 + 2], p[0], p[2]};
    });
}

// --- frames -------------------------------------------------------------------

// clang-format off
void IpFrame_Copy_VUYA8_To_VUY8(void* dst, int dstRowBytes, void* src, int srcRowBytes, int width, int height) {
    CopyFrame(kVuyaToVuy, dst, dstRowBytes, src, srcRowBytes, width, height);
}
void IpFrame_Copy_VUYA8_To_YCbYCr8(void* dst, int dstRowBytes, void* src, int srcRowBytes, int width, int height) {
    CopyFrame(kVuyaToYCbYCr8, dst, dstRowBytes, src, srcRowBytes, width, height);
}

void IpFrame_Copy_YCbYCr8_To_RGBA8(void* dst, int dstRowBytes, void*, int, int width, int height) { OpaqueScratch<kRGBA>({dst, dstRowBytes}, width, height); }
void IpFrame_Copy_CbYCrY8_To_RGBA8(void* dst, int dstRowBytes, void*, int, int width, int height) { OpaqueScratch<kRGBA>({dst, dstRowBytes}, width, height); }
void IpFrame_Copy_YCbCr8_To_ARGB8(void* dst, int dstRowBytes, void*, int, int width, int height)  { OpaqueScratch<kARGB>({dst, dstRowBytes}, width, height); }

// Deliberate: empty. docs/quirks.md, "empty members".
void IpFrame_Copy_YCbYCr8_To_BGRA8(void*, int, void*, int, int, int) {}
void IpFrame_Copy_YCbCr8_To_RGB8(void*, int, void*, int, int, int) {}
void IpFrame_Copy_CbYCrY8_To_RGB8(void*, int, void*, int, int, int) {}
void IpFrame_Copy_BGRA8_To_YCbYCr8(void*, int, void*, int, int, int) {}
void IpFrame_Copy_BGRA8_To_CbYCrY8(void*, int, void*, int, int, int) {}
void IpFrame_Copy_RGB8_To_CbYCrY8(void*, int, void*, int, int, int) {}
void IpFrame_Copy_CbYCrY8_To_BGRA8(void*, int, void*, int, int, int) {}
// clang-format on
