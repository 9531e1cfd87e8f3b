#include "lut/Numeric.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace zel::lut {
namespace {

constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();
constexpr float kInf = std::numeric_limits<float>::infinity();
constexpr std::int32_t kLeast = std::numeric_limits<std::int32_t>::min();

TEST(Numeric, WholeNumbers) {
    struct Case {
        float x;
        std::int32_t truncated, selector;
    };
    const float tooBig = 2147483648.0f;
    const Case cases[] = {
        {0, 0, 0},
        {1.999f, 1, 1},
        {-1.999f, -1, -1},
        {2147483520, 2147483520, 2147483520},  // the largest float below 2^31
        {tooBig, 0, -1},
        {-tooBig, kLeast, kLeast},
        {std::nextafter(-tooBig, -kInf), 0, -1},
        {kInf, 0, -1},
        {-kInf, 0, -1},
        {kNaN, 0, -1},
    };
    for (const auto& [x, truncated, selector] : cases) {
        EXPECT_EQ(Truncated(x), truncated) << x;
        EXPECT_EQ(Selector(x), selector) << x;
    }
}

TEST(Numeric, UnsignedNumbers) {
    struct Case {
        float x;
        std::uint32_t expected;
    };
    const Case cases[] = {
        {kNaN, 0},
        {-kInf, 0},
        {-0.5f, 0},
        {0, 0},
        {0.999f, 0},
        {1, 1},
        {1.5f, 1},
        {4294967040.0f, 4294967040u},
        {4294967296.0f, 0xFFFFFFFFu},
        {kInf, 0xFFFFFFFFu},
    };
    for (const auto& [x, expected] : cases) EXPECT_EQ(SaturatedUnsigned(x), expected) << x;
}

TEST(Numeric, WeightIndices) {
    struct Case {
        float x;
        int expected;
    };
    const Case cases[] = {
        {kNaN, 0}, {-kInf, 0},       {-1, 0},      {0, 0},       {0.999f, 0},  {1, 1},
        {2.5f, 2}, {1022.99f, 1022}, {1023, 1023}, {1024, 1023}, {kInf, 1023},
    };
    for (const auto& [x, expected] : cases) EXPECT_EQ(WeightIndex(x), expected) << x;
}

TEST(Numeric, ClampsKeepNaN) {
    EXPECT_EQ(Clamp(-1.0f, 0.0f, 2.0f), 0.0f);
    EXPECT_EQ(Clamp(0.5, 0.0, 2.0), 0.5);
    EXPECT_EQ(Clamp(3.0f, 0.0f, 2.0f), 2.0f);
    EXPECT_TRUE(std::isnan(Clamp(kNaN, 0.0f, 2.0f)));
}

}  // namespace
}  // namespace zel::lut
