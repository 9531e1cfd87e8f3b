// DPX words in both byte orders, to and from.

#include "ip/IpCopy.h"

#include "ip/detail/CopyVariants.h"
#include "ip/detail/Layouts.h"
#include "ip/detail/Units.h"

using namespace zel::ip;

// --- rows ---------------------------------------------------------------------

void IpScan_Copy_RGBA_To_Dpx_General(void* dst, int, void* src, int, int width, int rIndex,
                                     int gIndex, int bIndex, int srcStep, bool bigEndian) {
    const auto pack = [=](void* to, void* from) {
        const auto sample = [=](int i) { return LoadAt<std::uint8_t>(from, i); };
        const std::uint32_t word = PackDpx(sample(rIndex), sample(gIndex), sample(bIndex));
        Store(to, bigEndian ? ByteReversed(word) : word);
    };
    ForEach(width, pack, UnitsOf<std::uint32_t>(dst), Units{src, srcStep});
}

void IpScan_Copy_BGRA_To_DpxLE(void* dst, int dstRowBytes, void* src, int srcRowBytes, int width) {
    IpScan_Copy_RGBA_To_Dpx_General(dst, dstRowBytes, src, srcRowBytes, width, kBGRA.r, kBGRA.g,
                                    kBGRA.b, kBGRA.elements, false);
}

void IpScan_Copy_BGRA_To_DpxBE(void* dst, int dstRowBytes, void* src, int srcRowBytes, int width) {
    IpScan_Copy_RGBA_To_Dpx_General(dst, dstRowBytes, src, srcRowBytes, width, kBGRA.r, kBGRA.g,
                                    kBGRA.b, kBGRA.elements, true);
}

void IpScan_Copy_DpxLE_To_BGRA8(void* dst, int, void* src, int, int width) {
    MapUnits<std::uint32_t>(dst, src, width, BgraOfDpx);
}

void IpScan_Copy_DpxBE_To_BGRA8(void* dst, int, void* src, int, int width) {
    MapUnits<std::uint32_t>(dst, src, width,
                            [](std::uint32_t word) { return BgraOfDpx(ByteReversed(word)); });
}

// --- frames -------------------------------------------------------------------

// clang-format off
void IpFrame_Copy_BGRA8_To_DpxLE(void* dst, int dstRowBytes, void* src, int srcRowBytes, int width, int height) {
    CopyFrame(kBgraToDpxLE, dst, dstRowBytes, src, srcRowBytes, width, height);
}
void IpFrame_Copy_BGRA8_To_DpxBE(void* dst, int dstRowBytes, void* src, int srcRowBytes, int width, int height) {
    CopyFrame(kBgraToDpxBE, dst, dstRowBytes, src, srcRowBytes, width, height);
}
void IpFrame_Copy_DpxLE_To_BGRA8(void* dst, int dstRowBytes, void* src, int srcRowBytes, int width, int height) {
    CopyFrame(kDpxLEToBgra, dst, dstRowBytes, src, srcRowBytes, width, height);
}
void IpFrame_Copy_DpxBE_To_BGRA8(void* dst, int dstRowBytes, void* src, int srcRowBytes, int width, int height) {
    CopyFrame(kDpxBEToBgra, dst, dstRowBytes, src, srcRowBytes, width, height);
}
// clang-format on
