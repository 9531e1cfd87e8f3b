// Results on standard output, messages on standard error, no control codes in either.

#include "tests/cli/CliTest.h"

#include <nlohmann/json.hpp>

namespace {

using namespace zel::test;

class Output : public CliTest {
protected:
    Output() { fs::create_symlink(ZEL_SOURCE_ROOT "/samples/coffee.png", In("in.png")); }
};

void ExpectPlain(const std::string& text) {
    for (const char c : text)
        EXPECT_TRUE(c == '\n' || static_cast<unsigned char>(c) >= ' ') << "control code " << int{c};
}

TEST_F(Output, HasNoEscapesAndNoMessages) {
    const struct {
        Words command;
        int status;
    } cases[] = {
        {{"--help"}, 0},
        {{"--version"}, 0},
        {{"list"}, 0},
        {{"describe", "gamma_gain_offset"}, 0},
        {{"render", "in.png", "out.png", "-e", "color_balance", "-s", "master.red=5"}, 0},
        {{"render", "in.png", "quiet.png", "-e", "color_balance", "--quiet"}, 0},
        {{"curve", "gamma_gain_offset", "-s", "master.gamma=2"}, 0},
        {{"export", "color_balance", "-o", "look.cube"}, 0},
        {{"compare", "in.png", "out.png"}, 1},
        {{"scope", "in.png", "-o", "scope.png"}, 0},
        {{"probe", "in.png", "3,4"}, 0},
        {{"pattern", "pattern.png", "--size", "60x40"}, 0},
        {{"place", "in.png", "placed.png", "--flip"}, 0},
        {{"info"}, 0},
        {{"completion", "bash"}, 0},
        {{"man"}, 0},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.command[0]);
        const Outcome run = Zelfx(c.command, {.environment = {{"TERM", "xterm-256color"}}});
        EXPECT_EQ(run.status, c.status) << run.err;
        EXPECT_EQ(run.err, "");
        EXPECT_EQ(run.out.empty(), c.command.back() == "--quiet") << run.out;
        ExpectPlain(run.out);
    }
}

TEST_F(Output, IsJsonWhereAskedFor) {
    const Words commands[] = {
        {"list"},
        {"describe", "color_balance"},
        {"info"},
        {"curve", "log_linear_conversion"},
        {"probe", "in.png", "3,4"},
        {"compare", "in.png", "in.png"},
    };
    for (Words command : commands) {
        SCOPED_TRACE(command[0]);
        command.push_back("--json");
        const Outcome run = Zelfx(command);
        EXPECT_EQ(run.status, 0) << run.err;
        EXPECT_TRUE(run.out.ends_with('\n'));
        EXPECT_FALSE(nlohmann::json::parse(run.out, nullptr, false).is_discarded()) << run.out;
    }
}

TEST_F(Output, CurveAsJsonIsTheCurve) {
    const auto json =
        nlohmann::json::parse(Zelfx({"curve", "ApplyInvert", "-s", "0=1", "--json"}).out);
    EXPECT_EQ(json["title"], "ApplyInvert");
    ASSERT_EQ(json["red"].size(), 1024u);
    Zelfx({"curve", "ApplyInvert", "-s", "0=1", "-o", "curve.csv"});
    const Bytes csv = ReadFile(In("curve.csv"));
    std::istringstream lines(std::string(csv.begin(), csv.end()));
    std::string line;
    std::getline(lines, line);
    for (std::size_t code = 0; std::getline(lines, line); ++code) {
        std::istringstream fields(line);
        for (const char* channel : {"", "red", "green", "blue"}) {
            std::string field;
            std::getline(fields, field, ',');
            if (*channel)
                EXPECT_EQ(json[channel][code].get<float>(), std::stof(field)) << code;
            else
                EXPECT_EQ(field, std::to_string(code));
        }
    }
}

TEST_F(Output, InfoTellsWhereModulesAreLookedFor) {
    const auto json = nlohmann::json::parse(
        Zelfx({"info", "--json"}, {.environment = {{"ZELFX_PATH", "/a:/b"}}}).out);
    EXPECT_EQ(json["module_folders"][0], "/a");
    EXPECT_EQ(json["module_folders"][1], "/b");
    EXPECT_EQ(json["module_folders"][2],
              (fs::path(ZELFX_PROGRAM).parent_path() / "modules").string());
    EXPECT_EQ(json["levels"][0], "scalar");
    EXPECT_TRUE(json["routines"].contains("fill"));
}

}  // namespace
