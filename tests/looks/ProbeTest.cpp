// One pixel, before and after.

#include "tests/looks/LooksTest.h"

#include <nlohmann/json.hpp>

#include <sstream>

namespace {

using namespace zel::test;
using nlohmann::json;

class Probe : public LooksTest {
protected:
    json Probed(const Words& arguments) const {
        return json::parse(Succeeds(Words{"probe"} + arguments + Words{"--json"}).out);
    }
};

constexpr const char* kNames[] = {"red", "green", "blue"};
const Words kLook{"-e", "color_balance", "-s", "midtones.red=-30", "-s", "shadows.blue=80"};

TEST_F(Probe, EightBitPixelsOfThePhotograph) {
    Succeeds(Words{"render", kPhotograph, "graded.png"} + kLook);
    const Samples before = ReadPicture(kPhotograph), after = ReadPicture("graded.png");
    for (const auto& [x, y] :
         {std::pair{0, 0}, {599, 0}, {0, 399}, {599, 399}, {300, 200}, {17, 351}}) {
        const std::string position = std::to_string(x) + "," + std::to_string(y);
        SCOPED_TRACE(position);
        const json probe = Probed(Words{kPhotograph, position} + kLook);
        EXPECT_EQ(probe.at("x"), x);
        EXPECT_EQ(probe.at("y"), y);
        EXPECT_EQ(probe.at("format"), "BGRA8");
        EXPECT_FALSE(probe.at("before").contains("alpha"));
        for (std::size_t c = 0; c < 3; ++c) {
            const std::size_t i =
                3 * (static_cast<std::size_t>(y) * 600 + static_cast<std::size_t>(x)) + c;
            EXPECT_EQ(probe.at("before").at(kNames[c]).at("value"), before[i] / 257);
            EXPECT_EQ(probe.at("before").at(kNames[c]).at("code"), before[i] / 257 * 4);
            EXPECT_EQ(probe.at("after").at(kNames[c]).at("value"), after[i] / 257);
        }
    }
}

TEST_F(Probe, SixteenBitPixelsHaveTheCodeInTheirTopTenBits) {
    MakePicture("in.png", 2, {65535, 64, 63, 32768, 12345, 1});
    Succeeds(Words{"render", "in.png", "out.png"} + kLook);
    const Samples out = ReadPicture("out.png");
    const json probe = Probed(Words{"in.png", "1,0"} + kLook);
    const int values[] = {32768, 12345, 1}, codes[] = {512, 192, 0};
    for (std::size_t c = 0; c < 3; ++c) {
        EXPECT_EQ(probe.at("before").at(kNames[c]).at("value"), values[c]);
        EXPECT_EQ(probe.at("before").at(kNames[c]).at("code"), codes[c]);
        EXPECT_EQ(probe.at("after").at(kNames[c]).at("value"), out[3 + c]);
        EXPECT_EQ(probe.at("after").at(kNames[c]).at("code"), out[3 + c] >> 6);
    }
}

TEST_F(Probe, FloatPixelsAreTruncatedToCodes) {
    Tool({"oiiotool", "--pattern", "constant:color=0.5,1.5,-0.25", "4x4", "3", "-d", "float", "-o",
          "in.exr"});
    const json before = Probed({"in.exr", "2,3"}).at("before");
    EXPECT_EQ(before.at("red"), json({{"value", 0.5}, {"code", 511}}));
    EXPECT_EQ(before.at("green"), json({{"value", 1.5}, {"code", 1023}}));
    EXPECT_EQ(before.at("blue"), json({{"value", -0.25}, {"code", 0}}));
}

TEST_F(Probe, WithoutALookThereIsNoAfter) {
    EXPECT_FALSE(Probed({kPhotograph, "0,0"}).contains("after"));
    EXPECT_EQ(Succeeds({"probe", kPhotograph, "0,0"}).out.find("after"), std::string::npos);
}

TEST_F(Probe, TakesPresetsAndChains) {
    WriteText("a.json", R"({"effect": "ZEL Color Balance", "version": 1,
                            "parameters": {"Master/RGB": 20}})");
    WriteText("b.json", R"({"effect": "Gamma/Gain/Offset", "version": 1,
                            "parameters": {"Master/Gamma": 2}})");
    Succeeds({"render", kPhotograph, "out.png", "-p", "a.json", "-p", "b.json"});
    const Samples out = ReadPicture("out.png");
    const json after = Probed({kPhotograph, "10,20", "-p", "a.json", "-p", "b.json"}).at("after");
    for (std::size_t c = 0; c < 3; ++c)
        EXPECT_EQ(after.at(kNames[c]).at("value"), out[3 * (20 * 600 + 10) + c] / 257);
}

TEST_F(Probe, AlphaIsShownWhereThereIsOne) {
    Tool({"convert", "-size", "3x1", "xc:rgba(10,20,30,0.2)", "-depth", "8", "PNG32:in.png"});
    const json probe = Probed(Words{"in.png", "2,0"} + kLook);
    EXPECT_EQ(probe.at("before").at("alpha").at("value"), 51);
    EXPECT_EQ(probe.at("after").at("alpha").at("value"), 51);
}

TEST_F(Probe, Table) {
    std::istringstream lines(Succeeds(Words{"probe", kPhotograph, "300,200"} + kLook).out);
    std::string line;
    std::getline(lines, line);
    EXPECT_EQ(line, "pixel 300,200 of 600 x 400, as BGRA8, through ZEL Color Balance");
    int rows = 0;
    while (std::getline(lines, line)) {
        EXPECT_LE(line.size(), 100u);
        rows += !line.empty();
    }
    EXPECT_EQ(rows, 5);
}

TEST_F(Probe, WrongUsage) {
    for (const char* position : {"300", "300,", ",200", "300,200,1", "a,b", "1.5,2", "300 200"})
        Fails({"probe", kPhotograph, position}, 2, {std::string("'") + position + "'", "X,Y"});
    for (const char* position : {"600,0", "0,400", "9999,9999"})
        Fails({"probe", kPhotograph, position}, 2, {position, "outside", "599,399"});
    Fails({"probe", "none.png", "0,0"}, 3, {"none.png"});
    Fails({"probe", kPhotograph, "0,0", "-s", "1=2"}, 2, {"effect is missing"});
    Fails({"probe", kPhotograph, "0,0", "-e", "color_balance", "-s", "1=200"}, 2, {"200"});
    Fails({"probe", kPhotograph, "0,0", "-e", "color_balance", "--host", "me"}, 2, {"'me'"});
}

}  // namespace
