#include "ip/IpScale.h"

#include "ip/IpCopy.h"
#include "tests/ip/CopyMembers.h"
#include "tests/support/Shapes.h"

#include <gtest/gtest.h>

namespace {

using namespace zel::test;

using ScaleFn = decltype(&IpFrame_Scale_RGB10_To_BGRA8);

struct Member {
    const char* name;
    ScaleFn scale;
    FrameCopyFn copy;
    Bytes (*pixel)(const std::uint8_t*);
};

const Member kNearest[] = {
    {"RGB10", IpFrame_Scale_RGB10_To_BGRA8, IpFrame_Copy_RGB10_To_BGRA8,
     [](const std::uint8_t* s) { return slow::FromRgb10(WordOf(s)); }},
    {"DpxLE", IpFrame_Scale_DpxLE_To_BGRA8, IpFrame_Copy_DpxLE_To_BGRA8,
     [](const std::uint8_t* s) { return slow::FromDpx(WordOf(s)); }},
    {"DpxBE", IpFrame_Scale_DpxBE_To_BGRA8, IpFrame_Copy_DpxBE_To_BGRA8,
     [](const std::uint8_t* s) {
         return slow::FromDpx(WordOf(Reversed({s, s + 4}).data()));
     }},
};

void RunNearest(const Member& m, int dstWidth, int dstHeight, int srcWidth, int srcHeight,
                int signs, Place place, Layout layout) {
    GuardedFrame dst({static_cast<std::size_t>(dstWidth) * 4, dstHeight, (signs & 1) != 0,
                      layout.padding, layout.misalignment},
                     place, 1);
    GuardedFrame src({static_cast<std::size_t>(srcWidth) * 4, srcHeight, (signs & 2) != 0,
                      layout.padding, layout.misalignment},
                     place, 2);
    Bytes expected = dst.content();
    const Bytes source = src.content();
    const bool turnedOver = signs == 1 || signs == 2;
    for (int r = 0; srcWidth > 0 && srcHeight > 0 && r < dstHeight; ++r)
        for (int c = 0; c < dstWidth; ++c) {
            // Rows count upwards in memory in both frames.
            const int up = (signs & 1) ? dstHeight - 1 - r : r;
            const int fromUp = up * srcHeight / dstHeight;
            const int from = (signs & 2) ? srcHeight - 1 - fromUp : fromUp;
            const std::size_t x = static_cast<std::size_t>(c * srcWidth / dstWidth);
            const Bytes pixel = m.pixel(&source[src.Offset(from) + x * 4]);
            std::ranges::copy(
                pixel, expected.begin() + static_cast<std::ptrdiff_t>(dst.Offset(r)) + c * 4);
        }
    m.scale(dst.base(), dst.rowBytes(), dstWidth, dstHeight, src.base(), src.rowBytes(), srcWidth,
            srcHeight);
    ASSERT_EQ(dst.Difference(expected), "")
        << m.name << ' ' << srcWidth << " x " << srcHeight << " to " << dstWidth << " x "
        << dstHeight << (turnedOver ? " turned over" : "");
    ASSERT_EQ(src.Difference(source), "");
}

TEST(Scale, NearestOfEveryShape) {
    for (const Member& m : kNearest)
        for (const int dstWidth : Widths())
            for (const int srcWidth : {0, 1, 2, 7, 35, 70, 1920})
                for (int dstHeight = 0; dstHeight <= kMaxHeight; ++dstHeight)
                    for (const int srcHeight : {0, 1, 3, 5})
                        for (const int signs : {0, 1, 2, 3}) {
                            if (dstWidth > 70 && dstHeight > 2) continue;
                            const Place place = dstHeight % 2 ? Place::atBack : Place::atFront;
                            RunNearest(m, dstWidth, dstHeight, srcWidth, srcHeight, signs, place,
                                       kLayouts[0]);
                            if (srcWidth <= 7)
                                RunNearest(m, dstWidth, dstHeight, srcWidth, srcHeight, signs,
                                           Place::guarded, kLayouts[1]);
                            if (HasFatalFailure()) return;
                        }
}

TEST(Scale, EqualExtentsAreTheCopy) {
    for (const Member& m : kNearest)
        for (const int signs : {0, 1, 2, 3}) {
            GuardedFrame src({40, 4, (signs & 2) != 0}, Place::guarded, 3);
            GuardedFrame scaled({40, 4, (signs & 1) != 0}, Place::guarded, 4);
            GuardedFrame copied({40, 4, (signs & 1) != 0}, Place::guarded, 4);
            m.scale(scaled.base(), scaled.rowBytes(), 10, 4, src.base(), src.rowBytes(), 10, 4);
            m.copy(copied.base(), copied.rowBytes(), src.base(), src.rowBytes(), 10, 4);
            EXPECT_EQ(scaled.Difference(copied.content()), "") << m.name << ' ' << signs;
        }
}

// Index products beyond 2^31: the last of 40 pixels out of a row of 2^29.
TEST(Scale, IndicesAre64BitsWide) {
    if constexpr (sizeof(void*) < 8) GTEST_SKIP() << "no room for a row of 2 GiB";
    constexpr int kWidth = 1 << 29;
    const FencedPages pages(std::size_t{4} << 29);
    const std::size_t last = static_cast<std::size_t>(kWidth / 40.0 * 39) * 4;
    for (int i = 0; i < 4; ++i) pages.bytes()[last + static_cast<std::size_t>(i)] = 0xFF;
    std::uint8_t row[160];
    IpFrame_Scale_RGB10_To_BGRA8(row, 160, 40, 1, pages.bytes().data(), 0, kWidth, 1);
    for (int c = 0; c < 39; ++c) EXPECT_EQ(WordOf(row + c * 4), 0xFF000000u) << c;
    EXPECT_EQ(WordOf(row + 156), 0xFFFFFFFFu);
}

TEST(Scale, EmptyMembers) {
    const ScaleFn members[] = {
        IpFrame_Scale_YCbYCr8_To_BGRA8, IpFrame_Scale_CbYCrY8_To_BGRA8,
        IpFrame_Scale_v210_To_BGRA8,    IpFrame_Scale_8888_To_8888Master,
        IpFrame_Scale_RGB8_To_RGB8,     IpFrame_Scale_YCbCr8_To_YCbCr8,
        IpFrame_Scale_RGBA8_To_RGBA8,   IpFrame_Scale_BGRA8_To_BGRA8,
        IpFrame_Scale_BGRX8_To_BGRX8,   IpFrame_Resize_BGRA8_To_BGRA8,
    };
    GuardedFrame dst({64, 3}, Place::guarded, 5), src({64, 3}, Place::guarded, 6);
    const Bytes before = dst.content();
    for (const ScaleFn scale : members) {
        scale(dst.base(), 64, 12, 3, src.base(), 64, 12, 3);
        EXPECT_EQ(dst.Difference(before), "");
        scale(nullptr, 64, 12, 3, nullptr, 64, 12, 3);
    }
}

}  // namespace
