#include "ip/IpPlanar.h"

#include "tests/support/GuardedBuffer.h"
#include "tests/support/Shapes.h"

#include <gtest/gtest.h>

namespace {

using namespace zel::test;

struct Member {
    const char* name;
    decltype(&IpPlanar_Copy_420_To_CbYCrY8) copy;
    const char* order;  // of the bytes of a pair: y and Y its two lumas
};

const Member kMembers[] = {
    {"CbYCrY8", IpPlanar_Copy_420_To_CbYCrY8, "uyvY"},
    {"CbYCrY8_2", IpPlanar_Copy_420_To_CbYCrY8_2, "uyvY"},
    {"YCbYCr8", IpPlanar_Copy_420_To_YCbYCr8, "yuYv"},
};

void RunPlanar(const Member& m, int width, int height, int signs, Place place, Layout layout) {
    const auto pairs = static_cast<std::size_t>(width / 2);
    const int chromaRows = (height + 1) / 2;
    const auto shape = [&](std::size_t bytes, int rows, int bit) {
        return FrameShape{bytes, rows, (signs & bit) != 0, layout.padding, layout.misalignment};
    };
    GuardedFrame dst(shape(pairs * 4, height, 1), place, 1);
    GuardedFrame y(shape(pairs * 2, height, 2), place, 2);
    GuardedFrame cb(shape(pairs, chromaRows, 4), place, 3);
    GuardedFrame cr(shape(pairs, chromaRows, 8), place, 4);
    Bytes expected = dst.content();
    for (int r = 0; r < height; ++r)
        for (std::size_t p = 0; p < pairs; ++p)
            for (std::size_t i = 0; i < 4; ++i) {
                std::uint8_t& byte = expected[dst.Offset(r) + p * 4 + i];
                switch (m.order[i]) {
                    case 'y': byte = y.row(r)[2 * p]; break;
                    case 'Y': byte = y.row(r)[2 * p + 1]; break;
                    case 'u': byte = cb.row(r / 2)[p]; break;
                    case 'v': byte = cr.row(r / 2)[p]; break;
                }
            }
    m.copy(dst.base(), dst.rowBytes(), y.base(), y.rowBytes(), cb.base(), cb.rowBytes(), cr.base(),
           cr.rowBytes(), width, height);
    ASSERT_EQ(dst.Difference(expected), "")
        << m.name << ' ' << width << " x " << height << " signs " << signs;
}

TEST(Planar, EveryShape) {
    for (const Member& m : kMembers)
        for (const int width : Widths())
            for (int height = 0; height <= kMaxHeight; ++height)
                for (int signs = 0; signs < 16; ++signs) {
                    for (const Layout layout : kLayouts)
                        RunPlanar(m, width, height, signs, Place::guarded, layout);
                    RunPlanar(m, width, height, signs, Place::atFront, kLayouts[0]);
                    RunPlanar(m, width, height, signs, Place::atBack, kLayouts[0]);
                    if (HasFatalFailure()) return;
                }
}

TEST(Planar, RowsShareChroma) {
    Bytes y{10, 11, 12, 20, 21, 22, 30, 31, 32}, cb{1, 2}, cr{5, 6}, dst(12, 0xEE);
    IpPlanar_Copy_420_To_CbYCrY8_2(dst.data(), 4, y.data(), 3, cb.data(), 1, cr.data(), 1, 3, 3);
    EXPECT_EQ(dst, (Bytes{1, 10, 5, 11, 1, 20, 5, 21, 2, 30, 6, 31}));
    IpPlanar_Copy_420_To_YCbYCr8(dst.data(), 4, y.data(), 3, cb.data(), 1, cr.data(), 1, 3, 3);
    EXPECT_EQ(dst, (Bytes{10, 1, 11, 5, 20, 1, 21, 5, 30, 2, 31, 6}));
}

TEST(Planar, NegativeExtentsWriteNothing) {
    for (const Member& m : kMembers) {
        Bytes dst(16, 0xEE), src(16);
        for (const auto& [width, height] : {std::pair{-4, 2}, {4, -2}, {1, 4}, {0, 4}, {4, 0}})
            m.copy(dst.data(), 4, src.data(), 4, src.data(), 4, src.data(), 4, width, height);
        EXPECT_EQ(dst, Bytes(16, 0xEE)) << m.name;
    }
}

}  // namespace
