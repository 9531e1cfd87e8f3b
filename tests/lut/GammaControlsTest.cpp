#include "lut/GammaControls.h"

#include "tests/lut/GroupEntries.h"

namespace {

using namespace zel::lut;
using namespace zel::test;

float Control(const GammaControls& controls, int which) {
    return which == 0 ? controls.gamma : which == 1 ? controls.gain : controls.offset;
}

const GammaControls& Range(const GammaRanges& ranges, int group) {
    return group == kHighlightGroup ? ranges.highlights
           : group == kMidtoneGroup ? ranges.midtones
                                    : ranges.shadows;
}

TEST(GammaControls, NeutralIsOneOneZero) {
    const Params params = NeutralGamma();
    for (int c = 0; c < 3; ++c) {
        const GammaControls master = ResolveMasterGamma(params.data(), c);
        EXPECT_EQ(master.gamma, 1.0f);
        EXPECT_EQ(master.gain, 1.0f);
        EXPECT_EQ(master.offset, 0.0f);
        for (int group = kHighlightGroup; group <= kShadowGroup; ++group) {
            const GammaRanges ranges = ResolveGamma(params.data(), c);
            EXPECT_EQ(Range(ranges, group).gamma, 1.0f);
            EXPECT_EQ(Range(ranges, group).gain, 1.0f);
            EXPECT_EQ(Range(ranges, group).offset, 0.0f);
        }
    }
}

// Every entry alone: it reaches its own control, of its own channel and range (of every
// channel or range, where it is for all), and nothing else. The steps are exact floats.
TEST(GammaControls, EveryEntryReachesItsOwnControls) {
    const Params neutral = NeutralGamma();
    for (int group = 0; group < 4; ++group)
        for (int which = 0; which < 3; ++which)
            for (int who = 0; who < 4; ++who) {
                const int entry = kEntry[group][which][who];
                const float step = which == 2 ? -32.0f : 0.75f;
                const Params params =
                    With(neutral, {{entry, neutral[static_cast<std::size_t>(entry)] + step}});
                for (int c = 0; c < 3; ++c) {
                    const GammaRanges before = ResolveGamma(neutral.data(), c);
                    const GammaRanges after = ResolveGamma(params.data(), c);
                    for (int range = kHighlightGroup; range <= kShadowGroup; ++range)
                        for (int other = 0; other < 3; ++other) {
                            const bool meant = other == which && (who == 0 || who == c + 1) &&
                                               (group == kMasterGroup || group == range);
                            EXPECT_EQ(Control(Range(after, range), other) -
                                          Control(Range(before, range), other),
                                      meant ? step : 0.0f)
                                << "entry " << entry << " channel " << c << " range " << range
                                << " control " << other;
                        }
                }
            }
}

TEST(GammaControls, Clamps) {
    const struct {
        const char* name;
        Params params;
        float gamma, gain, offset;  // of the green midtones
    } cases[] = {
        {"master gamma stops at 10", With(NeutralGamma(), {{1, 8}, {10, 8}}), 10, 1, 0},
        {"and is clamped before the range is added",
         With(NeutralGamma(), {{1, 8}, {10, 8}, {41, 0}}), 9, 1, 0},
        {"master gamma stops at 0", With(NeutralGamma(), {{1, 0}, {10, 0}, {50, 3}}), 2, 1, 0},
        {"range gamma stops at 0", With(NeutralGamma(), {{41, 0}, {50, 0}}), 0, 1, 0},
        {"master gain stops at 10", With(NeutralGamma(), {{2, 9}, {11, 9}}), 1, 10, 0},
        {"and is clamped before the range is added",
         With(NeutralGamma(), {{2, 9}, {11, 9}, {51, 0}}), 1, 9, 0},
        {"range gain stops at 10", With(NeutralGamma(), {{42, 7}, {51, 7}}), 1, 10, 0},
        {"green master offset stops at 100", With(NeutralGamma(), {{3, 80}, {12, 80}}), 1, 1, 100},
        {"and is clamped before the range is added",
         With(NeutralGamma(), {{3, 80}, {12, 80}, {43, -30}}), 1, 1, 70},
        {"range offset stops at -100", With(NeutralGamma(), {{43, -70}, {52, -70}}), 1, 1, -100},
    };
    for (const auto& c : cases) {
        const GammaControls green = ResolveGamma(c.params.data(), 1).midtones;
        EXPECT_EQ(green.gamma, c.gamma) << c.name;
        EXPECT_EQ(green.gain, c.gain) << c.name;
        EXPECT_EQ(green.offset, c.offset) << c.name;
    }
}

// The one control without a limit: 200 for red where green and blue stop at 100.
TEST(GammaControls, RedMasterOffset) {
    for (const float full : {100.0f, -100.0f}) {
        Params params = With(NeutralGamma(), {{3, full}, {7, full}, {12, full}, {17, full}});
        EXPECT_EQ(ResolveMasterGamma(params.data(), 0).offset, 2 * full);
        EXPECT_EQ(ResolveMasterGamma(params.data(), 1).offset, full);
        EXPECT_EQ(ResolveMasterGamma(params.data(), 2).offset, full);

        params = With(params, {{23, -full}});
        EXPECT_EQ(ResolveGamma(params.data(), 0).highlights.offset, full);
        EXPECT_EQ(ResolveGamma(params.data(), 1).highlights.offset, 0.0f);
        EXPECT_EQ(ResolveGamma(params.data(), 2).highlights.offset, 0.0f);
    }
}

TEST(GammaControls, RedMasterGainIsLimitedLikeTheOthers) {
    const Params params = With(NeutralGamma(), {{2, 9}, {6, 9}, {11, 9}, {16, 9}});
    for (int c = 0; c < 3; ++c) EXPECT_EQ(ResolveMasterGamma(params.data(), c).gain, 10.0f);
}

}  // namespace
