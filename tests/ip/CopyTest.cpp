#include "ip/IpCopy.h"

#include "ip/IpTables.h"
#include "tests/ip/CopyMembers.h"
#include "tests/support/Shapes.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

using namespace zel::test;

Bytes Scan(IpScanCopyFn* scan, Bytes src, std::size_t dstBytes, int width) {
    Bytes dst(dstBytes, 0xEE);
    scan(dst.data(), static_cast<int>(dstBytes), src.data(), static_cast<int>(src.size()), width);
    return dst;
}

// --- stated values --------------------------------------------------------------

TEST(Copy, StatedWords) {
    const Bytes white(4, 255);
    const struct {
        const char* name;
        IpScanCopyFn* scan;
        Bytes src;
        std::uint32_t word;
    } cases[] = {
        {"RGB8 white: bits 30 and 31 set", IpScan_Copy_RGB8_To_RGB10, {255, 255, 255}, 0xFFCFF3FC},
        {"RGB8 black: bits 30 and 31 set", IpScan_Copy_RGB8_To_RGB10, {0, 0, 0}, 0xC0000000},
        {"BGRA8 white: blue at bit 24", IpScan_Copy_BGRA_To_RGB10, white, 0xFF0FF3FC},
        {"BGRA8 blue", IpScan_Copy_BGRA_To_RGB10, {1, 0, 0, 9}, 0x01000000},
        {"BGRA8 red", IpScan_Copy_BGRA_To_RGB10, {0, 0, 255, 9}, 0x000003FC},
        {"16-bit white", IpScan_Copy_RGB16LE_To_RGB10, Bytes(6, 255), 0x3FFFFFFF},
        {"16-bit low bits go",
         IpScan_Copy_RGB16LE_To_RGB10,
         {0x3F, 0, 0x40, 0, 0x7F, 1},
         0u + (1u << 10) + (5u << 20)},
        {"DPX white", IpScan_Copy_DpxLE_To_BGRA8, {0xF0, 0xFF, 0xFF, 0xFF}, 0xFFFFFFFF},
        {"DPX white, big-endian", IpScan_Copy_DpxBE_To_BGRA8, {0xFF, 0xFF, 0xFF, 0xF0}, 0xFFFFFFFF},
        {"DPX black is opaque", IpScan_Copy_DpxLE_To_BGRA8, {0, 0, 0, 0}, 0xFF000000},
        {"DPX low bits of red go", IpScan_Copy_DpxLE_To_BGRA8, {0, 0, 0xC0, 0x80}, 0xFF800000},
        {"RGB10 white", IpScan_Copy_RGB10_To_BGRA8, BytesOf(0x3FFFFFFF, 4), 0xFFFFFFFF},
        {"RGB10 top bits are ignored", IpScan_Copy_RGB10_To_BGRA8, BytesOf(0xC0000000, 4),
         0xFF000000},
        {"bytes reversed", IpScan_Copy_Endian32, BytesOf(0x11223344, 4), 0x44332211},
    };
    for (const auto& c : cases) EXPECT_EQ(Scan(c.scan, c.src, 4, 1), BytesOf(c.word, 4)) << c.name;
}

TEST(Copy, V210RowOfElevenConvertsOneGroup) {
    Bytes src(11 * 4, 0);
    for (IpScanCopyFn* scan :
         {IpScan_Copy_BGRA_To_v210, IpScan_Copy_RGBA_To_v210, IpScan_Copy_RGB_To_v210}) {
        const Bytes dst = Scan(scan, src, 32, 11);
        const Bytes black = BytesOf(0x1FF001FF, 4) + BytesOf(0x0007FC00, 4);
        EXPECT_EQ(dst, black + black + Bytes(16, 0xEE));
    }
    EXPECT_EQ(Scan(IpScan_Copy_v210_To_YCbYCr8, Bytes(32, 0xFF), 24, 11),
              Bytes(12, 0xFF) + Bytes(12, 0xEE));
}

// Pixels 0, 1 and 2 are red, the others green: all chroma is that of red.
TEST(Copy, V210Chroma) {
    Bytes src;
    for (int k = 0; k < 6; ++k) src = src + (k < 3 ? Bytes{255, 0, 0} : Bytes{0, 255, 0});
    const Bytes group = Scan(IpScan_Copy_RGB_To_v210, src, 16, 6);
    const Ycc red = SlowYuv10(255, 0, 0, false);
    EXPECT_EQ(Field(WordOf(&group[0]), 0, 10), red[1]);
    EXPECT_EQ(Field(WordOf(&group[4]), 10, 10), red[1]);
    EXPECT_EQ(Field(WordOf(&group[8]), 20, 10), red[1]) << "the third pair's Cb";
    EXPECT_EQ(Field(WordOf(&group[12]), 10, 10), red[2]) << "the third pair's Cr";
    EXPECT_EQ(Field(WordOf(&group[12]), 20, 10), SlowYuv10(0, 255, 0, false)[0]);
}

// Blue lands two bits above its field: bits 22 and 23 stay empty.
TEST(Copy, Rgb10Blue) {
    for (unsigned blue = 0; blue < 256; ++blue)
        EXPECT_EQ(Scan(IpScan_Copy_BGRA_To_RGB10, {static_cast<std::uint8_t>(blue), 0, 0, 0}, 4, 1),
                  BytesOf(std::uint64_t{16777216} * blue, 4));
}

TEST(Copy, Rgb10TopBits) {
    for (unsigned blue = 0; blue < 256; ++blue) {
        const Bytes word =
            Scan(IpScan_Copy_RGB8_To_RGB10, {0, 0, static_cast<std::uint8_t>(blue)}, 4, 1);
        EXPECT_EQ(Field(WordOf(word.data()), 30, 2), 3u) << blue;
        EXPECT_EQ(Field(WordOf(word.data()), 20, 10), blue * 4) << blue;
    }
}

TEST(Copy, Vuy8) {
    EXPECT_EQ(Scan(IpScan_Copy_VUYA8_To_VUY8, {1, 2, 3, 4, 5, 6, 7, 8}, 8, 2),
              (Bytes{1, 4, 4, 3, 5, 8, 8, 7}));
}

TEST(Copy, Vuya8Pair) {
    EXPECT_EQ(Scan(IpScan_Copy_VUYA8_To_YCbYCr8, {1, 2, 3, 4, 5, 6, 7, 8}, 8, 3),
              (Bytes{2, 7, 1, 3, 0xEE, 0xEE, 0xEE, 0xEE}))
        << "U0 Y1 V0 Y0, and nothing for an odd pixel";
}

// --- the General routines -------------------------------------------------------

TEST(Copy, GeneralReordersAnyBytes) {
    const Bytes src{1, 2, 3, 4, 5, 6, 7, 8, 9, 10};
    const struct {
        const char* name;
        int d[4], dstStep, s[4], srcStep;
        Bytes dst;
    } cases[] = {
        {"with alpha", {3, 2, 1, 0}, 4, {0, 1, 2, 3}, 4, {4, 3, 2, 1, 8, 7, 6, 5}},
        {"no alpha in the destination",
         {0, 1, 2, -1},
         4,
         {0, 1, 2, 3},
         4,
         {1, 2, 3, 0xEE, 5, 6, 7, 0xEE}},
        {"no alpha in the source",
         {0, 1, 2, 3},
         4,
         {2, 1, 0, -1},
         3,
         {3, 2, 1, 0xEE, 6, 5, 4, 0xEE}},
        {"wide steps", {0, 1, 2, 3}, 5, {1, 1, 1, 0}, 6, {2, 2, 2, 1, 0xEE, 8, 8, 8, 7}},
        {"the last store to a byte stays", {0, 0, 0, 1}, 2, {0, 1, 2, 3}, 4, {3, 4, 7, 8}},
    };
    for (const auto& c : cases) {
        Bytes in = src, out(c.dst.size(), 0xEE);
        IpScan_Copy_RGBA_To_RGBA_General(out.data(), c.d[0], c.d[1], c.d[2], c.d[3], c.dstStep,
                                         in.data(), c.s[0], c.s[1], c.s[2], c.s[3], c.srcStep, 2);
        EXPECT_EQ(out, c.dst) << c.name;
    }
}

/// The packing Generals with indices and steps that no member uses.
TEST(Copy, GeneralsTakeAnyIndexAndStep) {
    Bytes src(8 * 7);
    for (std::size_t i = 0; i < src.size(); ++i) src[i] = static_cast<std::uint8_t>(i * 37 + 11);
    for (int step : {1, 3, 4, 7})
        for (int r = 0; r < 3; ++r)
            for (int g = 0; g < 3; ++g)
                for (int b = 0; b < 3; ++b) {
                    Bytes rgb10(8), le(8), be(8), v210(16);
                    const auto at = [&](int pixel, int index) {
                        return src[static_cast<std::size_t>(pixel * step + index)];
                    };
                    IpScan_Copy_RGBA_To_RGB10_General(rgb10.data(), 8, src.data(), 0, 2, r, g, b,
                                                      step);
                    IpScan_Copy_RGBA_To_Dpx_General(le.data(), 8, src.data(), 0, 2, r, g, b, step,
                                                    false);
                    IpScan_Copy_RGBA_To_Dpx_General(be.data(), 8, src.data(), 0, 2, r, g, b, step,
                                                    true);
                    IpScan_Copy_RGB_To_v210_General(v210.data(), 16, src.data(), 0, 7, r, g, b,
                                                    step);
                    Bytes slow10, slowLe, slowBe;
                    std::array<std::array<std::uint8_t, 3>, 6> six;
                    for (int p = 0; p < 6; ++p)
                        six[static_cast<std::size_t>(p)] = {at(p, r), at(p, g), at(p, b)};
                    for (int p = 0; p < 2; ++p) {
                        slow10 = slow10 + slow::Rgb10(at(p, r), at(p, g), at(p, b), 1 << 24);
                        slowLe = slowLe + slow::Dpx(at(p, r), at(p, g), at(p, b));
                        slowBe = slowBe + Reversed(slow::Dpx(at(p, r), at(p, g), at(p, b)));
                    }
                    ASSERT_EQ(rgb10, slow10) << step << r << g << b;
                    ASSERT_EQ(le, slowLe) << step << r << g << b;
                    ASSERT_EQ(be, slowBe) << step << r << g << b;
                    ASSERT_EQ(v210, SlowV210(six)) << step << r << g << b;
                }
}

// --- rows -----------------------------------------------------------------------

TEST(Copy, CopiesTheSmallerRow) {
    Bytes src(3000 * 2), dst(4000 * 2, 0xEE);
    for (std::size_t i = 0; i < src.size(); ++i) src[i] = static_cast<std::uint8_t>(i * 7 / 3);
    for (const int width : {0, 1, 100000}) {
        std::ranges::fill(dst, 0xEE);
        IpFrame_Copy(dst.data(), 4000, src.data(), 3000, width, 2);
        for (std::size_t i = 0; i < dst.size(); ++i)
            ASSERT_EQ(dst[i], i % 4000 < 3000 ? src[i / 4000 * 3000 + i % 4000] : 0xEE) << i;
    }
}

TEST(Copy, OneNegativeStrideTurnsThePictureOver) {
    Bytes src(3000 * 3), dst(3000 * 3);
    for (std::size_t i = 0; i < src.size(); ++i) src[i] = static_cast<std::uint8_t>(i / 3000 + 1);
    IpFrame_Copy(dst.data(), 3000, src.data() + 6000, -3000, 750, 3);
    for (std::size_t i = 0; i < dst.size(); ++i) ASSERT_EQ(dst[i], i / 3000 + 1) << i;
    // Row 0 of the source is its highest in memory, row 0 of the destination the lowest.
    IpFrame_Copy(dst.data() + 6000, -3000, src.data(), 3000, 750, 3);
    for (std::size_t i = 0; i < dst.size(); ++i) ASSERT_EQ(dst[i], i / 3000 + 1) << i;
}

TEST(Copy, MasterHandsOutPositiveRowBytes) {
    struct Call {
        void* dst;
        int dstRowBytes;
        void* src;
        int srcRowBytes, width;
    };
    static std::vector<Call> calls;
    calls.clear();
    IpScanCopyFn* const record = [](void* dst, int dstRow, void* src, int srcRow, int width) {
        calls.push_back({dst, dstRow, src, srcRow, width});
    };
    std::uint8_t memory[100];
    IpFrame_Copy_Master(record, memory + 40, -20, memory + 50, 7, 9, 3);
    ASSERT_EQ(calls.size(), 3u);
    for (std::size_t r = 0; r < 3; ++r) {
        EXPECT_EQ(calls[r].dst, memory + 20 * r);
        EXPECT_EQ(calls[r].dstRowBytes, 20);
        EXPECT_EQ(calls[r].src, memory + 50 + 7 * r);
        EXPECT_EQ(calls[r].srcRowBytes, 7);
        EXPECT_EQ(calls[r].width, 9);
    }
}

// The members with rows of their own never turn a picture over.
TEST(Copy, SignedRows) {
    Bytes src{1, 2, 3, 4, 5, 6}, dst(8);
    IpFrame_Copy_RGB8_To_RGBA8(dst.data() + 4, -4, src.data(), 3, 1, 2);
    EXPECT_EQ(dst, (Bytes{4, 5, 6, 255, 1, 2, 3, 255}));
    IpFrame_Copy_RGB8_To_ARGB8(dst.data(), 4, src.data() + 3, -3, 1, 2);
    EXPECT_EQ(dst, (Bytes{255, 4, 5, 6, 255, 1, 2, 3}));
    IpFrame_Copy_RGB8_To_BGRA8(dst.data() + 4, -4, src.data(), 3, 1, 2);
    EXPECT_EQ(dst, (Bytes{3, 2, 1, 255, 6, 5, 4, 255})) << "the walk of the family does";
}

TEST(Copy, Flip) {
    for (std::size_t rowBytes = 0; rowBytes <= 37; ++rowBytes)
        for (int height = 0; height <= 7; ++height)
            for (const Place place : {Place::guarded, Place::atFront, Place::atBack}) {
                GuardedFrame frame({rowBytes, height, false, 0, 1}, place, 6);
                Bytes expected = frame.content();
                const std::size_t moved = rowBytes - rowBytes % 4;
                for (int r = 0; r < height; ++r) {
                    const Bytes mirror = frame.content();
                    for (std::size_t i = 0; i < moved; ++i)
                        expected[frame.Offset(r) + i] = mirror[frame.Offset(height - 1 - r) + i];
                }
                IpFrame_Flip(frame.base(), frame.rowBytes(), height);
                ASSERT_EQ(frame.Difference(expected), "") << rowBytes << " x " << height;
            }
}

TEST(Copy, FlipWithNegativeRowBytesOrHeightDoesNothing) {
    GuardedFrame frame({16, 4, true}, Place::guarded, 7);
    const Bytes before = frame.content();
    IpFrame_Flip(frame.base(), frame.rowBytes(), 4);
    EXPECT_EQ(frame.Difference(before), "");
    IpFrame_Flip(frame.base(), 16, -4);
    EXPECT_EQ(frame.Difference(before), "");
}

// --- empty members --------------------------------------------------------------

TEST(Copy, EmptyMembers) {
    const FrameCopyFn copies[] = {
        IpFrame_Copy_YCbYCr8_To_BGRA8, IpFrame_Copy_YCbCr8_To_RGB8,   IpFrame_Copy_CbYCrY8_To_RGB8,
        IpFrame_Copy_BGRA8_To_YCbYCr8, IpFrame_Copy_BGRA8_To_CbYCrY8, IpFrame_Copy_RGB8_To_CbYCrY8,
        IpFrame_Copy_CbYCrY8_To_BGRA8,
    };
    const decltype(&IpFrame_Swap_ARGB8_To_BGRA8) swaps[] = {
        IpFrame_Swap_ARGB8_To_BGRA8, IpFrame_Swap_ABGR8_To_BGRA8, IpFrame_Swap_RGBA8_To_BGRA8,
        IpFrame_Swap_BGR8_To_RGB8,   IpFrame_Swap_ARGB8_To_ABGR8,
    };
    GuardedFrame dst({64, 3}, Place::guarded, 8), src({64, 3}, Place::guarded, 9);
    const Bytes dstBefore = dst.content(), srcBefore = src.content();
    for (const FrameCopyFn copy : copies) {
        copy(dst.base(), 64, src.base(), 64, 12, 3);
        EXPECT_EQ(dst.Difference(dstBefore), "");
        EXPECT_EQ(src.Difference(srcBefore), "");
        copy(nullptr, 64, nullptr, 64, 12, 3);
    }
    for (const auto swap : swaps) {
        swap(dst.base(), 64, 12, 3);
        EXPECT_EQ(dst.Difference(dstBefore), "");
        swap(nullptr, 64, 12, 3);
    }
}

}  // namespace
