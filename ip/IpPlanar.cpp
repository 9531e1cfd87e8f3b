#include "ip/IpPlanar.h"

#include "ip/detail/Layouts.h"
#include "ip/detail/Units.h"

namespace {

using namespace zel::ip;

/// Rows of a plane with half the height: rows 2k and 2k + 1 of the picture share row k.
struct HalfRows {
    Rows rows;

    std::byte* operator[](std::ptrdiff_t r) const { return rows[r / 2]; }
};

using Pair = std::array<std::uint8_t, 4>;
using PackPair = Pair(std::uint8_t y0, std::uint8_t y1, std::uint8_t cb, std::uint8_t cr);

Pair PackCbYCrY(std::uint8_t y0, std::uint8_t y1, std::uint8_t cb, std::uint8_t cr) {
    return {cb, y0, cr, y1};
}

Pair PackYCbYCr(std::uint8_t y0, std::uint8_t y1, std::uint8_t cb, std::uint8_t cr) {
    return {y0, cb, y1, cr};
}

template <PackPair* Pack>
void PackPlanes(Rows dst, Rows srcY, Rows srcCb, Rows srcCr, int width, int height) {
    const auto packPair = [](void* to, void* y, void* cb, void* cr) {
        Store(to, Pack(LoadAt<std::uint8_t>(y, 0), LoadAt<std::uint8_t>(y, 1),
                       Load<std::uint8_t>(cb), Load<std::uint8_t>(cr)));
    };
    const auto packRow = [=](void* to, void* y, void* cb, void* cr) {
        ForEach(width / 2, packPair, UnitsOf<Pair>(to), Units{y, 2}, Units{cb, 1}, Units{cr, 1});
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
