#include "tests/cli/CliTest.h"

#include <nlohmann/json.hpp>

#include <map>
#include <sstream>

namespace {

using namespace zel::test;
using nlohmann::json;

class ListDescribe : public CliTest {};

TEST_F(ListDescribe, ListNamesTheEffect) {
    const Outcome run = Zelfx({"list"});
    EXPECT_EQ(run.status, 0) << run.err;
    EXPECT_EQ(run.err, "");
    EXPECT_NE(run.out.find("ZEL Color Balance"), std::string::npos) << run.out;
    EXPECT_NE(run.out.find("zel_color_balance"), std::string::npos) << run.out;
    EXPECT_NE(run.out.find("17 parameters"), std::string::npos) << run.out;
}

TEST_F(ListDescribe, ListAsJson) {
    const Outcome run = Zelfx({"list", "--json"});
    EXPECT_EQ(run.status, 0) << run.err;
    bool found = false;
    for (const json& effect : json::parse(run.out)) {
        if (effect.at("module") != "zel_color_balance") continue;
        found = true;
        EXPECT_EQ(effect.at("name"), "ZEL Color Balance");
        EXPECT_EQ(effect.at("parameters"), 17);
        EXPECT_TRUE(fs::exists(effect.at("file").get<std::string>()));
    }
    EXPECT_TRUE(found) << run.out;
}

TEST_F(ListDescribe, DescribeAsJsonHasEveryParameterAsRegistered) {
    const Outcome run = Zelfx({"describe", "color_balance", "--json"});
    ASSERT_EQ(run.status, 0) << run.err;
    const json effect = json::parse(run.out);
    EXPECT_EQ(effect.at("name"), "ZEL Color Balance");
    EXPECT_EQ(effect.at("formats"), json({"BGRA8", "ARGB8", "BGRA16", "BGRAFloat", "ARGB16"}));
    const json& list = effect.at("parameters");
    ASSERT_EQ(list.size(), 25u);

    const char* groups[] = {"Master", "Highlights", "Midtones", "Shadows"};
    const char* sliders[] = {"RGB", "Red", "Green", "Blue"};
    for (std::size_t row = 0; row < 24; ++row) {
        SCOPED_TRACE(row);
        const json& p = list[row];
        const std::string group = groups[row / 6];
        EXPECT_EQ(p.at("index"), row + 1);
        if (row % 6 == 0) {
            EXPECT_EQ(p.at("kind"), "group");
            EXPECT_EQ(p.at("id"), 1000);
            EXPECT_EQ(p.at("path"), group);
        } else if (row % 6 == 5) {
            EXPECT_EQ(p.at("kind"), "group end");
            EXPECT_EQ(p.at("id"), 1000);
        } else {
            EXPECT_EQ(p.at("kind"), "slider");
            EXPECT_EQ(p.at("id"), row);
            EXPECT_EQ(p.at("path"), group + "/" + sliders[row % 6 - 1]);
            EXPECT_EQ(p.at("minimum"), -100);
            EXPECT_EQ(p.at("maximum"), 100);
            EXPECT_EQ(p.at("default"), 0);
            EXPECT_EQ(p.at("precision"), 2);
        }
    }
    EXPECT_EQ(list[24].at("path"), "ForceRender");
    EXPECT_EQ(list[24].at("kind"), "check box");
    EXPECT_EQ(list[24].at("id"), 24);
    EXPECT_EQ(list[24].at("default"), false);
}

TEST_F(ListDescribe, DescribeAsTable) {
    const Outcome run = Zelfx({"describe", "color_balance"});
    ASSERT_EQ(run.status, 0) << run.err;
    std::istringstream lines(run.out);
    std::string line, words;
    std::getline(lines, line);
    EXPECT_EQ(line, "ZEL Color Balance");
    int sliders = 0, rows = 0;
    while (std::getline(lines, line)) {
        EXPECT_FALSE(line.ends_with(' ')) << "'" << line << "'";
        EXPECT_LE(line.size(), 100u) << line;
        rows += !line.empty();
        sliders += line.find("-100 to 100") != std::string::npos;
    }
    EXPECT_EQ(sliders, 16);
    EXPECT_EQ(rows, 1 + 4 + 16 + 1);  // heading, groups, sliders, check box
}

TEST_F(ListDescribe, EffectsGoByManyNames) {
    WriteFile(In("color_balance"), std::vector<char>{'n', 'o'});  // must not be in the way
    for (const char* name :
         {"color_balance", "Color Balance", "ZEL Color Balance", "zel_color_balance",
          "zel_color_balance.so", "colorbalance", "COLOR-BALANCE", ZELFX_MODULE,
          "Brightness/Contrast/Pivot", "Gamma/Gain/Offset", "log/linear conversion"}) {
        const Outcome run = Zelfx({"describe", name});
        EXPECT_EQ(run.status, 0) << name << ": " << run.err;
    }
}

TEST_F(ListDescribe, HelpFitsAScreen) {
    const Words verbs[] = {{}, {"list"}, {"describe"}, {"render"}};
    for (Words command : verbs) {
        command.push_back("--help");
        const Outcome run = Zelfx(command);
        SCOPED_TRACE(command[0]);
        EXPECT_EQ(run.status, 0);
        EXPECT_EQ(run.err, "");
        EXPECT_LE(LinesOf(run.out), 43u) << run.out;
        std::istringstream lines(run.out);
        for (std::string line; std::getline(lines, line);) EXPECT_LE(line.size(), 100u) << line;
    }
}

TEST_F(ListDescribe, HelpNamesEveryVerbAndOption) {
    const std::string program = Zelfx({"--help"}).out;
    for (const char* verb : {"list", "describe", "render"})
        EXPECT_NE(program.find(verb), std::string::npos) << verb;
    const std::string render = Zelfx({"render", "--help"}).out;
    for (const char* option : {"IN", "OUT", "--effect", "--set", "--host", "--format", "--depth",
                               "--alpha", "--range16", "--endian", "--transfer", "--quiet"})
        EXPECT_NE(render.find(option), std::string::npos) << option;
}

TEST_F(ListDescribe, Version) {
    const Outcome run = Zelfx({"--version"});
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.out, "zelfx " ZELFX_VERSION "\n");
    EXPECT_EQ(run.err, "");
}

TEST_F(ListDescribe, ResultsThatCannotBePrintedAreAFailure) {
    for (const Words& command :
         {Words{"list"}, Words{"list", "--json"}, Words{"describe", "color_balance"},
          Words{"describe", "color_balance", "--json"}}) {
        const Outcome run = Zelfx(command, {.out = "/dev/full"});
        EXPECT_EQ(run.status, 1) << command[0];
        EXPECT_EQ(run.err, "zelfx: cannot write to standard output\n");
    }
}

// --- where modules are looked for -----------------------------------------------

TEST_F(ListDescribe, ModulesAreFoundFromAnyFolder) {
    for (const char* folder : {"/", "/usr", "/proc"}) {
        const Outcome run = Zelfx({"list"}, {.folder = folder});
        EXPECT_EQ(run.status, 0) << folder << ": " << run.err;
        EXPECT_NE(run.out.find("zel_color_balance"), std::string::npos) << folder;
    }
}

TEST_F(ListDescribe, PathVariableComesFirst) {
    fs::create_directories(In("mine"));
    fs::copy_file(ZELFX_MODULE, In("mine/zel_color_balance.so"));
    fs::copy_file(ZELFX_MODULE, In("mine/second.so"));
    const std::string list = In("none").string() + "::" + In("mine").string();
    const Outcome run = Zelfx({"list", "--json"}, {.environment = {{"ZELFX_PATH", list}}});
    EXPECT_EQ(run.status, 0) << run.err;
    std::map<std::string, std::string> files;
    for (const json& effect : json::parse(run.out)) files[effect.at("module")] = effect.at("file");
    EXPECT_EQ(files["zel_color_balance"], In("mine/zel_color_balance.so").string());
    EXPECT_EQ(files["second"], In("mine/second.so").string());
}

TEST_F(ListDescribe, ABrokenModuleHidesNoOther) {
    WriteFile(In("broken.so"), std::string("not a library").data(), 13);
    const Outcome run = Zelfx({"list"}, {.environment = {{"ZELFX_PATH", In("").string()}}});
    EXPECT_EQ(run.status, 4);
    EXPECT_EQ(LinesOf(run.err), 1u) << run.err;
    EXPECT_NE(run.err.find("broken.so"), std::string::npos) << run.err;
    EXPECT_NE(run.out.find("zel_color_balance"), std::string::npos) << run.out;
}

TEST_F(ListDescribe, WithoutModulesTheFoldersAreNamed) {
    fs::copy_file(ZELFX_PROGRAM, In("zelfx"));
    for (const Words& arguments : {Words{"list"}, Words{"describe", "color_balance"}}) {
        const Outcome run = RunProgram(Words{In("zelfx").string()} + arguments);
        EXPECT_EQ(run.status, 4);
        EXPECT_EQ(run.out, "");
        EXPECT_EQ(LinesOf(run.err), 1u) << run.err;
        EXPECT_NE(run.err.find(In("modules").string()), std::string::npos) << run.err;
        EXPECT_NE(run.err.find("ZELFX_PATH"), std::string::npos) << run.err;
    }
}

}  // namespace
