// Looks in files: what is written, what is read, and what is refused.

#include "tests/looks/LooksTest.h"

#include <nlohmann/json.hpp>

namespace {

using namespace zel::test;
using nlohmann::json;

class Preset : public LooksTest {};

constexpr const char* kCool =
    R"({"effect": "ZEL Color Balance", "version": 1,
        "parameters": {"Midtones/Red": -12, "Midtones/Blue": 30.5}})";

TEST_F(Preset, RendersWhatTheOptionsRender) {
    WriteText("cool.json", kCool);
    const Codes wanted = RenderedCodes(
        {"-e", "color_balance", "-s", "midtones.red=-12", "-s", "midtones.blue=30.5"});
    EXPECT_EQ(RenderedCodes({"--preset", "cool.json"}), wanted);
    EXPECT_NE(RenderedCodes({"-e", "color_balance"}), wanted);
}

TEST_F(Preset, MissingParametersAreAtTheirDefault) {
    const Codes wanted = RenderedCodes({"-e", "color_balance"});
    for (const char* text : {R"({"effect": "ZEL Color Balance", "version": 1})",
                             R"({"version": 1, "parameters": {}, "effect": "color_balance"})"}) {
        WriteText("rest.json", text);
        EXPECT_EQ(RenderedCodes({"-p", "rest.json"}), wanted) << text;
    }
}

TEST_F(Preset, LaterSettingsOverride) {
    WriteText("cool.json", kCool);
    EXPECT_EQ(
        RenderedCodes({"-s", "midtones.blue=-7", "-p", "cool.json"}),
        RenderedCodes({"-e", "color_balance", "-s", "midtones.red=-12", "-s", "midtones.blue=-7"}));
}

TEST_F(Preset, NamesAreTakenAsOnTheCommandLine) {
    WriteText("cool.json", R"({"effect": "color-balance", "version": 1,
                               "parameters": {"midtones.red": -12, "MIDTONES/blue": 30.5}})");
    EXPECT_EQ(RenderedCodes({"-p", "cool.json"}),
              RenderedCodes(
                  {"-e", "color_balance", "-s", "midtones.red=-12", "-s", "midtones.blue=30.5"}));
}

TEST_F(Preset, SavedHoldsWhatIsNotAtItsDefault) {
    Succeeds({"curve", "log_linear_conversion", "-s", "film gamma=0.75", "--linear-to-log", "-s",
              "white reference=685", "--save-preset", "log.json"});
    EXPECT_EQ(json::parse(ReadText("log.json")),
              json({{"effect", "Log/Linear Conversion"},
                    {"version", 1},
                    {"parameters", {{"Convert to Linear", true}, {"Film Gamma", 0.75}}}}));
}

TEST_F(Preset, SavedAndLoadedIsTheSameLook) {
    constexpr unsigned kSeed = 20;
    SCOPED_TRACE(testing::Message() << "seed " << kSeed);
    std::mt19937 random(kSeed);
    MakePicture("ramp.png", 1024, Ramp());
    for (const char* effect : kEffects) {
        SCOPED_TRACE(effect);
        const Words setting = RandomSetting(effect, random);
        const Codes wanted =
            RenderedCodes(Words{"-e", effect} + setting + Words{"--save-preset", "look.json"});
        EXPECT_EQ(RenderedCodes({"-p", "look.json"}), wanted);
        Succeeds(
            {"render", "ramp.png", "again.png", "-p", "look.json", "--save-preset", "again.json"});
        EXPECT_EQ(ReadText("again.json"), ReadText("look.json"));
    }
}

TEST_F(Preset, SavedNumbersReadAsTheyWereGiven) {
    Succeeds({"curve", "color_balance", "-s", "1=0.1", "-s", "2=-33.333333333333336", "-s", "3=100",
              "--save-preset", "look.json"});
    const std::string text = ReadText("look.json");
    for (const char* number : {": 0.1,", ": -33.333333333333336,", ": 100\n"})
        EXPECT_NE(text.find(number), std::string::npos) << number << " in " << text;
}

struct Bad {
    const char* name;
    const char* text;
    Words parts;  // of the complaint, beside the file's name
};

const Bad kBad[] = {
    {"empty", "", {"no JSON"}},
    {"no JSON", "Highlights/Red=12.5", {"no JSON"}},
    {"cut off", R"({"effect": "ZEL Color Balance", "version": 1)", {"no JSON"}},
    {"a list", "[1, 2]", {"no JSON object", "[1,2]"}},
    {"NaN",
     R"({"effect": "ZEL Color Balance", "version": 1, "parameters": {"1": NaN}})",
     {"no JSON", "line 1"}},
    {"too large for any number",
     R"({"effect": "ZEL Color Balance", "version": 1, "parameters": {"Master/Red": 1e999}})",
     {"no JSON", "1e999"}},
    {"no version", R"({"effect": "ZEL Color Balance"})", {"'version'", "null", "reads 1"}},
    {"later version",
     R"({"effect": "ZEL Color Balance", "version": 2})",
     {"'version'", "be 2", "reads 1"}},
    {"version in quotes",
     R"({"effect": "ZEL Color Balance", "version": "1"})",
     {"'version'", "\"1\""}},
    {"no effect", R"({"version": 1})", {"'effect'", "null"}},
    {"effect is no text", R"({"effect": 7, "version": 1})", {"'effect'", "be 7"}},
    {"unknown member",
     R"({"effect": "ZEL Color Balance", "version": 1, "parametres": {}})",
     {"'parametres'", "effect, version or parameters"}},
    {"parameters is a list",
     R"({"effect": "ZEL Color Balance", "version": 1, "parameters": []})",
     {"'parameters'", "[]"}},
    {"unknown parameter",
     R"({"effect": "ZEL Color Balance", "version": 1, "parameters": {"Highlights/Rot": 1}})",
     {"'Highlights/Rot'", "Highlights/Red"}},
    {"a group",
     R"({"effect": "ZEL Color Balance", "version": 1, "parameters": {"Shadows": 1}})",
     {"'Shadows'", "Shadows/Red"}},
    {"above the range",
     R"({"effect": "ZEL Color Balance", "version": 1, "parameters": {"shadows/red": 100.5}})",
     {"'Shadows/Red'", "100.5", "-100 to 100"}},
    {"below the range",
     R"({"effect": "ZEL Color Balance", "version": 1, "parameters": {"Shadows/Red": -1e30}})",
     {"'Shadows/Red'", "-100 to 100"}},
    {"text for a number",
     R"({"effect": "ZEL Color Balance", "version": 1, "parameters": {"Shadows/Red": "12"}})",
     {"'Shadows/Red'", "\"12\"", "-100 to 100"}},
    {"null for a number",
     R"({"effect": "ZEL Color Balance", "version": 1, "parameters": {"Shadows/Red": null}})",
     {"'Shadows/Red'", "null", "-100 to 100"}},
    {"true for a number",
     R"({"effect": "ZEL Color Balance", "version": 1, "parameters": {"Shadows/Red": true}})",
     {"'Shadows/Red'", "true", "-100 to 100"}},
    {"a number for a check box",
     R"({"effect": "ZEL Color Balance", "version": 1, "parameters": {"ForceRender": 1}})",
     {"'ForceRender'", "be 1", "true or false"}},
    {"one key twice",
     R"({"effect": "ZEL Color Balance", "version": 1,
         "parameters": {"Shadows/Red": 1, "Shadows/Red": 1}})",
     {"'Shadows/Red' twice"}},
    {"one member twice",
     R"({"version": 1, "effect": "ZEL Color Balance", "version": 1})",
     {"'version' twice"}},
    {"one parameter by two names",
     R"({"effect": "ZEL Color Balance", "version": 1,
         "parameters": {"Shadows/Red": 1, "shadows.red": 2}})",
     {"'Shadows/Red' twice", "'shadows.red'"}},
    {"a line break in a key",
     R"({"effect": "ZEL Color Balance", "version": 1, "parameters": {"a\nb": 1}})",
     {"'a b'"}},
};

TEST_F(Preset, BadFilesAreRefusedWithTheFileAndTheReason) {
    for (const Bad& bad : kBad) {
        SCOPED_TRACE(bad.name);
        WriteText("bad.json", bad.text);
        Fails({"curve", "bad.json"}, 3, Words{"'bad.json'"} + bad.parts);
    }
    // The last of them, where a picture would be written:
    Fails({"render", kPhotograph, "out.png", "-p", "bad.json"}, 3, {"'bad.json'"});
    EXPECT_FALSE(Exists("out.png"));
}

TEST_F(Preset, FilesThatCannotBeRead) {
    Fails({"curve", "none.json"}, 3, {"'none.json'", "no such file"});
    std::filesystem::create_directory(folder / "folder.json");
    Fails({"curve", "folder.json"}, 3, {"'folder.json'", "cannot be read"});
}

TEST_F(Preset, UnknownEffectsAreRefusedAndNoFileIsLoaded) {
    WriteText("other.json", R"({"effect": "colour_ballance", "version": 1})");
    Fails({"curve", "other.json"}, 4, {"'other.json'", "no effect", "color_balance"});
    // A file that says where it is must not be loaded: a preset may come from anyone.
    for (const char* path : {"./mine.so", "/tmp/mine.so", "mine.so", "../x/mine"}) {
        WriteText("mine.so", "no module");
        WriteText("path.json", std::string(R"({"effect": ")") + path + R"(", "version": 1})");
        Fails({"curve", "path.json"}, 4, {"'path.json'", "no effect"});
    }
}

TEST_F(Preset, SavingNeedsOneEffectAndAFolder) {
    WriteText("cool.json", kCool);
    Fails({"curve", "cool.json", "gamma_gain_offset", "--save-preset", "x.json"}, 2,
          {"--save-preset", "2 effects"});
    EXPECT_FALSE(Exists("x.json"));
    const Outcome run = Zelfx({"curve", "cool.json", "-o", "c.svg", "--save-preset", "no/x.json"});
    EXPECT_EQ(run.status, 1);
    EXPECT_NE(run.err.find("'no'"), std::string::npos) << run.err;
}

TEST_F(Preset, NothingIsSavedWhenTheRenderFails) {
    Fails({"render", "none.png", "out.png", "-e", "color_balance", "--save-preset", "x.json"}, 3,
          {"none.png"});
    EXPECT_FALSE(Exists("x.json"));
}

TEST_F(Preset, OperationsOfTheEngineTakeNone) {
    WriteText("cool.json", kCool);
    Fails({"curve", "ApplyInvert", "--preset", "cool.json"}, 2, {"--preset", "ApplyInvert"});
    Fails({"curve", "ApplyInvert", "--save-preset", "x.json"}, 2, {"--save-preset"});
}

}  // namespace
