#include "tests/lut/GroupEntries.h"
#include "tests/support/Single.h"

#include <algorithm>
#include <cmath>
#include <random>

namespace {

using namespace zel::test;

// --- second opinion -----------------------------------------------------------

void Gamma(OpenLut& lut, float tenths) {
    const Single top = Limited({lut.m_fWhiteLevel}, 0.0f, 1023.0f), one{1.0f};
    const Single exponent = one / (one / (Single{tenths} / Single{10.0f}));
    for (int i = 0; i < 3072; ++i) {
        const double base = (Single{lut.m_pLut[i]} * Single{1.0f / 1024.0f}).v;
        const double y = std::pow(base, double{exponent.v}) * 1024.0;
        lut.m_pLut[i] = std::max(y, 0.0) > top.v ? top.v : static_cast<float>(y < 0.0 ? 0.0 : y);
    }
}

/// In spelled-out single precision, from the written-out entries.
void Gamma2(OpenLut& lut, const Params& p) {
    const Single one{1.0f}, hundred{100.0f}, top = Limited({lut.m_fWhiteLevel}, 0.0f, 1023.0f);
    for (int c = 0; c < 3; ++c) {
        const auto all = [&](int group, int control) {
            return Single{p[static_cast<std::size_t>(kEntry[group][control][0])]};
        };
        const auto own = [&](int group, int control) {
            return Single{p[static_cast<std::size_t>(kEntry[group][control][c + 1])]};
        };
        const Single masterGamma = Limited(all(0, 0) + (own(0, 0) - one), 0, 10);
        const Single masterGain = Limited(all(0, 1) + (own(0, 1) - one), 0, 10);
        Single masterOffset = all(0, 2) + own(0, 2);
        if (c != 0) masterOffset = Limited(masterOffset, -100, 100);

        const auto part = [&](int r, Single v, const float* weights, std::size_t k) {
            const Single gamma =
                Limited(((all(r, 0) - one) + (own(r, 0) - one)) + masterGamma, 0, 10);
            const Single gain =
                Limited(((all(r, 1) - one) + (own(r, 1) - one)) + masterGain, 0, 10);
            const Single offset = Limited((all(r, 2) + own(r, 2)) + masterOffset, -100, 100);
            const Single base = (gain * v + top * (offset / hundred)) * Single{1.0f / 1024.0f};
            const double power = std::pow(double{base.v}, double{(one / gamma).v});
            return Single::Rounded(power * 1024.0) * Single{weights[k]};
        };
        for (int i = 0; i < 1024; ++i) {
            float& entry = lut.m_pLut[c * 1024 + i];
            const Single v{entry};
            const auto k = static_cast<std::size_t>(
                std::isnan(v.v) ? 0.0f : std::clamp(std::trunc(v.v), 0.0f, 1023.0f));
            const Single sum = (part(kHighlightGroup, v, CUtilLut::m_highlights, k) +
                                part(kMidtoneGroup, v, CUtilLut::m_midtones, k)) +
                               part(kShadowGroup, v, CUtilLut::m_shadows, k);
            entry = Limited(sum, 0.0f, top.v).v;
        }
    }
}

// --- ApplyGamma ---------------------------------------------------------------

TEST(ApplyGamma, TenTenthsLeaveTheTableUnchanged) {
    OpenLut lut, identity;
    Params params{10.0f};
    lut.ApplyGamma(params.data());
    EXPECT_TRUE(SameCurve(lut, identity));
}

TEST(ApplyGamma, ZeroIsWhiteEverywhere) {
    for (const float white : {1023.0f, 600.0f, 5000.0f}) {
        OpenLut lut;
        lut.SetWhiteLevel(white);
        lut.m_pLut[7] = kNaN;  // even here: the power of 0 is 1
        Params params{0.0f};
        lut.ApplyGamma(params.data());
        for (int i = 0; i < 3072; ++i) ASSERT_EQ(lut.m_pLut[i], std::min(white, 1023.0f));
    }
}

// 1024 both ways, while the top is the white level: on a scale of 1023 the first three
// would be 511.75, 63.97 and 1023.
TEST(ApplyGamma, GammaScale) {
    OpenLut root, square;
    Params params{5.0f};
    root.ApplyGamma(params.data());
    EXPECT_EQ(root.At(0, 256), 512.0f);
    EXPECT_EQ(root.At(1, 4), 64.0f);
    EXPECT_EQ(root.At(2, 1023), 1023.0f);  // 1023.5 before the clamp
    params = {20.0f};
    square.ApplyGamma(params.data());
    EXPECT_EQ(square.At(0, 512), 256.0f);
    EXPECT_NEAR(square.At(0, 1023), 1023.0f * 1023.0f / 1024.0f, 1e-3f);
}

TEST(ApplyGamma, NegativeEntries) {
    OpenLut lut;
    lut.m_pLut[0] = -256.0f;
    Params params{5.0f};
    lut.ApplyGamma(params.data());
    EXPECT_TRUE(std::isnan(lut.At(0, 0)));
    lut.m_pLut[0] = -256.0f;
    params = {10.0f};
    lut.ApplyGamma(params.data());
    EXPECT_EQ(lut.At(0, 0), 0.0f);
}

TEST(ApplyGamma, AgreesWithTheRestatement) {
    for (const float white : {1023.0f, 940.0f, 0.0f, 5000.0f, -3.0f})
        for (const float tenths : {0.0f, 1.0f, 5.0f, 9.99f, 10.0f, 12.5f, 22.0f, 100.0f, -10.0f}) {
            OpenLut lut, expected;
            MakeHostile(lut);
            MakeHostile(expected);
            lut.SetWhiteLevel(white);
            expected.SetWhiteLevel(white);
            Params params{tenths};
            lut.ApplyGamma(params.data());
            Gamma(expected, tenths);
            ASSERT_TRUE(SameCurve(lut, expected)) << "white " << white << " tenths " << tenths;
        }
}

// --- ApplyGamma2 --------------------------------------------------------------

TEST(ApplyGamma2, NeutralEqualsTheNeutralBalanceBitForBit) {
    for (const float white : {1023.0f, 940.0f}) {
        OpenLut gamma, balance;
        gamma.SetWhiteLevel(white);
        balance.SetWhiteLevel(white);
        Params neutral = NeutralGamma(), zeros{};
        gamma.ApplyGamma2(neutral.data());
        balance.ApplyBalance2(zeros.data());
        EXPECT_TRUE(SameCurve(gamma, balance));
        for (int i = 0; i < 900; ++i)
            ASSERT_NEAR(gamma.At(0, i), static_cast<float>(i), 0.000062f) << i;
    }
}

TEST(ApplyGamma2, MasterValuesAreGainOffsetThenPower) {
    OpenLut lut;
    Params params = With(NeutralGamma(), {{1, 2.0f}, {2, 1.5f}, {3, 10.0f}});
    lut.ApplyGamma2(params.data());
    for (const int i : {0, 1, 100, 400, 520}) {
        const double base = (1.5 * i + 102.3) / 1024.0;
        ASSERT_NEAR(lut.At(0, i), 1024.0 * std::sqrt(base), 1e-3) << i;
    }
    EXPECT_EQ(lut.At(0, 1023), 1023.0f);
}

TEST(ApplyGamma2, RangesAreWeighted) {
    OpenLut lut;
    Params params = With(NeutralGamma(), {{62, 2.0f}});  // shadows gain
    lut.ApplyGamma2(params.data());
    for (const int i : {1, 100, 511, 800}) {
        const float rest = 1.0f - static_cast<float>(i) / 1023.0f;
        ASSERT_NEAR(lut.At(0, i), static_cast<float>(i) * (1.0f + rest * rest), 1e-3f) << i;
    }
    EXPECT_EQ(lut.At(0, 1023), 1023.0f);
}

// Exponent infinity with gain 2: bases below 1 give 0, a base of 1 gives 1024 and bases
// above 1 infinity, which is white unless it meets a weight of 0.
TEST(ApplyGamma2, GammaZero) {
    OpenLut lut;
    Params params = With(NeutralGamma(), {{1, 0.0f}, {2, 2.0f}});
    lut.ApplyGamma2(params.data());
    for (int i = 0; i < 512; ++i) ASSERT_EQ(lut.At(0, i), 0.0f) << i;
    for (int i = 512; i < 1023; ++i) ASSERT_EQ(lut.At(0, i), 1023.0f) << i;
    EXPECT_TRUE(std::isnan(lut.At(0, 1023)));  // neither midtones nor shadows weigh there
}

TEST(ApplyGamma2, GammaZeroAtABaseOfOne) {
    OpenLut lut;
    Params params = With(NeutralGamma(), {{1, 0.0f}, {2, 2.0f}, {42, 0.0f}, {62, 0.0f}});
    lut.ApplyGamma2(params.data());  // gain 2 in the highlights, 1 elsewhere
    const float x = 512.0f / 1023.0f;
    EXPECT_NEAR(lut.At(0, 512), 1024.0f * x * x, 1e-3f);
}

TEST(ApplyGamma2, NegativeBase) {
    Params params = With(NeutralGamma(), {{1, 1.2f}, {3, -10.0f}});  // within the sliders
    OpenLut broken;
    broken.ApplyGamma2(params.data());
    for (int i = 0; i < 1024; ++i) ASSERT_EQ(std::isnan(broken.At(0, i)), i < 103) << i;

    params = With(NeutralGamma(), {{2, 0.0f}, {3, -50.0f}});  // with exponent 1
    OpenLut black;
    black.ApplyGamma2(params.data());
    for (int i = 0; i < 3072; ++i) ASSERT_EQ(black.m_pLut[i], 0.0f) << i;
}

TEST(ApplyGamma2, NegativePartLowersTheSum) {
    OpenLut lut;
    Params params = With(NeutralGamma(), {{63, -50.0f}});  // shadows offset
    lut.ApplyGamma2(params.data());
    const float rest = 1.0f - 700.0f / 1023.0f;
    EXPECT_NEAR(lut.At(0, 700), 700.0f - 511.5f * rest * rest, 1e-3f);
    EXPECT_EQ(lut.At(0, 10), 0.0f);
}

// Master offsets of 100 and 100 against -100 in the highlights: red keeps 100 there,
// green and blue keep nothing. Below the highlights all three have 100.
TEST(ApplyGamma2, RedMasterOffset) {
    OpenLut lut;
    Params params =
        With(NeutralGamma(),
             {{2, 0.0f}, {3, 100.0f}, {7, 100.0f}, {12, 100.0f}, {17, 100.0f}, {23, -100.0f}});
    lut.ApplyGamma2(params.data());  // gain 0: the offsets alone
    for (const int i : {0, 300, 700, 1022}) {
        const float x = static_cast<float>(i) / 1023.0f;
        EXPECT_NEAR(lut.At(0, i), 1023.0f, 1e-3f) << i;
        EXPECT_NEAR(lut.At(1, i), 1023.0f * (1.0f - x * x), 1e-3f) << i;
        EXPECT_NEAR(lut.At(2, i), 1023.0f * (1.0f - x * x), 1e-3f) << i;
    }
}

TEST(ApplyGamma2, WhiteLevelCountsAs0To1023) {
    Params params = With(NeutralGamma(), {{1, 1.3f}, {3, 10.0f}});
    OpenLut high, standard, negative;
    high.SetWhiteLevel(4000.0f);
    negative.SetWhiteLevel(-1.0f);
    high.ApplyGamma2(params.data());
    standard.ApplyGamma2(params.data());
    negative.ApplyGamma2(params.data());
    EXPECT_TRUE(SameCurve(high, standard));
    for (int i = 0; i < 3072; ++i) ASSERT_EQ(negative.m_pLut[i], 0.0f);
}

TEST(ApplyGamma2, NaNEntryStaysNaN) {
    OpenLut lut;
    lut.m_pLut[5] = kNaN;
    Params params = NeutralGamma();
    lut.ApplyGamma2(params.data());
    EXPECT_TRUE(std::isnan(lut.At(0, 5)));
    EXPECT_NEAR(lut.At(1, 5), 5.0f, 1e-5f);
}

TEST(ApplyGamma2, AgreesWithTheRestatementOnRandomSettings) {
    const unsigned seed = 20240613;
    std::mt19937 random(seed);
    std::uniform_real_distribution<float> factor(0.0f, 10.0f), percent(-100.0f, 100.0f),
        near(0.8f, 1.25f);
    constexpr float kWhite[] = {1023.0f, 940.0f, 0.0f, 5000.0f, -20.0f};
    for (int run = 0; run < 120; ++run) {
        Params params = NeutralGamma();
        for (const auto& group : kEntry)
            for (int control = 0; control < 3; ++control)
                for (int who = 0; who < 4; ++who) {
                    float& value = params[static_cast<std::size_t>(group[control][who])];
                    if (run % 4 == 0) value = control == 2 ? percent(random) : factor(random);
                    if (run % 4 == 1) value = control == 2 ? percent(random) / 20 : near(random);
                    if (run % 4 == 2) value = control == 2 ? 0.0f : std::round(factor(random));
                    if (run % 4 == 3 && random() % 6 == 0 && control != 2) value = near(random);
                }
        OpenLut lut, expected;
        lut.SetWhiteLevel(run % 3 ? 1023.0f : kWhite[run / 3 % 5]);
        expected.SetWhiteLevel(lut.m_fWhiteLevel);
        if (run % 5 == 0) {
            MakeHostile(lut);
            MakeHostile(expected);
        }
        lut.ApplyGamma2(params.data());
        Gamma2(expected, params);
        ASSERT_TRUE(SameCurve(lut, expected)) << "seed " << seed << " run " << run;
    }
}

}  // namespace
