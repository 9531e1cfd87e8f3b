#include "headless/Frame.h"

#include "tests/headless/Thrown.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <limits>

namespace {

using namespace zel;
using namespace zel::test;

TEST(Frame, RowsAreAlignedAndHoldTheirPixels) {
    for (const FormatFacts& f : KnownFormats())
        for (const int width : {1, 3, 15, 16, 17, 64, 1000, 1921})
            for (const int height : {1, 2, 7}) {
                Frame frame(f.code, width, height);
                const int packed = width * f.BytesPerPixel();
                EXPECT_EQ(frame.Format().code, f.code);
                EXPECT_EQ(frame.Width(), width);
                EXPECT_EQ(frame.Height(), height);
                EXPECT_GE(frame.RowBytes(), packed);
                EXPECT_LT(frame.RowBytes(), packed + 64);
                for (int y = 0; y < height; ++y) {
                    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(frame.Row(y)) % 64, 0u);
                    EXPECT_EQ(frame.Row(y) - frame.Row(0), std::ptrdiff_t{y} * frame.RowBytes());
                }
            }
}

// Under the address sanitizer this also proves that all of it is there.
TEST(Frame, FivePixelsBehindTheLastRowMayBeRead) {
    for (const FormatFacts& f : KnownFormats()) {
        Frame frame(f.code, 16, 4);
        EXPECT_GE(Frame::kSlack, static_cast<std::size_t>(5 * f.BytesPerPixel()));
        std::memset(frame.Row(0), 0x5A,
                    4 * static_cast<std::size_t>(frame.RowBytes()) + Frame::kSlack);
        EXPECT_EQ(static_cast<int>(frame.Row(4)[Frame::kSlack - 1]), 0x5A);
    }
}

TEST(Frame, SizesThatCannotBe) {
    constexpr int most = std::numeric_limits<int>::max();
    const struct {
        int width, height;
        const char* says;
    } cases[] = {
        {0, 5, "0 x 5 has no pixels"},
        {5, 0, "5 x 0 has no pixels"},
        {-1, 5, "-1 x 5 has no pixels"},
        {5, -1, "5 x -1 has no pixels"},
        {134217728, 1, "134217728 x 1 is too wide: a row would need 2147483648 bytes"},
        {most, 1, "2147483647 x 1 is too wide"},
        {most / 16 / 64 * 64, most, "no memory for a frame of"},
    };
    for (const auto& c : cases) {
#if defined(__SANITIZE_ADDRESS__)
        if (c.height == most) continue;  // the sanitizer ends the program instead
#endif
        const Error e =
            Thrown([&] { const Frame frame(PrPixelFormat_BGRA_4444_32f, c.width, c.height); });
        EXPECT_EQ(e.Kind(), ErrorKind::Other);
        EXPECT_TRUE(Says(e, c.says));
    }
}

TEST(Frame, AFormatThatTheHostCannotHold) {
    EXPECT_TRUE(
        Says(Thrown([] { const Frame frame(PrPixelFormat_VUYA_4444_8u, 1, 1); }), "pixel format"));
}

}  // namespace
