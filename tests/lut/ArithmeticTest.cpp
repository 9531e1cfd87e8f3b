#include "tests/support/Lut.h"
#include "tests/support/Single.h"

#include <algorithm>
#include <cmath>

namespace {

using namespace zel::test;

// --- second opinion -----------------------------------------------------------

/// Whole part, never -0; NaN and what no int32 holds count as 0.
double Whole(float t) {
    return t >= -2147483648.0f && t < 2147483648.0f ? std::trunc(double{t}) + 0.0 : 0.0;
}

int Code(double whole) { return static_cast<int>(whole); }

/// One operator, in spelled-out single precision. Comparisons with NaN keep t.
float Operated(int op, float entry, float operand) {
    const Single t{entry}, o{operand}, white{1023.0f}, one{1.0f};
    const double whole = Whole(entry), n = Whole(operand);
    const Single a = (white - o) / white;
    switch (op) {
        case 0: return Single::Rounded(Code(whole) & Code(n)).v;
        case 1: return Single::Rounded(Code(whole) | Code(n)).v;
        case 2: return Single::Rounded(Code(whole) ^ Code(n)).v;
        case 3: return Single::Rounded(whole + n).v;
        case 4: return Single::Rounded(whole - n).v;
        case 5: return ((one - a) * (white - t) + t * a).v;
        case 6: return entry > operand ? operand : entry;
        case 7: return entry < operand ? operand : entry;
        case 8: return entry < operand ? 0.0f : entry;
        case 9: return entry > operand ? 0.0f : entry;
        case 11: return ((o / white) * t).v;
        default: return entry;
    }
}

void Arithmetic(OpenLut& lut, const Params& p) {
    const double code = std::trunc(double{p[0]});
    const int op = code >= 0.0 && code <= 11.0 ? static_cast<int>(code) : -1;
    for (int c = 0; c < 3; ++c) {
        const Single o = (Single{p[static_cast<std::size_t>(c + 1)]} / Single{255}) * Single{1023};
        for (int i = 0; i < 1024; ++i) {
            float& entry = lut.m_pLut[c * 1024 + i];
            const float r = Operated(op, entry, Limited(o, 0.0f, 1023.0f).v);
            entry = Limited({r}, 0.0f, lut.m_fWhiteLevel).v;
        }
    }
}

// --- ApplyArithmetic ----------------------------------------------------------

// One entry through each operator. Operand 51 is 204.6, whole part 204 (0xCC).
TEST(ApplyArithmetic, WorkedValues) {
    const struct {
        const char* name;
        float op, operand, t, expected;
    } cases[] = {
        {"and", 0, 51, 170.9f, 136},
        {"and with all bits drops the fraction", 0, 255, 511.7f, 511},
        {"or", 1, 51, 170.9f, 238},
        {"xor", 2, 51, 170.9f, 102},
        {"add", 3, 51, 100.9f, 304},
        {"add clips at white", 3, 51, 900, 1023},
        {"add all to black", 3, 255, 0, 1023},
        {"subtract", 4, 51, 300.9f, 96},
        {"subtract clips at black", 4, 51, 204, 0},
        {"invert nothing", 5, 0, 200.5f, 200.5f},
        {"invert all", 5, 255, 200, 823},
        {"smaller: the operand", 6, 255, 2000, 1023},
        {"smaller: the entry", 6, 51, 100.25f, 100.25f},
        {"larger: the operand", 7, 0, -3, 0},
        {"larger: the entry", 7, 51, 300.25f, 300.25f},
        {"cut below: under", 8, 255, 1022.5f, 0},
        {"cut below: at", 8, 255, 1023, 1023},
        {"cut above: over", 9, 0, 0.5f, 0},
        {"cut above: at", 9, 0, 0, 0},
        {"cut above: under", 9, 51, 204.5f, 204.5f},
        {"10 only clamps, above", 10, 51, 1500, 1023},
        {"10 only clamps, below", 10, 51, -1, 0},
        {"10 keeps the fraction", 10, 51, 33.25f, 33.25f},
        {"scale by one", 11, 255, 33.25f, 33.25f},
        {"scale by nothing", 11, 0, 1000, 0},
        {"12 is no operator", 12, 51, 33.25f, 33.25f},
        {"negative is no operator", -1, 51, 33.25f, 33.25f},
        {"NaN is no operator", kNaN, 51, 33.25f, 33.25f},
        {"beyond int is no operator", 3e9f, 51, 33.25f, 33.25f},
        {"a code is truncated", 4.9f, 51, 300.9f, 96},
        {"towards zero", -0.9f, 51, 170.9f, 136},
        {"operand below the scale is 0", 3, -10, 5, 5},
        {"operand above the scale is 1023", 4, 1000, 1023, 0},
        {"NaN entry: whole part 0", 3, 51, kNaN, 204},
        {"NaN entry: smaller keeps it", 6, 51, kNaN, kNaN},
        {"NaN entry: larger keeps it", 7, 51, kNaN, kNaN},
        {"NaN entry: cuts keep it", 8, 51, kNaN, kNaN},
        {"NaN entry: scale keeps it", 11, 51, kNaN, kNaN},
        {"NaN operand: smaller keeps the entry", 6, kNaN, 7.5f, 7.5f},
        {"NaN operand: larger keeps the entry", 7, kNaN, 7.5f, 7.5f},
        {"huge entry: whole part 0", 3, 51, 3e9f, 204},
        {"greatest whole part does not overflow", 3, 255, 2147483520.0f, 1023},
    };
    for (const auto& c : cases) {
        OpenLut lut;
        lut.m_pLut[1024 + 600] = c.t;
        Params params{c.op, 0, c.operand, 0};
        lut.ApplyArithmetic(params.data());
        EXPECT_EQ(AnyNaN(lut.At(1, 600)), AnyNaN(c.expected)) << c.name;
    }
}

TEST(ApplyArithmetic, SubtractOnTheIdentity) {
    OpenLut lut;
    Params params{4, 51, 51, 51};
    lut.ApplyArithmetic(params.data());
    for (int c = 0; c < 3; ++c)
        for (int i = 0; i < 1024; ++i)
            ASSERT_EQ(lut.At(c, i), static_cast<float>(std::max(i - 204, 0))) << i;
}

TEST(ApplyArithmetic, EveryChannelHasItsOwnOperand) {
    OpenLut lut;
    Params params{11, 255, 127.5f, 0};  // scale by 1, 1/2 and 0
    lut.ApplyArithmetic(params.data());
    for (int i = 0; i < 1024; ++i) {
        ASSERT_EQ(lut.At(0, i), static_cast<float>(i));
        ASSERT_EQ(lut.At(1, i), static_cast<float>(i) / 2.0f);
        ASSERT_EQ(lut.At(2, i), 0.0f);
    }
}

// Code 10 lies among the operators and does no more than a code that is none.
TEST(ApplyArithmetic, ArithmeticGap) {
    for (const float code : {10.0f, 12.0f}) {
        OpenLut lut;
        lut.SetWhiteLevel(940.0f);
        Params params{code, 51, 102, 153};
        lut.ApplyArithmetic(params.data());
        for (int i = 0; i < 3072; ++i)
            ASSERT_EQ(lut.m_pLut[i], std::min(static_cast<float>(i % 1024), 940.0f)) << code;
    }
}

TEST(ApplyArithmetic, EveryCodeEndsAtTheWhiteLevelAsItIs) {
    for (int op = -1; op <= 13; ++op) {
        OpenLut lut;
        lut.SetWhiteLevel(300.0f);
        Params params{static_cast<float>(op), 80, 80, 80};
        lut.ApplyArithmetic(params.data());
        float most = 0.0f;
        for (int i = 0; i < 3072; ++i) {
            ASSERT_GE(lut.m_pLut[i], 0.0f) << op;
            most = std::max(most, lut.m_pLut[i]);
        }
        EXPECT_LE(most, 300.0f) << op;
        EXPECT_GT(most, 200.0f) << op;
    }
}

TEST(ApplyArithmetic, AgreesWithTheRestatement) {
    for (const float white : {1023.0f, 300.0f, 0.0f, 5000.0f, -20.0f})
        for (float op = -2.0f; op <= 13.0f; op += 0.5f)
            for (const float operand : {0.0f, 0.3f, 51.0f, 128.0f, 254.9f, 255.0f, 300.0f, -4.0f}) {
                OpenLut lut, expected;
                MakeHostile(lut);
                MakeHostile(expected);
                lut.SetWhiteLevel(white);
                expected.SetWhiteLevel(white);
                Params params{op, operand, 255.0f - operand, operand / 2.0f};
                lut.ApplyArithmetic(params.data());
                Arithmetic(expected, params);
                ASSERT_TRUE(SameCurve(lut, expected))
                    << "white " << white << " code " << op << " operand " << operand;
            }
}

// --- ApplyInvert --------------------------------------------------------------

TEST(ApplyInvert, AmountZeroInvertsEveryChannel) {
    for (const float white : {1023.0f, 700.0f}) {
        OpenLut lut;
        lut.SetWhiteLevel(white);
        Params params{0, 0};
        lut.ApplyInvert(params.data());
        for (int c = 0; c < 3; ++c)
            for (int i = 0; i < 1024; ++i)
                ASSERT_EQ(lut.At(c, i), std::min(static_cast<float>(1023 - i), white));
    }
}

// 0 is every channel, so there is no way to name channel 0 alone.
TEST(ApplyInvert, InvertSelector) {
    const struct {
        const char* name;
        float selector;
        bool chosen[3];
    } cases[] = {
        {"0: all", 0, {true, true, true}},
        {"1", 1, {false, true, false}},
        {"2", 2, {false, false, true}},
        {"3: none", 3, {false, false, false}},
        {"-1: none", -1, {false, false, false}},
        {"truncated to 1", 1.9f, {false, true, false}},
        {"truncated towards zero: all", -0.9f, {true, true, true}},
        {"NaN: none", kNaN, {false, false, false}},
        {"beyond int: none", -3e9f, {false, false, false}},
    };
    for (const auto& c : cases) {
        OpenLut lut;
        lut.m_pLut[1] = lut.m_pLut[1025] = lut.m_pLut[2049] = 2000.0f;
        Params params{c.selector, 50};
        lut.ApplyInvert(params.data());
        for (int channel = 0; channel < 3; ++channel) {
            const bool chosen = c.chosen[channel];
            EXPECT_EQ(lut.At(channel, 100), chosen ? 511.5f : 100.0f) << c.name;
            EXPECT_EQ(lut.At(channel, 900), chosen ? 511.5f : 900.0f) << c.name;
            // (1023 - 2000 + 2000) / 2; a channel not chosen is not clamped either.
            EXPECT_EQ(lut.At(channel, 1), chosen ? 511.5f : 2000.0f) << c.name;
        }
    }
}

TEST(ApplyInvert, AmountIsClampedTo0And100) {
    const struct { float amount, like; } cases[] = {{150, 100}, {-20, 0}, {kInf, 100}, {-kInf, 0}};
    for (const auto& c : cases) {
        OpenLut lut, expected;
        lut.m_pLut[3] = expected.m_pLut[3] = 1500.0f;
        Params params{0, c.amount}, like{0, c.like};
        lut.ApplyInvert(params.data());
        expected.ApplyInvert(like.data());
        EXPECT_TRUE(SameCurve(lut, expected)) << c.amount;
    }
}

TEST(ApplyInvert, Amount100OnlyClamps) {
    OpenLut lut;
    lut.m_pLut[3] = 1500.0f;
    lut.m_pLut[4] = -5.0f;
    Params params{0, 100};
    lut.ApplyInvert(params.data());
    EXPECT_EQ(lut.At(0, 3), 1023.0f);
    EXPECT_EQ(lut.At(0, 4), 0.0f);
    for (int i = 5; i < 1024; ++i) ASSERT_EQ(lut.At(0, i), static_cast<float>(i));
}

TEST(ApplyInvert, Constant1023IsTheMirror) {
    OpenLut lut;
    lut.SetWhiteLevel(5000.0f);
    lut.m_pLut[0] = -2000.0f;
    Params params{0, 0};
    lut.ApplyInvert(params.data());
    EXPECT_EQ(lut.At(0, 0), 3023.0f);
    EXPECT_EQ(lut.At(0, 1023), 0.0f);
}

TEST(ApplyInvert, AgreesWithTheRestatement) {
    for (const float white : {1023.0f, 300.0f, 0.0f, 5000.0f, -20.0f})
        for (float amount = -7.0f; amount < 110.0f; amount += 3.1f) {
            OpenLut lut, expected;
            MakeHostile(lut);
            MakeHostile(expected);
            lut.SetWhiteLevel(white);
            Params params{0, amount};
            lut.ApplyInvert(params.data());
            const Single keep = Limited(Single{amount} / Single{100.0f}, 0.0f, 1.0f);
            const Single invert = Single{1.0f} - keep;
            for (int i = 0; i < 3072; ++i) {
                const Single t{expected.m_pLut[i]};
                const Single r = (Single{1023.0f} - t) * invert + t * keep;
                expected.m_pLut[i] = Limited(r, 0.0f, white).v;
            }
            ASSERT_TRUE(SameCurve(lut, expected)) << "white " << white << " amount " << amount;
        }
}

}  // namespace
