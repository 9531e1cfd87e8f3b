#include "ip/IpPlanar.h"

#include "ip/detail/Units.h"

namespace {

using namespace zel::ip;

/// Rows of a plane with half the height: rows 2k and 2k + 1 of the picture share row k.
struct HalfRows {
    Rows rows;

    std::byte* operator[](std::ptrdiff_t r) const { return rows[r / 2]; }
};

/// Of two pixels' Y, the first in the low byte.
using PackPair = std::uint32_t(std::uint32_t ys, std::uint32_t cb, std::uint32_t cr);

std::uint32_t PackCbYCrY(std::uint32_t ys, std::uint32_t cb, std::uint32_t cr) {
    return cb | (ys << 8 & 0xFF00u) | cr << 16 | (ys << 16 & 0xFF000000u);
}

std::uint32_t PackYCbYCr(std::uint32_t ys, std::uint32_t cb, std::uint32_t cr) {
    return (ys & 0xFFu) | cb << 8 | (ys << 8 & 0xFF0000u) | cr << 24;
}

template <PackPair* Pack>
void PackPlanes(Rows dst, Rows srcY, Rows srcCb, Rows srcCr, int width, int height) {
    const auto packPair = [](void* to, void* ys, void* cb, void* cr) {
        Store(to, Pack(Load<std::uint16_t>(ys), Load<std::uint8_t>(cb), Load<std::uint8_t>(cr)));
    };
    const auto packRow = [=](void* to, void* y, void* cb, void* cr) {
        ForEach(width / 2, packPair, UnitsOf<std::uint32_t>(to), Units{y, 2}, Units{cb, 1},
                Units{cr, 1});
    };
    ForEach(height, packRow, dst, srcY, HalfRows{srcCb}, HalfRows{srcCr});
}

}  // namespace

// clang-format off
void IpPlanar_Copy_420_To_CbYCrY8(void* dst, int dstRowBytes, void* srcY, int srcYRowBytes, void* srcCb, int srcCbRowBytes, void* srcCr, int srcCrRowBytes, int width, int height) {
    PackPlanes<PackCbYCrY>({dst, dstRowBytes}, {srcY, srcYRowBytes}, {srcCb, srcCbRowBytes}, {srcCr, srcCrRowBytes}, width, height);
}
void IpPlanar_Copy_420_To_CbYCrY8_2(void* dst, int dstRowBytes, void* srcY, int srcYRowBytes, void* srcCb, int srcCbRowBytes, void* srcCr, int srcCrRowBytes, int width, int height) {
    PackPlanes<PackCbYCrY>({dst, dstRowBytes}, {srcY, srcYRowBytes}, {srcCb, srcCbRowBytes}, {srcCr, srcCrRowBytes}, width, height);
}
void IpPlanar_Copy_420_To_YCbYCr8(void* dst, int dstRowBytes, void* srcY, int srcYRowBytes, void* srcCb, int srcCbRowBytes, void* srcCr, int srcCrRowBytes, int width, int height) {
    PackPlanes<PackYCbYCr>({dst, dstRowBytes}, {srcY, srcYRowBytes}, {srcCb, srcCbRowBytes}, {srcCr, srcCrRowBytes}, width, height);
}
// clang-format on
