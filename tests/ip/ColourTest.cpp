#include "ip/IpFill.h"

#include "ip/IpCopy.h"
#include "tests/ip/SlowPixels.h"
#include "tests/support/Shapes.h"

#include <gtest/gtest.h>

#include <limits>
#include <random>

namespace {

using namespace zel::test;

constexpr float kInf = std::numeric_limits<float>::infinity();
constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();

Ycc Yuv8(float r, float g, float b, bool normalised) {
    unsigned char y = 0xEE, cb = 0xEE, cr = 0xEE;
    IpRGBToYUV8(&y, &cb, &cr, r, g, b, normalised);
    return {y, cb, cr};
}

Ycc Yuv10(float r, float g, float b, bool normalised) {
    Ycc ycc{0xEEEE, 0xEEEE, 0xEEEE};
    IpRGBToYUV10(&ycc[0], &ycc[1], &ycc[2], r, g, b, normalised);
    return ycc;
}

/// All 2^24 colours, or every 997th of them where the range is shortened.
std::uint32_t Stride() { return FullRange() ? 1 : 997; }

TEST(Colour, All24BitColoursIn8And10Bits) {
    for (std::uint32_t rgb = 0; rgb < 1u << 24; rgb += Stride()) {
        const auto r = static_cast<float>(rgb / 65536), g = static_cast<float>(rgb / 256 % 256),
                   b = static_cast<float>(rgb % 256);
        ASSERT_EQ(Yuv8(r, g, b, false), SlowYuv8(r, g, b, false)) << std::hex << rgb;
        ASSERT_EQ(Yuv10(r, g, b, false), SlowYuv10(r, g, b, false)) << std::hex << rgb;
    }
}

// Every colour stands at one of the three pixels that give a group its chroma.
TEST(Colour, All24BitColoursAsV210) {
    constexpr std::uint32_t kColours = 1u << 24;
    for (std::uint32_t first = 0; first < kColours; first += 3 * Stride()) {
        std::array<std::array<std::uint8_t, 3>, 6> rgb;
        for (std::uint32_t k = 0; k < 6; ++k) {
            const std::uint32_t c = (first + k) % kColours;
            rgb[k] = {static_cast<std::uint8_t>(c / 65536),
                      static_cast<std::uint8_t>(c / 256 % 256), static_cast<std::uint8_t>(c % 256)};
        }
        Bytes group(16);
        IpScan_Copy_RGB_To_v210(group.data(), 16, rgb.data(), 18, 6);
        ASSERT_EQ(group, SlowV210(rgb)) << "from colour 0x" << std::hex << first;
    }
}

TEST(Colour, StatedValues) {
    EXPECT_EQ(Yuv8(0, 0, 0, true), (Ycc{0, 128, 128}));
    EXPECT_EQ(Yuv10(0, 0, 0, true), (Ycc{0, 511, 511}));
    EXPECT_EQ(Yuv8(1, 1, 1, true), (Ycc{255, 128, 128})) << "the weights sum to exactly 1 and 0";
    EXPECT_EQ(Yuv10(1, 1, 1, true), (Ycc{1023, 511, 511}));
    EXPECT_EQ(Yuv8(255, 255, 255, false), (Ycc{254, 128, 128})) << "255/256 is not white";
    EXPECT_EQ(Yuv8(256, 999, 1e9f, false), (Ycc{255, 128, 128})) << "clamped codes are white";
    EXPECT_EQ(Yuv8(-5, -1, -1e9f, false), (Ycc{0, 128, 128}));
}

// The lower chroma bound is -5: chroma below -0.5 reaches 0 by the clamp at 0.
TEST(Colour, TenBitChroma) {
    EXPECT_EQ(Yuv10(0, 3, 0, true)[1], 0u) << "u = -0.867";
    EXPECT_EQ(Yuv10(3, 0, 0, true)[2], 1023u) << "v = 1.845 is clamped to 0.5";
    EXPECT_EQ(Yuv10(3, 0, 0, true)[1], SlowYuv10(3, 0, 0, true)[1]);
    EXPECT_EQ(Yuv10(0, 0.97f, 0, true)[2], 0u) << "v = -0.49955, 0.46 codes above 0";
}

TEST(Colour, HostileValues) {
    const float values[] = {0,     -0.0f,  1,     -1,     0.5f, 1e-45f, 255, 256,
                            1e10f, -1e10f, 3e38f, -3e38f, kInf, -kInf,  kNaN};
    for (const float r : values)
        for (const float g : values)
            for (const float b : values)
                for (const bool normalised : {false, true}) {
                    ASSERT_EQ(Yuv8(r, g, b, normalised), SlowYuv8(r, g, b, normalised))
                        << r << ' ' << g << ' ' << b << ' ' << normalised;
                    ASSERT_EQ(Yuv10(r, g, b, normalised), SlowYuv10(r, g, b, normalised))
                        << r << ' ' << g << ' ' << b << ' ' << normalised;
                }
    EXPECT_EQ(Yuv8(kNaN, 0, 0, true), (Ycc{0, 0, 0}));
    EXPECT_EQ(Yuv10(kNaN, 0, 0, true), (Ycc{0, 0, 0}));
}

TEST(Colour, NormalisedColours) {
    constexpr unsigned kSeed = 31;
    SCOPED_TRACE(testing::Message() << "seed " << kSeed);
    std::mt19937 random(kSeed);
    std::uniform_real_distribution<float> colour(-0.5f, 1.5f);
    for (int i = 0; i < 200000 / static_cast<int>(Stride()) + 100; ++i) {
        const float r = colour(random), g = colour(random), b = colour(random);
        ASSERT_EQ(Yuv8(r, g, b, true), SlowYuv8(r, g, b, true)) << r << ' ' << g << ' ' << b;
        ASSERT_EQ(Yuv10(r, g, b, true), SlowYuv10(r, g, b, true)) << r << ' ' << g << ' ' << b;
    }
}

}  // namespace
