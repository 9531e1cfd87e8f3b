// Between the 8-bit RGB orders, and from them to 16 bits.

#include "ip/IpCopy.h"

#include "ip/detail/CopyVariants.h"
#include "ip/detail/Memory.h"
#include "ip/detail/OpaqueRGB.h"
#include "ip/detail/Units.h"
#include "ip/detail/Variants.h"

#include <array>

namespace {

using namespace zel::ip;

/// A row from one order into another; alpha goes along where both have it.
template <Order To, Order From>
void Reorder(void* dst, void* src, int width) {
    IpScan_Copy_RGBA_To_RGBA_General(dst, To.r, To.g, To.b, To.a, To.elements, src, From.r, From.g,
                                     From.b, From.a, From.elements, width);
}

}  // namespace

// --- rows ---------------------------------------------------------------------

void IpScan_Copy_RGBA_To_RGBA_General(void* dst, int d0, int d1, int d2, int d3, int dstStep,
                                      void* src, int s0, int s1, int s2, int s3, int srcStep,
                                      int width) {
    const auto copy = [=](std::byte* to, const std::byte* from) {
        to[d0] = from[s0];
        to[d1] = from[s1];
        to[d2] = from[s2];
        if (d3 != -1 && s3 != -1) to[d3] = from[s3];
    };
    ForEach(width, copy, Units{dst, dstStep}, Units{src, srcStep});
}

// clang-format off
void IpScan_Copy_BGRA_To_RGB(void* dst, int, void* src, int, int width)      { Reorder<kRGB,  kBGRA>(dst, src, width); }
void IpScan_Copy_BGRA_To_BGR(void* dst, int, void* src, int, int width)      { Reorder<kBGR,  kBGRA>(dst, src, width); }
void IpScan_Copy_BGRA_To_ARGB(void* dst, int, void* src, int, int width)     { Reorder<kARGB, kBGRA>(dst, src, width); }
void IpScan_Copy_BGRA_To_ABGR(void* dst, int, void* src, int, int width)     { Reorder<kABGR, kBGRA>(dst, src, width); }
void IpScan_Copy_BGRA_To_RGBA(void* dst, int, void* src, int, int width)     { Reorder<kRGBA, kBGRA>(dst, src, width); }
void IpScan_Copy_RGBA8_To_BGRA8(void* dst, int, void* src, int, int width)   { Reorder<kBGRA, kRGBA>(dst, src, width); }
void IpScan_Copy_RGB_To_BGRA8(void* dst, int, void* src, int, int width)     { OpaqueRow<kBGRA>(dst, src, width); }
// clang-format on

void IpScan_Copy_BGRA_To_RGB16(void* dst, int, void* src, int, int width) {
    // Times 256 with its bytes swapped, a sample is the sample itself again.
    MapUnits<std::array<std::uint8_t, 4>>(dst, src, width, [](const auto& bgra) {
        return std::array<std::uint16_t, 3>{bgra[kBGRA.r], bgra[kBGRA.g], bgra[kBGRA.b]};
    });
}

// --- frames -------------------------------------------------------------------

// clang-format off
void IpFrame_Copy_BGRA8_To_RGB8(void* dst, int dstRowBytes, void* src, int srcRowBytes, int width, int height) {
    CopyFrame(kBgraToRgb, dst, dstRowBytes, src, srcRowBytes, width, height);
}
void IpFrame_Copy_BGRA8_To_BGR8(void* dst, int dstRowBytes, void* src, int srcRowBytes, int width, int height) {
    CopyFrame(kBgraToBgr, dst, dstRowBytes, src, srcRowBytes, width, height);
}
void IpFrame_Copy_BGRA8_To_ARGB8(void* dst, int dstRowBytes, void* src, int srcRowBytes, int width, int height) {
    CopyFrame(kBgraToArgb, dst, dstRowBytes, src, srcRowBytes, width, height);
}
void IpFrame_Copy_BGRA8_To_ABGR8(void* dst, int dstRowBytes, void* src, int srcRowBytes, int width, int height) {
    CopyFrame(kBgraToAbgr, dst, dstRowBytes, src, srcRowBytes, width, height);
}
void IpFrame_Copy_BGRA8_To_RGBA8(void* dst, int dstRowBytes, void* src, int srcRowBytes, int width, int height) {
    CopyFrame(kBgraToRgba, dst, dstRowBytes, src, srcRowBytes, width, height);
}
void IpFrame_Copy_RGBA8_To_BGRA8(void* dst, int dstRowBytes, void* src, int srcRowBytes, int width, int height) {
    CopyFrame(kRgbaToBgra, dst, dstRowBytes, src, srcRowBytes, width, height);
}
void IpFrame_Copy_RGB8_To_BGRA8(void* dst, int dstRowBytes, void* src, int srcRowBytes, int width, int height) {
    CopyFrame(kRgbToBgra, dst, dstRowBytes, src, srcRowBytes, width, height);
}
void IpFrame_Copy_BGRA8_To_RGB16(void* dst, int dstRowBytes, void* src, int srcRowBytes, int width, int height) {
    CopyFrame(kBgraToRgb16, dst, dstRowBytes, src, srcRowBytes, width, height);
}

// Deliberate: rows go by their signed byte counts. docs/quirks.md, "signed rows".
void IpFrame_Copy_RGB8_To_RGBA8(void* dst, int dstRowBytes, void* src, int srcRowBytes, int width, int height) {
    CopyRows(kRgbToRgba, Pick(kRgbToRgba.variants), {dst, dstRowBytes}, {src, srcRowBytes}, width, height);
}
void IpFrame_Copy_RGB8_To_ARGB8(void* dst, int dstRowBytes, void* src, int srcRowBytes, int width, int height) {
    CopyRows(kRgbToArgb, Pick(kRgbToArgb.variants), {dst, dstRowBytes}, {src, srcRowBytes}, width, height);
}

// Deliberate: empty. docs/quirks.md, "empty members".
void IpFrame_Swap_ARGB8_To_BGRA8(void*, int, int, int) {}
void IpFrame_Swap_ABGR8_To_BGRA8(void*, int, int, int) {}
void IpFrame_Swap_RGBA8_To_BGRA8(void*, int, int, int) {}
void IpFrame_Swap_BGR8_To_RGB8(void*, int, int, int) {}
void IpFrame_Swap_ARGB8_To_ABGR8(void*, int, int, int) {}
// clang-format on
