#include "lut/LogControls.h"

#include "tests/lut/GroupEntries.h"

namespace {

using namespace zel::lut;
using namespace zel::test;

float Control(const LogControls& controls, int which) {
    return which == 0   ? controls.black
           : which == 1 ? controls.white
           : which == 2 ? controls.display
                        : controls.film;
}

TEST(LogControls, DefaultsResolveToThemselves) {
    const Params params = LogDefaults(0.0f);
    for (int c = 0; c < 3; ++c) {
        const LogControls controls = ResolveLog(params.data(), c, 1023.0f);
        EXPECT_EQ(controls.black, 95.0f);
        EXPECT_EQ(controls.white, 685.0f);
        EXPECT_EQ(controls.display, 1.0f);
        EXPECT_EQ(controls.film, 0.6f);
    }
}

TEST(LogControls, EveryEntryReachesItsOwnControl) {
    constexpr int kLogEntry[4][4] = {
        // all, red, green, blue
        {1, 6, 12, 18},  // black reference
        {2, 7, 13, 19},  // white reference
        {3, 8, 14, 20},  // display gamma
        {4, 9, 15, 21},  // film gamma
    };
    const Params neutral = LogDefaults(0.0f);
    for (int which = 0; which < 4; ++which)
        for (int who = 0; who < 4; ++who) {
            const int entry = kLogEntry[which][who];
            const float step = which < 2 ? 8.0f : 0.5f;
            const Params params =
                With(neutral, {{entry, neutral[static_cast<std::size_t>(entry)] + step}});
            for (int c = 0; c < 3; ++c) {
                const LogControls before = ResolveLog(neutral.data(), c, 1023.0f);
                const LogControls after = ResolveLog(params.data(), c, 1023.0f);
                for (int other = 0; other < 4; ++other) {
                    const bool meant = other == which && (who == 0 || who == c + 1);
                    // 0.6 is no exact float, hence the tolerance of a few roundings.
                    EXPECT_NEAR(Control(after, other) - Control(before, other), meant ? step : 0.0f,
                                2e-7f)
                        << "entry " << entry << " channel " << c << " control " << other;
                }
            }
        }
}

TEST(LogControls, Clamps) {
    const struct {
        const char* name;
        Params params;
        float top, black, white, display, film;  // of green
    } cases[] = {
        {"black reference stops at 0", With(LogDefaults(0), {{1, 20}, {12, 20}}), 1023, 0, 685, 1,
         0.6f},
        {"black reference stops at white", With(LogDefaults(0), {{1, 900}, {12, 900}}), 1023, 1023,
         685, 1, 0.6f},
        {"white reference stops at white", With(LogDefaults(0), {{2, 1000}, {13, 1000}}), 1023, 95,
         1023, 1, 0.6f},
        {"a lower white level limits both", LogDefaults(0), 90, 90, 90, 1, 0.6f},
        {"display gamma stops at 5", With(LogDefaults(0), {{3, 5}, {14, 5}}), 1023, 95, 685, 5,
         0.6f},
        {"display gamma stops at 0", With(LogDefaults(0), {{3, 0}, {14, 0}}), 1023, 95, 685, 0,
         0.6f},
        {"film gamma stops at 5", With(LogDefaults(0), {{4, 5}, {15, 5}}), 1023, 95, 685, 1, 5},
        {"film gamma stops at 0", With(LogDefaults(0), {{4, 0}, {15, 0}}), 1023, 95, 685, 1, 0},
    };
    for (const auto& c : cases) {
        const LogControls green = ResolveLog(c.params.data(), 1, c.top);
        EXPECT_EQ(green.black, c.black) << c.name;
        EXPECT_EQ(green.white, c.white) << c.name;
        EXPECT_EQ(green.display, c.display) << c.name;
        EXPECT_EQ(green.film, c.film) << c.name;
    }
}

TEST(LogControls, ConstantsOfTheDefaults) {
    const Params params = LogDefaults(0.0f);
    const LogConstants k = DeriveLogConstants(ResolveLog(params.data(), 0, 1023.0f), 1023.0f);
    EXPECT_EQ(Bits{k.density}, Bits{static_cast<float>(0.002f / double{0.6f})});
    EXPECT_EQ(k.toLinear, double{static_cast<float>(1.0 / double{1.7f})});
    EXPECT_EQ(Bits{k.toLog}, Bits{1.7f});
    // Black stands 590 codes of 1/300 density below white, which a power of 1 / 1.7
    // brings to 0.0697 of it.
    const double black = std::pow(10.0, -590.0 / 300.0 / 1.7);
    EXPECT_NEAR(k.gain, 1023.0 / (1.0 - black), 0.001);
    EXPECT_NEAR(k.offset, 1023.0 / (1.0 - black) - 1023.0, 0.001);
}

TEST(LogControls, OnlyAFlagBelowOneConvertsToLinear) {
    const struct {
        float flag;
        bool toLinear;
    } cases[] = {{0.0f, true},     {-5.0f, true}, {0.9999999f, true}, {1.0f, false},
                 {1000.0f, false}, {kNaN, false}, {-kInf, true},      {kInf, false}};
    for (const auto& c : cases) EXPECT_EQ(ConvertsToLinear(&c.flag), c.toLinear) << Bits{c.flag};
}

}  // namespace
