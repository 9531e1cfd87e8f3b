#include "lut/BrightnessControls.h"

#include "tests/lut/GroupEntries.h"

namespace {

using namespace zel::lut;
using namespace zel::test;

float Control(const ToneControls& controls, int which) {
    return which == 0 ? controls.brightness : which == 1 ? controls.contrast : controls.pivot;
}

const ToneControls& Range(const ToneRanges& ranges, int group) {
    return group == kHighlightGroup ? ranges.highlights
           : group == kMidtoneGroup ? ranges.midtones
                                    : ranges.shadows;
}

TEST(BrightnessControls, NeutralIsZeroZeroHalf) {
    const Params params = NeutralBrightness();
    for (int c = 0; c < 3; ++c)
        for (int group = kHighlightGroup; group <= kShadowGroup; ++group) {
            const ToneRanges ranges = ResolveTone(params.data(), c);
            EXPECT_EQ(Range(ranges, group).brightness, 0.0f);
            EXPECT_EQ(Range(ranges, group).contrast, 0.0f);
            EXPECT_EQ(Range(ranges, group).pivot, 0.5f);
        }
}

// Every entry alone: it reaches its own control, of its own channel and range (of every
// channel or range, where it is for all), and nothing else. The steps are exact floats.
TEST(BrightnessControls, EveryEntryReachesItsOwnControls) {
    const Params neutral = NeutralBrightness();
    for (int group = 0; group < 4; ++group)
        for (int which = 0; which < 3; ++which)
            for (int who = 0; who < 4; ++who) {
                const int entry = kEntry[group][which][who];
                const float step = which == 2 ? 0.25f : 32.0f;
                const Params params =
                    With(neutral, {{entry, neutral[static_cast<std::size_t>(entry)] + step}});
                for (int c = 0; c < 3; ++c) {
                    const ToneRanges before = ResolveTone(neutral.data(), c);
                    const ToneRanges after = ResolveTone(params.data(), c);
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

TEST(BrightnessControls, Clamps) {
    const struct {
        const char* name;
        Params params;
        float brightness, contrast, pivot;  // of the red highlights
    } cases[] = {
        {"master brightness stops at 100", With(NeutralBrightness(), {{1, 80}, {5, 80}}), 100, 0,
         0.5f},
        {"and is clamped before the range is added",
         With(NeutralBrightness(), {{1, 80}, {5, 80}, {21, -30}}), 70, 0, 0.5f},
        {"range brightness stops at -100",
         With(NeutralBrightness(), {{1, -60}, {21, -60}, {25, -60}}), -100, 0, 0.5f},
        {"master contrast stops at -100", With(NeutralBrightness(), {{2, -90}, {6, -90}}), 0, -100,
         0.5f},
        {"and is clamped before the range is added",
         With(NeutralBrightness(), {{2, -90}, {6, -90}, {26, 40}}), 0, -60, 0.5f},
        {"range contrast stops at 100", With(NeutralBrightness(), {{2, 100}, {22, 100}, {26, 100}}),
         0, 100, 0.5f},
        {"master pivot counts as it stands", With(NeutralBrightness(), {{3, 0.75f}}), 0, 0, 0.75f},
        {"master pivot stops at 1", With(NeutralBrightness(), {{3, 1}, {7, 1}}), 0, 0, 1},
        {"and is clamped before the range is added",
         With(NeutralBrightness(), {{3, 1}, {7, 1}, {23, 0.25f}}), 0, 0, 0.75f},
        {"master pivot stops at 0", With(NeutralBrightness(), {{3, 0}, {7, 0}, {27, 0.75f}}), 0, 0,
         0.25f},
        {"range pivot stops at 0", With(NeutralBrightness(), {{23, 0}, {27, 0.25f}}), 0, 0, 0},
    };
    for (const auto& c : cases) {
        const ToneControls red = ResolveTone(c.params.data(), 0).highlights;
        EXPECT_EQ(red.brightness, c.brightness) << c.name;
        EXPECT_EQ(red.contrast, c.contrast) << c.name;
        EXPECT_EQ(red.pivot, c.pivot) << c.name;
    }
}

}  // namespace
