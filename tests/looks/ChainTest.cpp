// Several effects in a row: pixels, alpha, memory, and which effect a setting is for.

#include "tests/looks/LooksTest.h"

#include <cmath>
#include <sstream>

namespace {

using namespace zel::test;

class ChainOfEffects : public LooksTest {
protected:
    void SetUp() override {
        WriteText("warm.json", R"({"effect": "ZEL Color Balance", "version": 1,
                                   "parameters": {"Highlights/Red": 40, "Shadows/Blue": -55}})");
        WriteText("lift.json", R"({"effect": "Gamma/Gain/Offset", "version": 1,
                                   "parameters": {"Master/Gamma": 1.4, "Master/Offset": 6}})");
        WriteText("log.json", R"({"effect": "Log/Linear Conversion", "version": 1})");
    }

    /// A curve's numbers, as zelfx curve writes them.
    std::vector<std::array<float, 3>> Curve(const Words& look) const {
        Succeeds(Words{"curve"} + look + Words{"-o", "curve.csv"});
        std::istringstream lines(ReadText("curve.csv"));
        std::string line;
        std::getline(lines, line);
        std::vector<std::array<float, 3>> rows;
        while (std::getline(lines, line)) {
            std::array<float, 3> row;
            int code;
            if (std::sscanf(line.c_str(), "%d,%f,%f,%f", &code, &row[0], &row[1], &row[2]) == 4)
                rows.push_back(row);
        }
        EXPECT_EQ(rows.size(), 1024u);
        return rows;
    }
};

TEST_F(ChainOfEffects, IsOneRenderBehindTheOther) {
    const Samples ramp = Ramp();
    MakePicture("in.png", 1024, ramp);
    for (const std::string& suffix : {std::string(".png"), std::string(".exr")}) {
        Succeeds({"render", "in.png", "a" + suffix, "-p", "warm.json", "-q"});
        Succeeds({"render", "a" + suffix, "b" + suffix, "-p", "lift.json", "-q"});
        Succeeds({"render", "b" + suffix, "c" + suffix, "-p", "log.json", "-q"});
        Succeeds({"render", "in.png", "chain" + suffix, "-p", "warm.json", "-p", "lift.json", "-p",
                  "log.json", "--depth", suffix == ".exr" ? "float" : "16", "-q"});
        if (suffix == ".png") {
            EXPECT_EQ(ReadPicture("chain.png"), ReadPicture("c.png"));
        }
    }
    Succeeds({"render", "in.png", "swapped.png", "-p", "lift.json", "-p", "warm.json"});
    Succeeds({"render", "in.png", "two.png", "-p", "warm.json", "-p", "lift.json"});
    EXPECT_NE(ReadPicture("swapped.png"), ReadPicture("two.png")) << "the order counts";
}

TEST_F(ChainOfEffects, SaysWhatItWentThrough) {
    const Outcome run =
        Succeeds({"render", kPhotograph, "out.png", "-p", "warm.json", "-p", "lift.json"});
    EXPECT_NE(run.out.find("ZEL Color Balance, then Gamma/Gain/Offset"), std::string::npos)
        << run.out;
}

TEST_F(ChainOfEffects, KeepsTheAlphaOfTheSource) {
    Tool({"convert", "-size", "64x4", "gradient:red-blue", "-alpha", "set", "-channel", "A",
          "-evaluate", "set", "37%", "-depth", "16", "in.png"});
    const auto alphaOf = [&](const std::string& file) {
        Tool(
            {"convert", file, "-alpha", "extract", "-depth", "16", "-endian", "LSB", "gray:a.raw"});
        return folder.Read("a.raw");
    };
    for (const Words& presets : {Words{"-p", "warm.json", "-p", "lift.json"},
                                 Words{"-p", "warm.json", "-p", "lift.json", "-p", "log.json"}}) {
        Succeeds(Words{"render", "in.png", "out.png"} + presets);
        EXPECT_EQ(alphaOf("out.png"), alphaOf("in.png"));
    }
}

TEST_F(ChainOfEffects, HoldsTwoFramesHoweverLongItIs) {
    if (ZEL_SANITIZED) GTEST_SKIP() << "the sanitizer holds freed memory back";
    constexpr int kWidth = 4000, kHeight = 3000;
    constexpr long kFrameKiB = 4L * kWidth * kHeight / 1024;
    Tool({"convert", "-size", "4000x3000", "xc:gray50", "-depth", "8", "-type", "TrueColor",
          "PNG24:in.png"});
    const Words render{"render", "in.png", "out.png", "-q", "-p", "warm.json"};
    const long one = Zelfx(render).peakKiB;
    const long four =
        Zelfx(render + Words{"-p", "lift.json", "-p", "log.json", "-p", "warm.json"}).peakKiB;
    EXPECT_GT(one, 2 * kFrameKiB) << "a frame is smaller than thought";
    EXPECT_LT(four - one, kFrameKiB / 4) << one << " KiB for one effect, " << four << " for four";
}

TEST_F(ChainOfEffects, SettingsAreForTheLastOrForTheNamedEffect) {
    const Words both{"-p", "warm.json", "-p", "lift.json"};
    WriteText("lift2.json", R"({"effect": "Gamma/Gain/Offset", "version": 1,
                                "parameters": {"Master/Gamma": 2, "Master/Offset": 6}})");
    WriteText("warm2.json", R"({"effect": "ZEL Color Balance", "version": 1,
                                "parameters": {"Highlights/Red": -9, "Shadows/Blue": -55}})");
    EXPECT_EQ(RenderedCodes(both + Words{"-s", "master.gamma=2"}),
              RenderedCodes({"-p", "warm.json", "-p", "lift2.json"}));
    EXPECT_EQ(RenderedCodes(both + Words{"-e", "color_balance", "-s", "highlights.red=-9"}),
              RenderedCodes({"-p", "warm2.json", "-p", "lift.json"}));
    // An effect that no preset is for comes last.
    EXPECT_EQ(RenderedCodes({"-p", "warm.json", "-e", "log_linear_conversion", "--linear-to-log"}),
              RenderedCodes({"-p", "warm.json", "-p", "log.json", "--linear-to-log"}));
    Fails({"render", kPhotograph, "out.png", "-p", "warm.json", "-p", "lift.json", "-s",
           "highlights.red=1"},
          2, {"highlights.red"});
    Fails(
        {"render", kPhotograph, "out.png", "-p", "log.json", "-p", "warm.json", "--linear-to-log"},
        2, {"--linear-to-log"});
}

TEST_F(ChainOfEffects, PlaysAfterEffectsThroughout) {
    MakePicture("in.png", 1024, Ramp());
    const Outcome run = Zelfx({"render", "in.png", "ae.png", "-p", "warm.json", "-p", "lift.json",
                               "--host", "ae", "--range16", "ae"});
    EXPECT_EQ(run.status, 0) << run.err;
    EXPECT_NE(run.err.find("516"), std::string::npos) << run.err;
    Succeeds({"render", "in.png", "premiere.png", "-p", "warm.json", "-p", "lift.json", "--range16",
              "ae"});
    EXPECT_EQ(ReadPicture("ae.png"), ReadPicture("premiere.png"));
}

TEST_F(ChainOfEffects, NeedsAnEffect) {
    Fails({"render", kPhotograph, "out.png"}, 2, {"effect is missing", "--preset"});
    Fails({"curve"}, 2, {"effect is missing"});
    Fails({"export", "-o", "x.cube"}, 2, {"effect is missing"});
    Fails({"render", kPhotograph, "out.png", "-e", "warm.json"}, 2, {"'warm.json'", "--preset"});
    Fails({"render", kPhotograph, "out.png", "-p", "warm.json", "--host", "resolve"}, 2,
          {"--host", "'resolve'", "premiere or ae"});
}

TEST_F(ChainOfEffects, ExactCurveIsWhatTheModulesRender) {
    const auto curve = Curve({"warm.json", "lift.json", "log.json", "--exact"});
    const Codes codes = RenderedCodes({"-p", "warm.json", "-p", "lift.json", "-p", "log.json"});
    for (std::size_t i = 0; i < 1024; ++i)
        for (std::size_t c = 0; c < 3; ++c)
            ASSERT_EQ(curve[i][c], static_cast<float>(codes[c][i])) << "code " << i << " of " << c;
}

TEST_F(ChainOfEffects, FloatCurveInterpolatesBetweenCodes) {
    const auto first = Curve({"warm.json"}), then = Curve({"lift.json"});
    const auto chain = Curve({"warm.json", "lift.json"});
    int between = 0;
    for (std::size_t i = 0; i < 1024; ++i)
        for (std::size_t c = 0; c < 3; ++c) {
            const double at = static_cast<double>(first[i][c]);
            const auto below = static_cast<std::size_t>(at);
            const double part = at - static_cast<double>(below);
            double wanted = static_cast<double>(then[below][c]);
            if (part > 0.0) wanted += part * (static_cast<double>(then[below + 1][c]) - wanted);
            between += part > 0.0;
            ASSERT_NEAR(chain[i][c], wanted, 1e-3) << "code " << i << " of channel " << c;
        }
    EXPECT_GT(between, 1000) << "hardly anything to interpolate";
}

}  // namespace
