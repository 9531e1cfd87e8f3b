// v210 groups, to and from.

#include "ip/IpCopy.h"
#include "ip/IpFill.h"

#include "ip/detail/CopyVariants.h"
#include "ip/detail/Layouts.h"
#include "ip/detail/Scratch.h"
#include "ip/detail/Units.h"

using namespace zel::ip;

namespace {

constexpr int kPixels = 6;  // of a group

}  // namespace

// --- rows ---------------------------------------------------------------------

void IpScan_Copy_RGB_To_v210_General(void* dst, int, void* src, int, int width, int rIndex,
                                     int gIndex, int bIndex, int srcStep) {
    const auto pack = [=](void* to, void* from) {
        V210Codes group;
        std::array<std::uint32_t, kPixels> cb, cr;
        const auto convert = [&](void* pixel, std::ptrdiff_t i) {
            const auto k = static_cast<std::size_t>(i);
            const auto sample = [=](int index) {
                return static_cast<float>(LoadAt<std::uint8_t>(pixel, index));
            };
            IpRGBToYUV10(&group.y[k], &cb[k], &cr[k], sample(rIndex), sample(gIndex),
                         sample(bIndex), false);
        };
        ForEach(kPixels, convert, Units{from, srcStep}, Numbers{});
        // Deliberate: the three chroma samples are those of pixels 0, 1 and 2, not of
        // 0, 2 and 4. docs/quirks.md, "v210 chroma".
        group.cb = {cb[0], cb[1], cb[2]};
        group.cr = {cr[0], cr[1], cr[2]};
        Store(to, PackV210(group));
    };
    ForEach(width / kPixels, pack, UnitsOf<V210Words>(dst),
            Units{src, std::ptrdiff_t{kPixels} * srcStep});
}

void IpScan_Copy_RGB_To_v210(void* dst, int dstRowBytes, void* src, int srcRowBytes, int width) {
    IpScan_Copy_RGB_To_v210_General(dst, dstRowBytes, src, srcRowBytes, width, kRGB.r, kRGB.g,
                                    kRGB.b, kRGB.elements);
}

void IpScan_Copy_RGBA_To_v210(void* dst, int dstRowBytes, void* src, int srcRowBytes, int width) {
    IpScan_Copy_RGB_To_v210_General(dst, dstRowBytes, src, srcRowBytes, width, kRGBA.r, kRGBA.g,
                                    kRGBA.b, kRGBA.elements);
}

void IpScan_Copy_BGRA_To_v210(void* dst, int dstRowBytes, void* src, int srcRowBytes, int width) {
    IpScan_Copy_RGB_To_v210_General(dst, dstRowBytes, src, srcRowBytes, width, kBGRA.r, kBGRA.g,
                                    kBGRA.b, kBGRA.elements);
}

void IpScan_Copy_v210_To_YCbYCr8(void* dst, int, void* src, int, int width) {
    MapUnits<V210Words>(dst, src, width / kPixels, YCbYCrOfV210);
}

// --- frames -------------------------------------------------------------------

// clang-format off
void IpFrame_Copy_RGB8_To_v210(void* dst, int dstRowBytes, void* src, int srcRowBytes, int width, int height) {
    CopyFrame(kRgbToV210, dst, dstRowBytes, src, srcRowBytes, width, height);
}
void IpFrame_Copy_RGBA8_To_v210(void* dst, int dstRowBytes, void* src, int srcRowBytes, int width, int height) {
    CopyFrame(kRgbaToV210, dst, dstRowBytes, src, srcRowBytes, width, height);
}
void IpFrame_Copy_BGRA8_To_v210(void* dst, int dstRowBytes, void* src, int srcRowBytes, int width, int height) {
    CopyFrame(kBgraToV210, dst, dstRowBytes, src, srcRowBytes, width, height);
}
void IpFrame_Copy_v210_To_YCbYCr8(void* dst, int dstRowBytes, void* src, int srcRowBytes, int width, int height) {
    CopyFrame(kV210ToYCbYCr8, dst, dstRowBytes, src, srcRowBytes, width, height);
}
// clang-format on

// Deliberate: unfinished; the destination is not written.
// docs/quirks.md, "unfinished members".
void IpFrame_Copy_v210_To_BGRA8(void*, int, void* src, int srcRowBytes, int width, int height) {
    const Scratch scratch = NewScratch(width, 2, height);
    if (!scratch) return;
    const Rows scratchRows{scratch.get(), std::ptrdiff_t{width} * 2};
    const int scratchRowBytes = static_cast<int>(scratchRows.step);
    ForEach(
        height,
        [=](void* to, void* from) {
            IpScan_Copy_v210_To_YCbYCr8(to, scratchRowBytes, from, srcRowBytes, width);
        },
        scratchRows, Rows{src, srcRowBytes});
}
