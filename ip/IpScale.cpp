#include "ip/IpScale.h"

#include "ip/detail/CopyVariants.h"
#include "ip/detail/Memory.h"
#include "ip/detail/Rows.h"
#include "ip/detail/Variants.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <span>

namespace {

using namespace zel::ip;

struct Frame {
    void* base;
    int rowBytes, width, height;
};

/// Index of the nearest source row or column, truncated: index x src / dst, for the indices
/// from 0 on in turn. The remainder is carried along, which spares a division each.
class Nearest {
public:
    Nearest(int src, int dst) : m_whole(src / dst), m_part(src % dst), m_extent(dst) {}

    std::ptrdiff_t Next() {
        const std::ptrdiff_t index = m_index;
        m_index += m_whole;
        m_rest += m_part;
        if (m_rest >= m_extent) {
            m_rest -= m_extent;
            ++m_index;
        }
        return index;
    }

private:
    std::ptrdiff_t m_whole, m_index = 0;
    std::int64_t m_part, m_rest = 0, m_extent;
};

/// Four-byte pixels, picked in chunks and converted like any row.
void ScaleNearest(const CopyFamily& family, const Frame& dst, const Frame& src) {
    if (src.width <= 0 || src.height <= 0 || dst.width <= 0 || dst.height <= 0) return;
    constexpr int kChunk = 256;
    std::array<std::uint32_t, kChunk> picked;
    IpScanCopyFn* const convert = Pick(family.variants).row;
    const Rows from = Upwards({src.base, src.rowBytes}, src.height);
    Nearest rows(src.height, dst.height);
    const auto scaleRow = [&](void* toRow) {
        std::byte* const fromRow = from[rows.Next()];
        Nearest columns(src.width, dst.width);
        for (int x = 0; x < dst.width; x += kChunk) {
            const int count = std::min(kChunk, dst.width - x);
            for (std::uint32_t& pixel : std::span(picked).first(static_cast<std::size_t>(count)))
                pixel = LoadAt<std::uint32_t>(fromRow, columns.Next());
            convert(At<std::uint32_t>(toRow, x), 4 * count, picked.data(), 4 * count, count);
        }
    };
    ForEach(dst.height, scaleRow, Upwards({dst.base, dst.rowBytes}, dst.height));
}

}  // namespace

// clang-format off
void IpFrame_Scale_RGB10_To_BGRA8(void* dst, int dstRowBytes, int dstWidth, int dstHeight, void* src, int srcRowBytes, int srcWidth, int srcHeight) {
    ScaleNearest(kRGB10ToBgra, {dst, dstRowBytes, dstWidth, dstHeight}, {src, srcRowBytes, srcWidth, srcHeight});
}
void IpFrame_Scale_DpxBE_To_BGRA8(void* dst, int dstRowBytes, int dstWidth, int dstHeight, void* src, int srcRowBytes, int srcWidth, int srcHeight) {
    ScaleNearest(kDpxBEToBgra, {dst, dstRowBytes, dstWidth, dstHeight}, {src, srcRowBytes, srcWidth, srcHeight});
}
void IpFrame_Scale_DpxLE_To_BGRA8(void* dst, int dstRowBytes, int dstWidth, int dstHeight, void* src, int srcRowBytes, int srcWidth, int srcHeight) {
    ScaleNearest(kDpxLEToBgra, {dst, dstRowBytes, dstWidth, dstHeight}, {src, srcRowBytes, srcWidth, srcHeight});
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
