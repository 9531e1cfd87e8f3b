#include "tests/support/Lut.h"
#include "tests/support/Single.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <random>
#include <vector>

namespace {

using zel::test::Bits;
using zel::test::kNaN;
using zel::test::Limited;
using zel::test::OpenLut;
using zel::test::Params;
using zel::test::Single;

// Entries of the parameter array.
constexpr int kMaster = 1, kHighlights = 7, kMidtones = 13, kShadows = 19;

TEST(ApplyBalance, UnityLeavesTheTableUnchanged) {
    OpenLut lut;
    Params params{255, 255, 255};
    lut.ApplyBalance(params.data());
    for (int c = 0; c < 3; ++c)
        for (int i = 0; i < 1024; ++i) ASSERT_EQ(lut.At(c, i), static_cast<float>(i));
}

TEST(ApplyBalance, DoublesAndClipsAt1023WhateverTheWhiteLevel) {
    for (const float white : {500.0f, 1023.0f, 4000.0f}) {
        OpenLut lut;
        lut.SetWhiteLevel(white);
        Params params{510, 255, 0};
        lut.ApplyBalance(params.data());
        for (int i = 0; i < 1024; ++i) {
            ASSERT_EQ(lut.At(0, i), std::min(2.0f * static_cast<float>(i), 1023.0f)) << white;
            ASSERT_EQ(lut.At(1, i), static_cast<float>(i));
            ASSERT_EQ(lut.At(2, i), 0.0f);
        }
    }
}

TEST(ApplyBalance2, NeutralDefectIs240EntriesAnd129LowerCodes) {
    OpenLut lut;
    Params params{};
    lut.ApplyBalance2(params.data());
    std::array<unsigned short, 1024> r, g, b;
    lut.Build10Bit(r.data(), g.data(), b.data());
    EXPECT_EQ(r, g);
    EXPECT_EQ(r, b);

    int off = 0;
    float largest = 0.0f;
    std::vector<int> lower;
    for (int i = 0; i < 1024; ++i) {
        const float difference = std::fabs(lut.At(0, i) - static_cast<float>(i));
        off += difference != 0.0f;
        largest = std::max(largest, difference);
        const int code = r[static_cast<std::size_t>(i)];
        if (code == i - 1)
            lower.push_back(i);
        else
            ASSERT_EQ(code, i);
    }
    EXPECT_EQ(off, 240);
    EXPECT_LE(largest, 0.000062f);
    ASSERT_EQ(lower.size(), 129u);
    EXPECT_EQ(std::vector(lower.begin(), lower.begin() + 5), (std::vector{34, 35, 37, 40, 41}));
}

TEST(ApplyBalance2, HighlightsRgb100) {
    OpenLut lut;
    Params params{};
    params[kHighlights] = 100;
    lut.ApplyBalance2(params.data());
    for (int c = 0; c < 3; ++c) {
        EXPECT_EQ(lut.At(c, 1023), 1023.0f);
        EXPECT_EQ(lut.At(c, 0), 0.0f);
        EXPECT_NEAR(lut.At(c, 512), 640.0f, 0.5f);
    }
}

// The highlights are the only range whose total is not limited to +-100.
TEST(ApplyBalance2, UnclampedHighlights) {
    Params params{};
    params[kMaster] = params[kHighlights] = params[kHighlights + 1] = 100;
    OpenLut lut;
    lut.ApplyBalance2(params.data());
    // Highlights 300 for red: 4 times; 200 for green: 3 times; the other ranges twice.
    const float x = 300.0f / 1023.0f, own = x * x;
    EXPECT_NEAR(lut.At(0, 300), 300.0f * (2.0f + 2.0f * own), 0.01f);
    EXPECT_NEAR(lut.At(1, 300), 300.0f * (2.0f + 1.0f * own), 0.01f);

    params = {};
    params[kMaster] = params[kShadows] = params[kShadows + 1] = 100;
    OpenLut shadows;
    shadows.ApplyBalance2(params.data());
    for (int i = 0; i < 1024; ++i) ASSERT_EQ(Bits{shadows.At(0, i)}, Bits{shadows.At(1, i)});
    EXPECT_NEAR(shadows.At(0, 300), 600.0f, 0.01f);
}

TEST(ApplyBalance2, ShadowsMinus100) {
    OpenLut lut;
    Params params{};
    params[kShadows] = -100;
    lut.ApplyBalance2(params.data());
    EXPECT_EQ(lut.At(0, 0), 0.0f);
    EXPECT_LT(lut.At(0, 10), 0.3f);
    EXPECT_EQ(lut.At(0, 1023), 1023.0f);
}

TEST(ApplyBalance2, WhiteLevelCapsEveryResult) {
    OpenLut lut;
    lut.SetWhiteLevel(940.0f);
    Params params{};
    lut.ApplyBalance2(params.data());
    EXPECT_EQ(lut.At(0, 1023), 940.0f);
    EXPECT_EQ(lut.At(0, 941), 940.0f);
    EXPECT_NEAR(lut.At(0, 900), 900.0f, 0.001f);
}

TEST(ApplyBalance2, WhiteLevelAbove1023OnlyGuardsTheWeightIndex) {
    OpenLut lut;
    lut.SetWhiteLevel(5000.0f);
    Params params{};
    params[kHighlights] = 100;
    lut.ApplyBalance2(params.data());
    EXPECT_EQ(lut.At(0, 1023), 2046.0f);
    lut.ApplyBalance2(params.data());  // entries above 1023 take the last weight
    EXPECT_EQ(lut.At(0, 1023), 4092.0f);
}

TEST(ApplyBalance2, NaNEntryStaysNaN) {
    OpenLut lut;
    lut.m_pLut[7] = kNaN;
    Params params{};
    lut.ApplyBalance2(params.data());
    EXPECT_TRUE(std::isnan(lut.At(0, 7)));
    EXPECT_NEAR(lut.At(1, 7), 7.0f, 1e-4f);
}

TEST(ApplyBalance2, ReadsOnlyItsOwnParameters) {
    Params clean{}, poisoned;
    poisoned.fill(kNaN);
    std::mt19937 random(1);
    std::uniform_real_distribution<float> slider(-100.0f, 100.0f);
    for (const int group : {kMaster, kHighlights, kMidtones, kShadows})
        for (int i = group; i < group + 4; ++i)
            clean[static_cast<std::size_t>(i)] = poisoned[static_cast<std::size_t>(i)] =
                slider(random);
    OpenLut a, b;
    a.ApplyBalance2(clean.data());
    b.ApplyBalance2(poisoned.data());
    for (int i = 0; i < 3072; ++i) ASSERT_EQ(Bits{a.m_pLut[i]}, Bits{b.m_pLut[i]}) << i;
}

/// Second opinion, in spelled-out single precision.
float Restated(const Params& p, int c, float entry) {
    const auto at = [&](int i) { return Single{p[static_cast<std::size_t>(i)]}; };
    const auto limit = [](Single x) { return Limited(x, -100.0f, 100.0f); };
    const Single master = limit(at(1) + at(2 + c));
    const Single h = (master + (at(7) + at(8 + c))) * Single{0.01f};
    const Single m = limit((at(13) + at(14 + c)) + master) * Single{0.01f};
    const Single s = limit((at(19) + at(20 + c)) + master) * Single{0.01f};
    const Single t{entry};
    const auto k = static_cast<std::size_t>(entry);
    const Single r = ((t * h + t) * Single{CUtilLut::m_highlights[k]} +
                      (t * m + t) * Single{CUtilLut::m_midtones[k]}) +
                     (t + t * s) * Single{CUtilLut::m_shadows[k]};
    return Limited(r, 0.0f, 1023.0f).v;
}

TEST(ApplyBalance2, AgreesWithTheRestatementOnRandomSettings) {
    const unsigned seed = 20240611;
    std::mt19937 random(seed);
    std::uniform_real_distribution<float> slider(-100.0f, 100.0f);
    for (int run = 0; run < 500; ++run) {
        Params params{};
        for (const int group : {kMaster, kHighlights, kMidtones, kShadows})
            for (int i = group; i < group + 4; ++i)
                params[static_cast<std::size_t>(i)] =
                    run % 3 ? slider(random) : std::round(slider(random));
        OpenLut lut;
        lut.ApplyBalance2(params.data());
        for (int c = 0; c < 3; ++c)
            for (int i = 0; i < 1024; ++i) {
                const float expected = Restated(params, c, static_cast<float>(i));
                ASSERT_EQ(Bits{lut.At(c, i)}, Bits{expected})
                    << "seed " << seed << " run " << run << " channel " << c << " entry " << i;
                ASSERT_TRUE(lut.At(c, i) >= 0.0f && lut.At(c, i) <= 1023.0f);
            }
    }
}

}  // namespace
