#include "tests/lut/GroupEntries.h"
#include "tests/support/Single.h"

#include <algorithm>
#include <cmath>
#include <random>
#include <vector>

namespace {

using namespace zel::test;

// --- second opinion -----------------------------------------------------------

/// The contrast curve, in spelled-out single precision.
Single Contrast(Single x, Single percent, Single pivot, Single white) {
    const Single c = Single{0.01f} * percent;
    if (c.v == 0.0f) return x;
    if (c.v >= 1.0f || c.v <= -1.0f) {
        if (c.v == 1.0f) return x.v < pivot.v ? Single{0.0f} : white;
        return c.v == -1.0f ? pivot : Single{0.0f};
    }
    if (c.v < 0.0f) {
        const Single k{-c.v};
        return ((pivot - k * pivot) / pivot) * x + k * pivot;
    }
    if (pivot.v == 0.0f) return x.v > white.v ? white : Single{0.0f};
    const Single lo = c * pivot;
    const Single slope = pivot / (pivot - lo);
    const Single hi = white / slope + lo;
    return x.v <= lo.v ? Single{0.0f} : x.v < hi.v ? (x - lo) * slope : white;
}

/// Truncated to a weight table's index; NaN counts as 0.
std::size_t Index(float v) {
    if (std::isnan(v)) return 0;
    return static_cast<std::size_t>(std::clamp(std::trunc(v), 0.0f, 1023.0f));
}

Single Weighted(Single highlights, Single midtones, Single shadows, std::size_t k) {
    return (highlights * Single{CUtilLut::m_highlights[k]} +
            midtones * Single{CUtilLut::m_midtones[k]}) +
           shadows * Single{CUtilLut::m_shadows[k]};
}

void Brightness2(OpenLut& lut, const Params& p) {
    const Single half{0.5f}, white{lut.m_fWhiteLevel};
    const Single top = Limited(white, 0.0f, 1023.0f);
    for (int c = 0; c < 3; ++c) {
        const auto all = [&](int group, int control) {
            return Single{p[static_cast<std::size_t>(kEntry[group][control][0])]};
        };
        const auto own = [&](int group, int control) {
            return Single{p[static_cast<std::size_t>(kEntry[group][control][c + 1])]};
        };
        const Single masterB = Limited(all(0, 0) + own(0, 0), -100, 100);
        const Single masterC = Limited(all(0, 1) + own(0, 1), -100, 100);
        const Single masterP = Limited((own(0, 2) - half) + all(0, 2), 0, 1);
        Single b[4]{}, k[4]{}, pivot[4]{};
        for (int r = kHighlightGroup; r <= kShadowGroup; ++r) {
            b[r] = Limited((all(r, 0) + own(r, 0)) + masterB, -100, 100);
            k[r] = Limited((all(r, 1) + own(r, 1)) + masterC, -100, 100);
            pivot[r] = Limited(((own(r, 2) - half) + (all(r, 2) - half)) + masterP, 0, 1);
        }
        for (int i = 0; i < 1024; ++i) {
            float& entry = lut.m_pLut[c * 1024 + i];
            const Single t{entry};
            const auto lit = [&](int r) { return t + (Single{0.01f} * b[r]) * white; };
            const float sum = Weighted(lit(1), lit(2), lit(3), Index(t.v)).v;
            const bool isCode = sum >= 0.0f && sum < 2147483648.0f;
            const Single v{std::min(top.v, isCode ? std::trunc(sum) : 0.0f)};
            const auto bent = [&](int r) { return Contrast(v, k[r], pivot[r], white); };
            entry = Limited(Weighted(bent(1), bent(2), bent(3), Index(v.v)), 0.0f, top.v).v;
        }
    }
}

void Brightness(OpenLut& lut, float brightness, float contrast) {
    const Single white{lut.m_fWhiteLevel}, k = Single{contrast} / Single{100.0f};
    const Single b = ((Single{brightness} / Single{100.0f}) / Single{2.5f}) * Single{0.01f};
    const Single pivot{white.v < 511.5f ? white.v : 511.5f};
    for (int i = 0; i < 3072; ++i) {
        const Single t{lut.m_pLut[i]};
        const Single v = k.v > 0.0f ? Contrast(t + b * white, k, pivot, white)
                                    : Contrast(t, k, pivot, white) + b * white;
        lut.m_pLut[i] = Limited(v, 0.0f, 1023.0f).v;
    }
}

// --- the contrast curve -------------------------------------------------------

TEST(ContrastFunction, WorkedValues) {
    const struct {
        const char* name;
        float x, contrast, pivot, expected;
    } cases[] = {
        {"50: lower end of the ramp", 255.75f, 50, 511.5f, 0},
        {"50: below the ramp", 100, 50, 511.5f, 0},
        {"50: the pivot stays", 511.5f, 50, 511.5f, 511.5f},
        {"50: quarter of the ramp", 383.625f, 50, 511.5f, 255.75f},
        {"50: upper end of the ramp", 767.25f, 50, 511.5f, 1023},
        {"50: above the ramp", 900, 50, 511.5f, 1023},
        {"100: just below the threshold", 511.25f, 100, 511.5f, 0},
        {"100: at the threshold", 511.5f, 100, 511.5f, 1023},
        {"100: above the threshold", 1023, 100, 511.5f, 1023},
        {"-100: black becomes the pivot", 0, -100, 511.5f, 511.5f},
        {"-100: white becomes the pivot", 1023, -100, 511.5f, 511.5f},
        {"150 is 0", 700, 150, 511.5f, 0},
        {"-150 is 0", 700, -150, 511.5f, 0},
        {"-50: black", 0, -50, 511.5f, 255.75f},
        {"-50: the pivot stays", 511.5f, -50, 511.5f, 511.5f},
        {"-50: white", 1023, -50, 511.5f, 767.25f},
        {"-50: below black is not clamped", -1023, -50, 511.5f, -255.75f},
        {"50, pivot 0: code 1", 1, 50, 0, 0},
        {"50, pivot 0: the white level", 1023, 50, 0, 0},
        {"50, pivot 0: above the white level", 1023.5f, 50, 0, 1023},
        {"50, pivot -0 is pivot 0", 500, 50, -0.0f, 0},
        {"-50, pivot 0 has no value", 700, -50, 0, kNaN},
        {"NaN contrast is beyond every case", 700, kNaN, 511.5f, 0},
    };
    CUtilLut lut;
    for (const auto& c : cases)
        EXPECT_EQ(AnyNaN(lut.ContrastFunction(c.x, c.contrast, c.pivot)), AnyNaN(c.expected))
            << c.name;
}

TEST(ContrastFunction, ZeroReturnsItsInputBitForBit) {
    CUtilLut lut;
    for (const float pivot : {0.0f, 0.5f, 511.5f, kNaN, kInf})
        for (const float x : {0.0f, -0.0f, 0.1f, 1023.0f, -5.0f, 1e30f, kInf, -kInf, kNaN})
            for (const float none : {0.0f, -0.0f})
                EXPECT_EQ(Bits{lut.ContrastFunction(x, none, pivot)}, Bits{x}) << Bits{pivot};
}

TEST(ContrastFunction, EndsAtTheWhiteLevelAsItIs) {
    CUtilLut lut;
    for (const float white : {500.0f, 940.0f, 4000.0f}) {
        lut.SetWhiteLevel(white);
        EXPECT_EQ(lut.ContrastFunction(5000.0f, 50.0f, 100.0f), white);
        EXPECT_EQ(lut.ContrastFunction(100.0f, 100.0f, 100.0f), white);
        // The ramp has slope 2 and starts at code 50.
        EXPECT_EQ(lut.ContrastFunction(white / 2.0f, 50.0f, 100.0f), white - 100.0f);
    }
}

TEST(ContrastFunction, AgreesWithTheRestatement) {
    CUtilLut lut;
    for (const float white : {0.0f, 500.0f, 1023.0f, 5000.0f, -10.0f}) {
        lut.SetWhiteLevel(white);
        for (float contrast = -102.5f; contrast <= 102.5f; contrast += 2.5f)
            for (const float pivot : {0.0f, 0.25f, 0.5f, 1.0f, 300.0f, 511.5f, 1023.0f})
                for (float x = -3.0f; x < 1030.0f; x += 0.75f)
                    ASSERT_EQ(AnyNaN(lut.ContrastFunction(x, contrast, pivot)),
                              AnyNaN(Contrast({x}, {contrast}, {pivot}, {white}).v))
                        << "white " << white << " contrast " << contrast << " pivot " << pivot
                        << " x " << x;
    }
}

// --- ApplyBrightness ----------------------------------------------------------

TEST(ApplyBrightness, ZeroAndZeroLeaveTheTableUnchanged) {
    OpenLut lut, identity;
    Params params{};
    lut.ApplyBrightness(params.data());
    EXPECT_TRUE(SameCurve(lut, identity));
}

TEST(ApplyBrightness, BrightnessIsA25000thOfTheWhiteLevel) {
    OpenLut lut;
    Params params{2500.0f, 0.0f};
    lut.ApplyBrightness(params.data());
    for (int c = 0; c < 3; ++c)
        for (int i = 0; i < 1024; ++i)
            ASSERT_NEAR(lut.At(c, i), std::min(static_cast<float>(i) + 102.3f, 1023.0f), 1e-4f);
    EXPECT_EQ(lut.At(0, 1023), 1023.0f);
    EXPECT_EQ(lut.At(0, 921), 1023.0f);
}

TEST(ApplyBrightness, Constant1023IsTheTop) {
    for (const float white : {500.0f, 5000.0f}) {
        OpenLut lut;
        lut.SetWhiteLevel(white);
        Params params{25000.0f, 0.0f};  // adds the white level
        lut.ApplyBrightness(params.data());
        for (int i = 0; i < 1024; ++i)
            ASSERT_NEAR(lut.At(1, i), std::min(static_cast<float>(i) + white, 1023.0f), 1e-3f);
    }
}

// Contrast 5000 is a slope of 2 about 511.5, contrast -5000 one of 1/2.
TEST(ApplyBrightness, BrightnessAndContrastOrder) {
    OpenLut steep, flat;
    Params params{2500.0f, 5000.0f};
    steep.ApplyBrightness(params.data());
    params = {2500.0f, -5000.0f};
    flat.ApplyBrightness(params.data());
    // 400 + 102.3, then doubled from 255.75 on; 400 halved towards 511.5, then + 102.3.
    EXPECT_NEAR(steep.At(0, 400), (502.3f - 255.75f) * 2.0f, 1e-3f);
    EXPECT_NEAR(flat.At(0, 400), 255.75f + 200.0f + 102.3f, 1e-3f);
}

TEST(ApplyBrightness, PivotIsAWhiteLevelBelowTheMiddle) {
    OpenLut lut;
    lut.SetWhiteLevel(400.0f);
    Params params{0.0f, -10000.0f};  // flat at the pivot
    lut.ApplyBrightness(params.data());
    for (int i = 0; i < 3072; ++i) ASSERT_EQ(lut.m_pLut[i], 400.0f);
}

TEST(ApplyBrightness, AgreesWithTheRestatement) {
    for (const float white : {0.0f, 400.0f, 1023.0f, 5000.0f, -10.0f})
        for (const float brightness : {0.0f, 1.0f, 2500.0f, -700.0f, 100000.0f})
            for (const float contrast :
                 {0.0f, 1.0f, 3333.0f, 10000.0f, 10001.0f, -1.0f, -7000.0f, -10000.0f, -20000.0f}) {
                OpenLut lut, expected;
                MakeHostile(lut);
                MakeHostile(expected);
                lut.SetWhiteLevel(white);
                expected.SetWhiteLevel(white);
                Params params{brightness, contrast};
                lut.ApplyBrightness(params.data());
                Brightness(expected, brightness, contrast);
                ASSERT_TRUE(SameCurve(lut, expected))
                    << "white " << white << " params " << brightness << ", " << contrast;
            }
}

// --- ApplyBrightness2 ---------------------------------------------------------

// Truncation between the passes and rounding in each lower 92 codes by one and 37 by two.
TEST(ApplyBrightness2, NeutralDefectIs92CodesOneLowerAnd37Two) {
    for (const float pivot : {0.0f, 0.5f, 1.0f, 0.37f}) {
        OpenLut lut;
        Params params = AllGroups(0.0f, 0.0f, pivot);
        lut.ApplyBrightness2(params.data());
        std::array<unsigned short, 1024> codes[3];
        lut.Build10Bit(codes[0].data(), codes[1].data(), codes[2].data());
        EXPECT_EQ(codes[0], codes[1]);
        EXPECT_EQ(codes[0], codes[2]);

        std::vector<int> lower[3];  // by 0, 1 and 2
        for (int i = 0; i < 1024; ++i) {
            const int by = i - codes[0][static_cast<std::size_t>(i)];
            ASSERT_TRUE(by >= 0 && by <= 2) << i;
            lower[by].push_back(i);
        }
        EXPECT_EQ(lower[0].size(), 895u);
        EXPECT_EQ(lower[1].size(), 92u);
        EXPECT_EQ(lower[2].size(), 37u);
        EXPECT_EQ(codes[0][34], 33);
        EXPECT_EQ(codes[0][35], 33);
        EXPECT_EQ(codes[0][1023], 1023);
    }
}

// Three entries that the first pass makes 33, which the second sees as the same value.
TEST(ApplyBrightness2, WholeCodesInBrightness) {
    OpenLut lut;
    lut.m_pLut[0] = 33.9f;
    lut.m_pLut[1] = 33.0f;
    lut.m_pLut[2] = 34.1f;
    Params params = NeutralBrightness();
    lut.ApplyBrightness2(params.data());
    EXPECT_EQ(Bits{lut.At(0, 0)}, Bits{lut.At(0, 1)});
    EXPECT_EQ(Bits{lut.At(0, 34)}, Bits{lut.At(0, 1)});  // its sum falls just under 34
    EXPECT_NEAR(lut.At(0, 2), 34.0f, 1e-4f);
}

TEST(ApplyBrightness2, MasterBrightness100IsWhiteEverywhere) {
    for (const float white : {1023.0f, 940.0f, 300.0f}) {
        OpenLut lut;
        lut.SetWhiteLevel(white);
        Params params = With(NeutralBrightness(), {{1, 100.0f}});
        lut.ApplyBrightness2(params.data());
        // Entry 0 gains the white level less what the weighted sum loses; it is
        // truncated, so 940 may become 939.
        for (int i = 0; i < 3072; ++i) ASSERT_NEAR(lut.m_pLut[i], white, 1.001f) << i;
        for (int i = 2; i < 1024; ++i) ASSERT_NEAR(lut.At(0, i), white, 1e-3f) << i;
    }
}

TEST(ApplyBrightness2, BrightnessAddsAPartOfTheWhiteLevelByRange) {
    OpenLut lut;
    Params params = With(NeutralBrightness(), {{21, 50.0f}});  // highlights
    lut.ApplyBrightness2(params.data());
    for (const int i : {0, 100, 300, 500}) {
        const float x = static_cast<float>(i) / 1023.0f;
        const float whole = std::floor(static_cast<float>(i) + 511.5f * x * x + 1e-3f);
        EXPECT_NEAR(lut.At(0, i), whole, 1e-3f) << i;
    }
}

// A pivot of 0.5 is half a code: contrast 50 doubles what lies above code 0.25. About
// the middle of the scale code 100 would become 0.
TEST(ApplyBrightness2, PivotNearBlack) {
    OpenLut lut;
    Params params = With(NeutralBrightness(), {{2, 50.0f}});
    lut.ApplyBrightness2(params.data());
    EXPECT_NEAR(lut.At(0, 100), (99.0f - 0.25f) * 2.0f, 1e-3f);  // 100 truncates to 99
    EXPECT_NEAR(lut.At(0, 500), (500.0f - 0.25f) * 2.0f, 1e-3f);
    EXPECT_EQ(lut.At(0, 513), 1023.0f);
    EXPECT_EQ(lut.At(0, 0), 0.0f);
}

// Highlights flat at the pivot of half a code, so the result tells the weights in use.
TEST(ApplyBrightness2, ContrastWeightsAreLookedUpAtTheBrightenedValue) {
    OpenLut lut;
    Params params = With(NeutralBrightness(), {{1, 50.0f}, {22, -100.0f}});
    lut.ApplyBrightness2(params.data());
    const auto blend = [](float v, int at) {
        const float x = static_cast<float>(at) / 1023.0f;
        return 0.5f * x * x + v * (1.0f - x * x);
    };
    EXPECT_NEAR(lut.At(0, 100), blend(611.0f, 611), 0.01f);  // 100 + 511.5, truncated
    EXPECT_GT(blend(611.0f, 100) - blend(611.0f, 611), 100.0f);
}

TEST(ApplyBrightness2, BrightnessComesFirstWhateverTheSignOfTheContrast) {
    for (const float contrast : {50.0f, -50.0f}) {
        OpenLut lut;
        Params params = With(NeutralBrightness(), {{1, 10.0f}, {2, contrast}});
        lut.ApplyBrightness2(params.data());
        // 200 + 102.3 is 302 whole codes; then a slope of 2 or 1/2 about half a code.
        const float expected = contrast > 0.0f ? (302.0f - 0.25f) * 2.0f : 302.0f / 2.0f + 0.25f;
        EXPECT_NEAR(lut.At(0, 200), expected, 1e-3f) << contrast;
    }
}

TEST(ApplyBrightness2, FlatteningAboutPivotZeroStoresNaN) {
    OpenLut lut;
    Params params = With(NeutralBrightness(), {{2, -50.0f}, {3, 0.0f}});
    lut.ApplyBrightness2(params.data());
    for (int i = 0; i < 3072; ++i) ASSERT_TRUE(std::isnan(lut.m_pLut[i])) << i;
    std::array<unsigned short, 1024> r, g, b;
    lut.Build10Bit(r.data(), g.data(), b.data());
    for (const unsigned short code : r) ASSERT_EQ(code, 0);
}

TEST(ApplyBrightness2, SteepeningAboutPivotZeroIsBlackUpToTheWhiteLevel) {
    OpenLut lut;
    Params params = With(NeutralBrightness(), {{2, 50.0f}, {3, 0.0f}});
    lut.ApplyBrightness2(params.data());
    for (int i = 0; i < 3072; ++i) ASSERT_EQ(lut.m_pLut[i], 0.0f) << i;
}

TEST(ApplyBrightness2, NaNEntryEndsAsBlack) {
    OpenLut lut;
    lut.m_pLut[500] = kNaN;
    Params params = NeutralBrightness();
    lut.ApplyBrightness2(params.data());
    EXPECT_EQ(lut.At(0, 500), 0.0f);
}

// Only the clamp and the truncated value stop at 1023; brightness itself takes its part
// of 5000.
TEST(ApplyBrightness2, WhiteLevelAbove1023) {
    OpenLut lut;
    lut.SetWhiteLevel(5000.0f);
    Params params = With(NeutralBrightness(), {{1, 10.0f}});
    lut.ApplyBrightness2(params.data());
    EXPECT_NEAR(lut.At(0, 200), 700.0f, 1.001f);
    EXPECT_EQ(lut.At(0, 1023), 1023.0f);
}

TEST(ApplyBrightness2, AgreesWithTheRestatementOnRandomSettings) {
    const unsigned seed = 20240612;
    std::mt19937 random(seed);
    std::uniform_real_distribution<float> percent(-100.0f, 100.0f), fraction(0.0f, 1.0f);
    constexpr float kWhite[] = {1023.0f, 940.0f, 0.0f, 5000.0f, -20.0f};
    for (int run = 0; run < 300; ++run) {
        Params params{};
        for (const auto& group : kEntry)
            for (int control = 0; control < 3; ++control)
                for (int who = 0; who < 4; ++who) {
                    float value = control == 2 ? fraction(random) : percent(random);
                    // Extremes and exact defaults arise often, as they do on sliders.
                    if (run % 4 == 1) value = control == 2 ? std::round(value * 2) / 2 : 0.0f;
                    if (run % 4 == 2) value = control == 2 ? 0.5f : std::round(value / 50) * 50;
                    params[static_cast<std::size_t>(group[control][who])] = value;
                }
        OpenLut lut, expected;
        lut.SetWhiteLevel(run % 3 ? 1023.0f : kWhite[run / 3 % 5]);
        expected.SetWhiteLevel(lut.m_fWhiteLevel);
        if (run % 5 == 0) {
            MakeHostile(lut);
            MakeHostile(expected);
        }
        lut.ApplyBrightness2(params.data());
        Brightness2(expected, params);
        ASSERT_TRUE(SameCurve(lut, expected)) << "seed " << seed << " run " << run;
    }
}

}  // namespace
