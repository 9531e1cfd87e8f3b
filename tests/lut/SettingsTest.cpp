/// What holds for every tone operation under random settings within its sliders.

#include "tests/lut/GroupEntries.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <random>
#include <string>
#include <vector>

namespace {

using namespace zel::test;

constexpr int kEveryChannel = -1;

/// A parameter that an operation reads.
struct Control {
    int entry;
    float least, most;
    int channel;  // the one it moves, or kEveryChannel
};

struct Operation {
    std::string name;
    void (CUtilLut::*apply)(float*);
    Params neutral;
    std::vector<Control> controls;
    float most(float white) const { return topIs1023 ? 1023.0f : white; }
    bool topIs1023 = false;
};

/// Four groups of three controls with their limits.
std::vector<Control> GroupControls(const float (&limits)[3][2]) {
    std::vector<Control> controls;
    for (const auto& group : kEntry)
        for (int k = 0; k < 3; ++k)
            for (int who = 0; who < 4; ++who)
                controls.push_back({group[k][who], limits[k][0], limits[k][1], who - 1});
    return controls;
}

std::vector<Control> BalanceControls() {
    std::vector<Control> controls;
    for (const int first : {1, 7, 13, 19})
        for (int who = 0; who < 4; ++who)
            controls.push_back({first + who, -100.0f, 100.0f, who - 1});
    return controls;
}

std::vector<Control> LogControls() {
    std::vector<Control> controls;
    constexpr int kFirst[] = {1, 6, 12, 18};
    for (int who = 0; who < 4; ++who)
        for (int k = 0; k < 4; ++k)
            controls.push_back({kFirst[who] + k, 0.0f, k < 2 ? 1023.0f : 5.0f, who - 1});
    return controls;
}

std::vector<Operation> Operations() {
    std::vector<Operation> all = {
        {"Balance2", &CUtilLut::ApplyBalance2, {}, BalanceControls()},
        {"Brightness2", &CUtilLut::ApplyBrightness2, NeutralBrightness(),
         GroupControls({{-100, 100}, {-100, 100}, {0, 1}})},
        {"Gamma2", &CUtilLut::ApplyGamma2, NeutralGamma(),
         GroupControls({{0, 10}, {0, 10}, {-100, 100}})},
        {"Log, off", &CUtilLut::ApplyLog, LogDefaults(0), LogControls()},
        {"Log, on", &CUtilLut::ApplyLog, LogDefaults(1), LogControls()},
        {"Brightness",
         &CUtilLut::ApplyBrightness,
         {},
         {{0, -25000, 25000, kEveryChannel}, {1, -10000, 10000, kEveryChannel}},
         true},
        {"Gamma", &CUtilLut::ApplyGamma, {10}, {{0, 0, 50, kEveryChannel}}},
        {"Balance",
         &CUtilLut::ApplyBalance,
         {255, 255, 255},
         {{0, 0, 500, 0}, {1, 0, 500, 1}, {2, 0, 500, 2}},
         true},
        {"Invert", &CUtilLut::ApplyInvert, {0, 100}, {{1, 0, 100, kEveryChannel}}},
    };
    for (float op = 0; op < 13; ++op)
        all.push_back({"Arithmetic " + std::to_string(static_cast<int>(op)),
                       &CUtilLut::ApplyArithmetic,
                       {op, 0, 0, 0},
                       {{1, 0, 255, 0}, {2, 0, 255, 1}, {3, 0, 255, 2}}});
    return all;
}

bool HasSelector(const Operation& operation) {
    return operation.name.starts_with("Log") || operation.name == "Invert" ||
           operation.name.starts_with("Arithmetic");
}

class Settings : public testing::Test {
protected:
    float Within(const Control& control) {
        return std::uniform_real_distribution<float>(control.least, control.most)(random);
    }
    Params RandomSetting(const Operation& operation) {
        Params params = operation.neutral;
        for (const Control& control : operation.controls)
            params[static_cast<std::size_t>(control.entry)] = Within(control);
        return params;
    }

    static constexpr unsigned kSeed = 20240617;
    std::mt19937 random{kSeed};
    const std::vector<Operation> operations = Operations();
};

TEST_F(Settings, ResultsLieWithinBlackAndWhiteOrAreNaN) {
    for (const Operation& operation : operations)
        for (int run = 0; run < 60; ++run) {
            constexpr float kWhite[] = {1023.0f, 940.0f, 0.0f};
            const float white = kWhite[run % 3];
            OpenLut lut;
            lut.SetWhiteLevel(white);
            Params params = RandomSetting(operation);
            (lut.*operation.apply)(params.data());
            for (int i = 0; i < 3072; ++i) {
                const float v = lut.m_pLut[i];
                ASSERT_TRUE(std::isnan(v) || (v >= 0.0f && v <= operation.most(white)))
                    << operation.name << " run " << run << " entry " << i << ": " << Bits{v};
            }
        }
}

// What sanitizers watch: every conversion in every export, from whatever the operations
// leave behind. The codes are those of the truncated entries, NaN being 0.
TEST_F(Settings, ResultsExport) {
    for (const Operation& operation : operations)
        for (int run = 0; run < 10; ++run) {
            OpenLut lut;
            if (run % 2) MakeHostile(lut);
            Params params = RandomSetting(operation);
            (lut.*operation.apply)(params.data());
            (lut.*operation.apply)(params.data());
            std::array<unsigned char, 256> bytes[3];
            std::array<unsigned short, 1024> shorts[3];
            std::array<unsigned int, 1024> ints[3];
            std::array<std::uint32_t, 1536> words;
            lut.Build8Bit(bytes[0].data(), bytes[1].data(), bytes[2].data());
            lut.Build10Bit(shorts[0].data(), shorts[1].data(), shorts[2].data());
            lut.Build10Bit(ints[0].data(), ints[1].data(), ints[2].data());
            lut.BuildZelLut(words.data(), 0);
            for (int c = 0; c < 3; ++c)
                for (std::size_t i = 0; i < 1024; ++i) {
                    const float v = lut.At(c, static_cast<int>(i));
                    const unsigned code = std::isnan(v) ? 0u : static_cast<unsigned>(v);
                    ASSERT_EQ(shorts[c][i], code) << operation.name << " run " << run;
                    ASSERT_EQ(ints[c][i], code) << operation.name << " run " << run;
                    if (i % 4 == 0) {
                        ASSERT_EQ(bytes[c][i / 4], code / 4) << operation.name << " run " << run;
                    }
                    const std::uint32_t word = words[static_cast<std::size_t>(c) * 512 + i / 2];
                    ASSERT_EQ(word >> (i % 2 ? 22 : 6) & 0x3FF, code) << operation.name;
                }
        }
}

TEST_F(Settings, NeutralLeavesTheIdentityUpToItsDefect) {
    for (const Operation& operation : operations) {
        if (operation.name.starts_with("Log") || operation.name.starts_with("Arithmetic")) continue;
        OpenLut lut;
        Params params = operation.neutral;
        (lut.*operation.apply)(params.data());
        // Brightness2 truncates on the way and loses up to one code there.
        const float defect = operation.name == "Brightness2" ? 1.0001f : 0.000062f;
        for (int i = 0; i < 3072; ++i)
            ASSERT_NEAR(lut.m_pLut[i], static_cast<float>(i % 1024), defect) << operation.name;
    }
}

TEST_F(Settings, ParametersOutsideTheListAreNotRead) {
    for (const Operation& operation : operations)
        for (int run = 0; run < 5; ++run) {
            Params clean = RandomSetting(operation), poisoned = clean;
            for (std::size_t i = 0; i < poisoned.size(); ++i) {
                const bool read =
                    (i == 0 && HasSelector(operation)) ||
                    std::ranges::any_of(operation.controls, [i](const Control& control) {
                        return static_cast<std::size_t>(control.entry) == i;
                    });
                if (!read) poisoned[i] = kNaN;
            }
            OpenLut a, b;
            (a.*operation.apply)(clean.data());
            (b.*operation.apply)(poisoned.data());
            ASSERT_TRUE(SameCurve(b, a)) << operation.name << " run " << run;
        }
}

TEST_F(Settings, ParametersAreNotWritten) {
    for (const Operation& operation : operations) {
        Params params = RandomSetting(operation);
        const Params before = params;
        OpenLut lut;
        (lut.*operation.apply)(params.data());
        for (std::size_t i = 0; i < params.size(); ++i)
            ASSERT_EQ(Bits{params[i]}, Bits{before[i]}) << operation.name << " entry " << i;
    }
}

// Moving one slider from the neutral setting: it moves its channel, and no other. A
// slider at its neutral value, or a pivot without contrast, moves nothing, so several
// values are tried.
TEST_F(Settings, SlidersMoveTheirOwnChannels) {
    for (Operation operation : operations) {
        if (operation.name == "Arithmetic 10" || operation.name == "Arithmetic 12") continue;
        if (operation.name == "Brightness2") operation.neutral[2] = 20.0f;  // pivots take part
        OpenLut neutral;
        Params params = operation.neutral;
        (neutral.*operation.apply)(params.data());
        for (const Control& control : operation.controls) {
            bool moved[3]{};
            for (int attempt = 0; attempt < 5; ++attempt) {
                OpenLut lut;
                params = With(operation.neutral, {{control.entry, Within(control)}});
                (lut.*operation.apply)(params.data());
                for (int c = 0; c < 3; ++c)
                    for (int i = 0; i < 1024; ++i)
                        moved[c] |= !(AnyNaN(lut.At(c, i)) == AnyNaN(neutral.At(c, i)));
            }
            for (int c = 0; c < 3; ++c)
                EXPECT_EQ(moved[c], control.channel == kEveryChannel || control.channel == c)
                    << operation.name << " parameter " << control.entry << " channel " << c;
        }
    }
}

}  // namespace
