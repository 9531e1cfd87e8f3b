// zelfx curve, and the plain words about the log effect's check box.

#include "tests/cli/CliTest.h"

#include <nlohmann/json.hpp>

#include <sstream>

namespace {

using namespace zel::test;

class CurveVerb : public CliTest {
protected:
    /// Rows "code, red, green, blue" of a .csv that zelfx wrote.
    std::vector<std::array<double, 4>> Csv(const Words& arguments) {
        const Outcome run = Zelfx(Words{"curve"} + arguments + Words{"-o", "curve.csv"});
        EXPECT_EQ(run.status, 0) << run.err;
        const Bytes bytes = ReadFile(In("curve.csv"));
        std::istringstream lines(std::string(bytes.begin(), bytes.end()));
        std::string line;
        std::getline(lines, line);
        EXPECT_EQ(line, "code,red,green,blue");
        std::vector<std::array<double, 4>> rows;
        while (std::getline(lines, line)) {
            std::ranges::replace(line, ',', ' ');
            std::istringstream fields(line);
            auto& row = rows.emplace_back();
            for (double& field : row) {
                std::string text;
                fields >> text;
                field = std::stod(text);
            }
        }
        EXPECT_EQ(rows.size(), 1024u);
        return rows;
    }
};

TEST_F(CurveVerb, NumbersOfColorBalanceAreTheRestatedCurve) {
    Words arguments{"color_balance"};
    for (const std::string& word : VividOptions()) arguments.push_back(word);
    const auto floats = Csv(arguments);
    arguments.push_back("--exact");
    const auto exact = Csv(arguments);
    const auto curves = CurvesOf(kVivid);
    for (std::size_t i = 0; i < 1024; ++i)
        for (std::size_t c = 0; c < 3; ++c) {
            ASSERT_EQ(exact[i][1 + c], curves[c].Code(i)) << i;
            ASSERT_EQ(static_cast<unsigned>(floats[i][1 + c]), curves[c].Code(i)) << i;
        }
}

TEST_F(CurveVerb, NeutralBrightnessExports35As33) {
    const auto rows = Csv({"brightness_contrast_pivot", "--exact"});
    int unchanged = 0, oneLower = 0, twoLower = 0;
    for (std::size_t i = 0; i < 1024; ++i) {
        const double lower = static_cast<double>(i) - rows[i][1];
        unchanged += lower == 0;
        oneLower += lower == 1;
        twoLower += lower == 2;
    }
    EXPECT_EQ(rows[35][1], 33);
    EXPECT_EQ(unchanged, 895);
    EXPECT_EQ(oneLower, 92);
    EXPECT_EQ(twoLower, 37);
}

TEST_F(CurveVerb, NeutralGammaIsNeutralBalance) {
    EXPECT_EQ(Csv({"gamma_gain_offset"}), Csv({"color_balance"}));
}

TEST_F(CurveVerb, LogReferences) {
    for (const Words& options : {Words{}, Words{"--log-to-linear"}, Words{"-s", "0=off"}}) {
        const auto rows = Csv(Words{"log_linear_conversion", "--exact"} + options);
        EXPECT_EQ(rows[95][1], 0);
        EXPECT_EQ(rows[0][1], 0);
        EXPECT_NEAR(rows[685][1], 1023, 1);
        EXPECT_EQ(rows[700][1], 1023);
    }
    const auto rows = Csv({"log_linear_conversion", "--linear-to-log", "--exact"});
    EXPECT_NEAR(rows[0][1], 95, 1);
    EXPECT_NEAR(rows[1023][1], 685, 1);
}

TEST_F(CurveVerb, EngineOperationsByNumber) {
    const auto rows = Csv({"ApplyInvert", "-s", "0=1", "-s", "1=50"});
    for (std::size_t i = 0; i < 1024; ++i) {
        EXPECT_EQ(rows[i][1], static_cast<double>(i));
        EXPECT_EQ(rows[i][2], 511.5);
        EXPECT_EQ(rows[i][3], static_cast<double>(i));
    }
}

TEST_F(CurveVerb, PicturesAreReadByOthers) {
    const Words setting{"curve", "gamma_gain_offset", "-s", "master.gamma=1.2",
                        "-s",    "master.offset=-10", "-o"};
    for (const char* file : {"curve.png", "curve.svg"}) {
        Words arguments = setting;
        arguments.push_back(file);
        ASSERT_EQ(Zelfx(arguments).status, 0);
    }
    EXPECT_EQ(Tool({"identify", "-format", "%m %w %h", "curve.png"}).out, "PNG 700 776");
    // The curve's middle is dark on white; the corner left of the axes is white.
    const std::string white =
        Tool({"convert", "curve.png", "-format", "%[pixel:p{3,3}]", "info:"}).out;
    EXPECT_NE(white.find("255"), std::string::npos) << white;
    const Bytes svg = ReadFile(In("curve.svg"));
    const std::string text(svg.begin(), svg.end());
    EXPECT_NE(text.find("<svg"), std::string::npos);
    EXPECT_NE(text.find("</svg>"), std::string::npos);
}

TEST_F(CurveVerb, TerminalShowsPlotValuesAndLosses) {
    const Outcome run = Zelfx({"curve", "gamma_gain_offset", "-s", "master.gamma=1.2", "-s",
                               "master.offset=-10", "-s", "highlights.red_channel.gain=1.5"});
    EXPECT_EQ(run.status, 0);
    for (const char* text : {"Gamma/Gain/Offset", "Master/Gamma 1.2", "clipped at 1023:", "red",
                             "no number (NaN):", "all 0-102"})
        EXPECT_NE(run.out.find(text), std::string::npos) << text << " in\n" << run.out;
    std::istringstream lines(run.out);
    for (std::string line; std::getline(lines, line);) EXPECT_LE(line.size(), 100u) << line;
}

TEST_F(CurveVerb, Refusals) {
    ExpectRefused({"curve", "color_balance", "-o", "x.gif"}, 2,
                  {"'x.gif'", ".svg, .png, .csv or .txt"});
    ExpectRefused({"curve", "color_balance", "-o", "no/x.csv"}, 1, {"'no/x.csv'", "no folder"});
    ExpectRefused({"curve", "color_balance", "--linear-to-log"}, 2,
                  {"--linear-to-log", "Log/Linear"});
    ExpectRefused({"curve", "log_linear_conversion", "--linear-to-log", "--log-to-linear"}, 2,
                  {"exclude each other"});
    ExpectRefused({"curve", "ApplyInvert", "-s", "amount=5"}, 2, {"'amount=5'", "ENTRY=VALUE"});
    ExpectRefused({"curve", "ApplyInvert", "-s", "128=5"}, 2, {"'128=5'", "0 to 127"});
    ExpectRefused({"curve", "ApplyInvert", "--exact"}, 2, {"--exact", "ApplyInvert"});
    ExpectRefused({"curve", "nothing"}, 4, {"'nothing'"});
}

TEST_F(CurveVerb, DescribeSaysWhatTheLogCheckBoxDoes) {
    const std::string words = "off: log to linear; on: linear to log";
    EXPECT_NE(Zelfx({"describe", "log_linear_conversion"}).out.find(words), std::string::npos);
    const auto json =
        nlohmann::json::parse(Zelfx({"describe", "log_linear_conversion", "--json"}).out);
    EXPECT_EQ(json["parameters"][0]["name"], "Convert to Linear");
    EXPECT_EQ(json["parameters"][0]["meaning"], words);
    EXPECT_EQ(Zelfx({"describe", "color_balance"}).out.find("meaning"), std::string::npos);
}

TEST_F(CurveVerb, RenderTakesTheAliasesAndSaysTheDirection) {
    const std::vector<std::uint16_t> ramp{95 << 6, 95 << 6, 95 << 6, 685 << 6, 685 << 6, 685 << 6};
    MakeWithMagick("in.png", 2, 1, ramp, {"-define", "png:bit-depth=16"});
    const Outcome linear =
        Zelfx({"render", "in.png", "lin.png", "-e", "log_linear_conversion", "--log-to-linear"});
    EXPECT_NE(linear.out.find("log to linear (the check box is off)"), std::string::npos)
        << linear.out;
    EXPECT_EQ(ReadWithMagick<std::uint16_t>("lin.png")[0] >> 6, 0);
    EXPECT_NEAR(ReadWithMagick<std::uint16_t>("lin.png")[3] >> 6, 1023, 1);

    const Outcome log =
        Zelfx({"render", "in.png", "log.png", "-e", "log_linear_conversion", "--linear-to-log"});
    EXPECT_NE(log.out.find("linear to log (the check box is on)"), std::string::npos) << log.out;
    const Outcome box = Zelfx({"render", "in.png", "box.png", "-e", "log_linear_conversion", "-s",
                               "Convert to Linear=on"});
    EXPECT_EQ(box.status, 0);
    EXPECT_EQ(ReadFile(In("log.png")), ReadFile(In("box.png")));
}

}  // namespace
