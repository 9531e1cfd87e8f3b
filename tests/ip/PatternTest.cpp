#include "ip/IpTest.h"

#include "tests/ip/SlowPixels.h"
#include "tests/support/Shapes.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

using namespace zel::test;

using PatternFn = decltype(&IpFrame_Test_BGRA8);

struct Member {
    const char* name;
    PatternFn test;
    int pixels;  // of a word
    Bytes word;
};

const Member kMembers[] = {
    {"BGRA8", IpFrame_Test_BGRA8, 1, Bytes(4, 0xFF)},
    {"RGB10", IpFrame_Test_RGB10, 1, Bytes(4, 0xFF)},
    {"DpxLe", IpFrame_Test_DpxLe, 1, Bytes(4, 0xFF)},
    {"DpxBe", IpFrame_Test_DpxBe, 1, Bytes(4, 0xFF)},
    {"YUYV8", IpFrame_Test_YUYV8, 2, {128, 255, 128, 255}},
    {"UYVY8", IpFrame_Test_UYVY8, 2, {255, 128, 255, 128}},
};

bool OnLine(int r, int c, int width, int height) {
    for (const int row : {0, 1, height - 2, height - 1, height / 2})
        if (r == row) return true;
    return c == 0 || c == width - 1;
}

/// Draws over a guarded frame; `off` empty leaves the inside alone.
template <class Draw>
void RunPattern(const char* name, int words, int height, const Bytes& on, const Bytes& off,
                bool negative, Place place, Layout layout, Draw draw) {
    // Rows advance by whole words, so padded rows have a multiple of four.
    GuardedFrame frame({static_cast<std::size_t>(words) * 4, height, negative,
                        layout.padding / 4 * 4, layout.misalignment},
                       place, 1);
    Bytes expected = frame.content();
    for (int r = 0; r < height; ++r)
        for (int c = 0; c < words; ++c) {
            const Bytes& word = OnLine(r, c, words, height) ? on : off;
            std::ranges::copy(
                word, expected.begin() + static_cast<std::ptrdiff_t>(frame.Offset(r)) + c * 4);
        }
    draw(frame.base(), frame.rowBytes());
    ASSERT_EQ(frame.Difference(expected), "") << name << ' ' << words << " x " << height;
}

template <class Run>
void ForEachShape(Run run) {
    for (const int width : Widths())
        for (int height = 0; height <= 9; ++height)
            for (const bool negative : {false, true}) {
                for (const Layout layout : kLayouts)
                    run(width, height, negative, Place::guarded, layout);
                run(width, height, negative, Place::atFront, kLayouts[0]);
                run(width, height, negative, Place::atBack, kLayouts[0]);
            }
}

TEST(Pattern, MembersOfEveryShape) {
    for (const Member& m : kMembers)
        ForEachShape([&](int width, int height, bool negative, Place place, Layout layout) {
            RunPattern(m.name, width / m.pixels, height, m.word, {}, negative, place, layout,
                       [&](void* base, int rowBytes) { m.test(base, rowBytes, width, height, 3); });
        });
}

TEST(Pattern, LongMonoOfEveryShape) {
    const Bytes on = BytesOf(0x11223344, 4), off = BytesOf(0xA1B2C3D4, 4);
    for (const bool fillOff : {false, true})
        ForEachShape([&](int width, int height, bool negative, Place place, Layout layout) {
            RunPattern("Long_Mono", width, height, on, fillOff ? off : Bytes{}, negative, place,
                       layout, [&](void* base, int rowBytes) {
                           IpFrame_Test_Long_Mono(base, rowBytes, width, height, 99, 0x11223344,
                                                  0xA1B2C3D4, fillOff);
                       });
        });
}

TEST(Pattern, FourByFourIsAllSet) {
    Bytes frame(64, 0);
    IpFrame_Test_BGRA8(frame.data(), 16, 4, 4, 0);
    EXPECT_EQ(frame, Bytes(64, 0xFF));
}

TEST(Pattern, PatternBorder) {
    std::uint32_t frame[9][5] = {};
    IpFrame_Test_Long_Mono(frame, 20, 5, 9, 0, 1, 0, false);
    const std::uint32_t expected[9][5] = {
        {1, 1, 1, 1, 1}, {1, 1, 1, 1, 1}, {1, 0, 0, 0, 1}, {1, 0, 0, 0, 1}, {1, 1, 1, 1, 1},
        {1, 0, 0, 0, 1}, {1, 0, 0, 0, 1}, {1, 1, 1, 1, 1}, {1, 1, 1, 1, 1},
    };
    for (int r = 0; r < 9; ++r)
        EXPECT_TRUE(std::ranges::equal(frame[r], expected[r])) << "row " << r;
}

// White, in the byte order of the other 4:2:2 layout.
TEST(Pattern, PatternPairs) {
    Bytes yuyv(4), uyvy(4);
    IpFrame_Test_YUYV8(yuyv.data(), 4, 2, 1, 0);
    IpFrame_Test_UYVY8(uyvy.data(), 4, 2, 1, 0);
    EXPECT_EQ(yuyv, (Bytes{128, 255, 128, 255})) << "Cb Y Cr Y";
    EXPECT_EQ(uyvy, (Bytes{255, 128, 255, 128})) << "Y Cb Y Cr";
}

TEST(Pattern, RowBytesDropToWholeWords) {
    for (const int rowBytes : {8, 9, 10, 11}) {
        Bytes frame(40, 0);
        IpFrame_Test_BGRA8(frame.data(), rowBytes, 1, 3, 0);
        for (std::size_t i = 0; i < frame.size(); ++i)
            ASSERT_EQ(frame[i], i < 24 && i % 8 < 4 ? 0xFF : 0) << rowBytes << " byte " << i;
        std::ranges::fill(frame, 0);
        IpFrame_Test_BGRA8(frame.data() + 32, -rowBytes, 1, 3, 0);
        for (std::size_t i = 0; i < frame.size(); ++i)
            ASSERT_EQ(frame[i], i >= 16 && i < 36 && i % 8 < 4 ? 0xFF : 0) << -rowBytes << ' ' << i;
    }
}

TEST(Pattern, EmptyMembersAndExtents) {
    GuardedFrame frame({64, 4}, Place::guarded, 2);
    const Bytes before = frame.content();
    for (const PatternFn empty : {IpFrame_Test_v210, IpFrame_Test_BGRA16}) {
        empty(frame.base(), 64, 12, 4, 0);
        empty(nullptr, 64, 12, 4, 0);
    }
    for (const Member& m : kMembers)
        for (const auto& [width, height] : {std::pair{-12, 3}, {12, -3}, {-1, 1}, {0, 4}, {12, 0}})
            m.test(frame.base(), 64, width, height, 0);
    EXPECT_EQ(frame.Difference(before), "");
}

}  // namespace
