#include "tests/lut/GroupEntries.h"
#include "tests/support/Single.h"

#include <algorithm>
#include <cmath>
#include <random>

namespace {

using namespace zel::test;

/// Second opinion, in spelled-out single precision and doubles.
void Log(OpenLut& lut, const Params& p) {
    constexpr int kBase[] = {6, 12, 18};
    const Single top = Limited({lut.m_fWhiteLevel}, 0.0f, 1023.0f);
    for (int c = 0; c < 3; ++c) {
        const auto control = [&](int which, float initial, float most) {
            const Single own{p[static_cast<std::size_t>(kBase[c] + which)]};
            const Single all{p[static_cast<std::size_t>(1 + which)]};
            return Limited((own - Single{initial}) + all, 0.0f, most);
        };
        const Single black = control(0, 95.0f, top.v), white = control(1, 685.0f, top.v);
        const Single display = control(2, 1.0f, 5.0f), film = control(3, 0.6f, 5.0f);

        const Single step = Single{0.002f} / film;
        const double power = (display / Single{1.7f}).v;
        const auto light = [&](Single code) {
            return std::pow(std::pow(10.0, double{((code - white) * step).v}), power);
        };
        const Single gain = Single::Rounded(double{top.v} / (1.0 - light(black)));
        const Single offset = gain - top;
        for (int i = 0; i < 1024; ++i) {
            float& entry = lut.m_pLut[c * 1024 + i];
            const Single v{entry};
            double y;
            if (p[0] < 1.0f) {
                y = light(v) * gain.v - offset.v;
            } else {
                const double quotient = ((offset + v) / gain).v;
                const double root = (Single{1.7f} / display).v;
                y = std::log10(std::pow(quotient, root)) / step.v + white.v;
            }
            entry = Limited(Single::Rounded(y), 0.0f, top.v).v;
        }
    }
}

TEST(ApplyLog, DefaultsMapBlackReferenceTo0AndWhiteReferenceToWhite) {
    OpenLut lut;
    Params params = LogDefaults(0.0f);
    lut.ApplyLog(params.data());
    for (int c = 0; c < 3; ++c) {
        for (int i = 0; i < 95; ++i) ASSERT_EQ(lut.At(c, i), 0.0f) << i;
        EXPECT_NEAR(lut.At(c, 95), 0.0f, 1e-3f);
        for (int i = 96; i < 685; ++i) ASSERT_GT(lut.At(c, i), lut.At(c, i - 1)) << i;
        EXPECT_NEAR(lut.At(c, 685), 1023.0f, 1e-3f);
        for (int i = 686; i < 1024; ++i) ASSERT_EQ(lut.At(c, i), 1023.0f) << i;
    }
}

TEST(ApplyLog, OtherWayMaps0ToBlackReferenceAndWhiteToWhiteReference) {
    OpenLut lut;
    Params params = LogDefaults(1.0f);
    lut.ApplyLog(params.data());
    for (int c = 0; c < 3; ++c) {
        EXPECT_NEAR(lut.At(c, 0), 95.0f, 1e-2f);
        EXPECT_NEAR(lut.At(c, 1023), 685.0f, 1e-2f);
        for (int i = 1; i < 1024; ++i) ASSERT_GT(lut.At(c, i), lut.At(c, i - 1)) << i;
    }
}

TEST(ApplyLog, DirectionsAreInverse) {
    OpenLut lut;
    Params toLog = LogDefaults(1.0f), toLinear = LogDefaults(0.0f);
    lut.ApplyLog(toLog.data());
    lut.ApplyLog(toLinear.data());
    for (int i = 0; i < 1024; ++i) ASSERT_NEAR(lut.At(0, i), static_cast<float>(i), 1e-2f);
}

// The check box reads "Convert to Linear", and off is what converts to linear.
TEST(ApplyLog, LogDirection) {
    Params params = LogDefaults(0.0f);
    OpenLut off, on, broken;
    off.ApplyLog(params.data());
    EXPECT_LT(off.At(0, 200), 150.0f);  // towards linear light, shadows get darker
    params[0] = 1.0f;
    on.ApplyLog(params.data());
    EXPECT_GT(on.At(0, 200), 300.0f);
    params[0] = kNaN;
    broken.ApplyLog(params.data());
    EXPECT_TRUE(SameCurve(broken, on));
}

TEST(ApplyLog, ReferencesFollowTheSliders) {
    OpenLut lut;
    // Red: black at 95 + 5 + 25, white at 685 - 85 + 15.
    Params params = With(LogDefaults(0.0f), {{1, 100.0f}, {2, 600.0f}, {6, 120.0f}, {7, 700.0f}});
    lut.ApplyLog(params.data());
    EXPECT_NEAR(lut.At(0, 125), 0.0f, 1e-3f);
    EXPECT_GT(lut.At(0, 126), 0.0f);
    EXPECT_EQ(lut.At(0, 124), 0.0f);
    EXPECT_NEAR(lut.At(0, 615), 1023.0f, 1e-3f);
    EXPECT_NEAR(lut.At(1, 100), 0.0f, 1e-3f);
    EXPECT_NEAR(lut.At(1, 600), 1023.0f, 1e-3f);
}

TEST(ApplyLog, RedFilmGammaMovesOnlyRed) {
    OpenLut neutral, moved;
    Params params = LogDefaults(0.0f);
    neutral.ApplyLog(params.data());
    params[9] = 0.8f;
    moved.ApplyLog(params.data());
    EXPECT_GT(std::fabs(moved.At(0, 300) - neutral.At(0, 300)), 1.0f);
    for (int c = 1; c < 3; ++c)
        for (int i = 0; i < 1024; ++i)
            ASSERT_EQ(Bits{moved.At(c, i)}, Bits{neutral.At(c, i)}) << c << ", " << i;
}

// Black above white: the gain is negative, the curve falls, its ends are where they were.
TEST(ApplyLog, BlackReferenceAboveWhite) {
    OpenLut lut, expected;
    Params params = With(LogDefaults(0.0f), {{1, 685.0f}, {2, 95.0f}});
    lut.ApplyLog(params.data());
    EXPECT_NEAR(lut.At(0, 685), 0.0f, 1e-2f);
    EXPECT_NEAR(lut.At(0, 95), 1023.0f, 1e-2f);
    EXPECT_EQ(lut.At(0, 1000), 0.0f);
    EXPECT_EQ(lut.At(0, 10), 1023.0f);
    Log(expected, params);
    EXPECT_TRUE(SameCurve(lut, expected));
}

// The density step is infinite: black below the white reference, white above it, and
// no number at it.
TEST(ApplyLog, FilmGammaZero) {
    OpenLut lut;
    Params params = With(LogDefaults(0.0f), {{4, 0.0f}});
    lut.ApplyLog(params.data());
    for (int i = 0; i < 1024; ++i) {
        const float expected = i < 685 ? 0.0f : i > 685 ? 1023.0f : kNaN;
        ASSERT_EQ(AnyNaN(lut.At(0, i)), AnyNaN(expected)) << i;
    }
}

// Gain and offset are infinite and meet in a difference.
TEST(ApplyLog, DisplayGammaZero) {
    OpenLut lut;
    Params params = With(LogDefaults(0.0f), {{3, 0.0f}});
    lut.ApplyLog(params.data());
    for (int i = 0; i < 3072; ++i) ASSERT_TRUE(std::isnan(lut.m_pLut[i])) << i;
    std::array<unsigned char, 256> r, g, b;
    lut.Build8Bit(r.data(), g.data(), b.data());
    for (const unsigned char byte : r) ASSERT_EQ(byte, 0);
}

TEST(ApplyLog, WhiteLevelAbove1023CountsAs1023) {
    for (const float direction : {0.0f, 1.0f}) {
        OpenLut high, standard;
        high.SetWhiteLevel(4000.0f);
        Params params = LogDefaults(direction);
        high.ApplyLog(params.data());
        standard.ApplyLog(params.data());
        EXPECT_TRUE(SameCurve(high, standard));
    }
}

TEST(ApplyLog, LowerWhiteLevelIsTheTop) {
    OpenLut lut;
    lut.SetWhiteLevel(940.0f);
    Params params = LogDefaults(0.0f);
    lut.ApplyLog(params.data());
    EXPECT_NEAR(lut.At(0, 685), 940.0f, 1e-3f);
    EXPECT_EQ(lut.At(0, 900), 940.0f);
}

TEST(ApplyLog, AgreesWithTheRestatementOnRandomSettings) {
    const unsigned seed = 20240614;
    std::mt19937 random(seed);
    std::uniform_real_distribution<float> code(0.0f, 1023.0f), gamma(0.0f, 5.0f);
    constexpr float kWhite[] = {1023.0f, 940.0f, 0.0f, 5000.0f, -20.0f};
    for (int run = 0; run < 160; ++run) {
        Params params = LogDefaults(static_cast<float>(run % 2));
        for (const int first : {1, 6, 12, 18})
            for (int which = 0; which < 4; ++which) {
                float& value = params[static_cast<std::size_t>(first + which)];
                const float any = which < 2 ? code(random) : gamma(random);
                if (run % 8 < 4) value = any;
                if (run % 8 == 5) value = which < 2 ? std::round(any) : std::round(any * 2) / 2;
                if (run % 8 > 5 && random() % 4 == 0) value += which < 2 ? any / 50 : any / 10;
            }
        OpenLut lut, expected;
        lut.SetWhiteLevel(run % 3 ? 1023.0f : kWhite[run / 3 % 5]);
        expected.SetWhiteLevel(lut.m_fWhiteLevel);
        if (run % 5 == 0) {
            MakeHostile(lut);
            MakeHostile(expected);
        }
        lut.ApplyLog(params.data());
        Log(expected, params);
        ASSERT_TRUE(SameCurve(lut, expected)) << "seed " << seed << " run " << run;
    }
}

}  // namespace
