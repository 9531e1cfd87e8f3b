#include "ip/IpScale.h"

#include "ip/IpCopy.h"
#include "ip/detail/Rows.h"

#include <cstdint>

namespace {

using namespace zel::ip;

struct Frame {
    void* base;
    int rowBytes, width, height;
};

/// Index of the nearest source row or column, truncated.
std::ptrdiff_t Nearest(std::ptrdiff_t index, int srcExtent, int dstExtent) {
    return static_cast<std::ptrdiff_t>(std::int64_t{index} * srcExtent / dstExtent);
}

/// Four-byte pixels, each converted by the scan copy as a row of one.
void ScaleNearest(IpScanCopyFn* scanFn, const Frame& dst, const Frame& src) {
    if (src.width <= 0 || src.height <= 0) return;
    const Rows from = Upwards({src.base, src.rowBytes}, src.height);
    const auto scaleRow = [&](void* toRow, std::ptrdiff_t r) {
        const Units pixels{from[Nearest(r, src.height, dst.height)], 4};
        const auto scalePixel = [&](void* to, std::ptrdiff_t c) {
            scanFn(to, 4, pixels[Nearest(c, src.width, dst.width)], 4, 1);
        };
        ForEach(dst.width, scalePixel, Units{toRow, 4}, Numbers{});
    };
    ForEach(dst.height, scaleRow, Upwards({dst.base, dst.rowBytes}, dst.height), Numbers{});
}

}  // namespace

// clang-format off
void IpFrame_Scale_RGB10_To_BGRA8(void* dst, int dstRowBytes, int dstWidth, int dstHeight, void* src, int srcRowBytes, int srcWidth, int srcHeight) {
    ScaleNearest(IpScan_Copy_RGB10_To_BGRA8, {dst, dstRowBytes, dstWidth, dstHeight}, {src, srcRowBytes, srcWidth, srcHeight});
}
void IpFrame_Scale_DpxBE_To_BGRA8(void* dst, int dstRowBytes, int dstWidth, int dstHeight, void* src, int srcRowBytes, int srcWidth, int srcHeight) {
    ScaleNearest(IpScan_Copy_DpxBE_To_BGRA8, {dst, dstRowBytes, dstWidth, dstHeight}, {src, srcRowBytes, srcWidth, srcHeight});
}
void IpFrame_Scale_DpxLE_To_BGRA8(void* dst, int dstRowBytes, int dstWidth, int dstHeight, void* src, int srcRowBytes, int srcWidth, int srcHeight) {
    ScaleNearest(IpScan_Copy_DpxLE_To_BGRA8, {dst, dstRowBytes, dstWidth, dstHeight}, {src, srcRowBytes, srcWidth, srcHeight});
}

// Deliberate: empty. docs/quirks.md, "empty members".
void IpFrame_Scale_YCbYCr8_To_BGRA8(void*, int, int, int, void*, int, int, int) {}
void IpFrame_Scale_CbYCrY8_To_BGRA8(void*, int, int, int, void*, int, int, int) {}
void IpFrame_Scale_v210_To_BGRA8(void*, int, int, int, void*, int, int, int) {}
void IpFrame_Scale_8888_To_8888Master(void*, int, int, int, void*, int, int, int) {}
void IpFrame_Scale_RGB8_To_RGB8(void*, int, int, int, void*, int, int, int) {}
void IpFrame_Scale_YCbCr8_To_YCbCr8(void*, int, int, int, void*, int, int, int) {}
void IpFrame_Scale_RGBA8_To_RGBA8(void*, int, int, int, void*, int, int, int) {}
void IpFrame_Scale_BGRA8_To_BGRA8(void*, int, int, int, void*, int, int, int) {}
void IpFrame_Scale_BGRX8_To_BGRX8(void*, int, int, int, void*, int, int, int) {}
void IpFrame_Resize_BGRA8_To_BGRA8(void*, int, int, int, void*, int, int, int) {}
// clang-format on
