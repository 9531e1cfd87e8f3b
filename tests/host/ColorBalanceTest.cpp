/// The module zel_color_balance against arithmetic written out here: no part of the
/// engine is linked into what these pixels are compared with.

#include "tests/host/Modules.h"
#include "tests/host/Pixels.h"

#include <algorithm>
#include <random>

namespace zel::test {
namespace {

// Every step of single precision as a double operation, rounded once: 53 bits hold the
// exact sum or product of two floats before rounding.
float Add(float a, float b) { return static_cast<float>(static_cast<double>(a) + b); }
float Mul(float a, float b) { return static_cast<float>(static_cast<double>(a) * b); }
float Div(float a, float b) { return static_cast<float>(static_cast<double>(a) / b); }
float Limit(float x) { return std::clamp(x, -100.0f, 100.0f); }

float Balanced(const float* values, int channel, int code) {
    const auto sum = [&](int all) { return Add(values[all], values[all + 1 + channel]); };
    const float master = Limit(sum(1));
    const float h = Mul(Add(master, sum(7)), 0.01f);
    const float m = Mul(Limit(Add(sum(13), master)), 0.01f);
    const float s = Mul(Limit(Add(sum(19), master)), 0.01f);

    const float t = static_cast<float>(code);
    const float x = Div(t, 1023.0f), rest = Add(1.0f, -x);
    const float highlights = Mul(x, x), shadows = Mul(rest, rest);
    const float midtones = Div(Mul(Add(rest, rest), t), 1023.0f);

    const float sumOfTwo =
        Add(Mul(Add(Mul(t, h), t), highlights), Mul(Add(Mul(t, m), t), midtones));
    return std::clamp(Add(sumOfTwo, Mul(Add(t, Mul(t, s)), shadows)), 0.0f, 1023.0f);
}

Curve BalancedCurve(const float* values) {
    Curve curve;
    for (int c = 0; c < 3; ++c)
        for (int i = 0; i < 1024; ++i)
            curve[static_cast<std::size_t>(c)][static_cast<std::size_t>(i)] =
                Balanced(values, c, i);
    return curve;
}

constexpr int kSliders[] = {1, 2, 3, 4, 7, 8, 9, 10, 13, 14, 15, 16, 19, 20, 21, 22};

class ColorBalanceModule : public testing::Test {
protected:
    LoadedModule module{PathOf("zel_color_balance")};
    RecordingHost host{Personality::Premiere};

    void SetUp() override {
        const auto send = [&](PF_Cmd command) {
            ASSERT_EQ(module.Entry()(command, host.In(), host.Out(), nullptr, nullptr, nullptr), 0);
        };
        send(PF_Cmd_GLOBAL_SETUP);
        send(PF_Cmd_PARAMS_SETUP);
    }

    /// All five formats against the arithmetic above; a frame of 256 x 256
    /// holds every sample value.
    void ExpectGrade(const float* values, int side = 256) {
        ParamList params(host.added);
        host.numParams = params.Count();
        for (const int i : kSliders) params.SetSlider(i + 1, static_cast<double>(values[i]));
        const Curve curve = BalancedCurve(values);
        for (const FrameFormat& format : kFrameFormats) {
            HostFrame source(format.PixelBytes(), {side, side}), got = source, expected = source;
            FillWithSamples(format, source);
            Map(format, curve, source, expected);
            params.SetLayer(source.Layer());
            PF_LayerDef output = got.Layer();
            host.frameFormat = format.code;
            EXPECT_EQ(module.Entry()(PF_Cmd_RENDER, host.In(), host.Out(), params.Pointers(),
                                     &output, nullptr),
                      0);
            EXPECT_TRUE(Same(format, expected, got));
        }
    }
};

TEST_F(ColorBalanceModule, NeutralBalance) {
    const float values[25] = {};
    ExpectGrade(values);
}

TEST_F(ColorBalanceModule, NeutralCurveIsTheIdentityWithinRounding) {
    const float values[25] = {};
    for (int i = 0; i < 1024; ++i) EXPECT_NEAR(Balanced(values, 0, i), i, 0.000062) << i;
}

TEST_F(ColorBalanceModule, RandomGrades) {
    const unsigned seed = 4711;
    std::mt19937 random(seed);
    std::uniform_real_distribution<float> slider(-100.0f, 100.0f);
    for (int run = 0; run < 8; ++run) {
        SCOPED_TRACE("seed " + std::to_string(seed) + ", run " + std::to_string(run));
        float values[25] = {};
        for (const int i : kSliders) values[i] = slider(random);
        ExpectGrade(values);
    }
}

// One slider at a time, so that none can stand in for another.
TEST_F(ColorBalanceModule, EachSliderAlone) {
    for (const int i : kSliders)
        for (const float value : {-100.0f, 37.5f, 100.0f}) {
            SCOPED_TRACE("element " + std::to_string(i) + " at " + std::to_string(value));
            float values[25] = {};
            values[i] = value;
            ExpectGrade(values, 64);
        }
}

// docs/quirks.md, "unclamped highlights".
TEST_F(ColorBalanceModule, HighlightTotalsGoBeyond100) {
    float values[25] = {};
    values[1] = values[7] = values[8] = 100;  // 300 for red, 200 for the others
    ExpectGrade(values);
    EXPECT_GT(Balanced(values, 0, 300), Balanced(values, 1, 300));
}

}  // namespace
}  // namespace zel::test
