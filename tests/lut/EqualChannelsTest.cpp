#include "lut/EqualChannels.h"

#include "tests/support/Lut.h"

#include <vector>

namespace {

using namespace zel::test;

struct Controls {
    float a, b;
};

/// Adds a + b to every entry, and notes which channels were shaped.
std::vector<int> Shape(CUtilLut& lut, const Controls (&controls)[3]) {
    std::vector<int> shaped;
    zel::lut::ShapeChannels(lut.m_pLut, controls, [&](float* entries, const Controls& channel) {
        shaped.push_back(static_cast<int>(entries - lut.m_pLut) / CUtilLut::kEntries);
        for (int i = 0; i < CUtilLut::kEntries; ++i) entries[i] += channel.a + channel.b;
    });
    return shaped;
}

TEST(ShapeChannels, ShapesEqualChannelsOnce) {
    const struct {
        const char* name;
        Controls controls[3];
        std::vector<int> shaped;
    } cases[] = {
        {"all equal", {{1, 2}, {1, 2}, {1, 2}}, {0}},
        {"all different", {{1, 2}, {1, 3}, {2, 2}}, {0, 1, 2}},
        {"red stands alone", {{0, 2}, {1, 2}, {1, 2}}, {0, 1}},
        {"green stands alone", {{1, 2}, {0, 2}, {1, 2}}, {0, 1}},
        {"blue stands alone", {{1, 2}, {1, 2}, {0, 2}}, {0, 2}},
        {"NaN equals itself", {{kNaN, 0}, {kNaN, 0}, {kNaN, 0}}, {0}},
        {"-0 is not 0", {{0, 0}, {-0.0f, 0}, {0, 0}}, {0, 1}},
    };
    for (const auto& c : cases) {
        OpenLut lut;
        EXPECT_EQ(Shape(lut, c.controls), c.shaped) << c.name;
        for (int channel = 0; channel < 3; ++channel) {
            const float sum = c.controls[channel].a + c.controls[channel].b;
            for (int i = 0; i < 1024; ++i)
                ASSERT_EQ(AnyNaN(lut.At(channel, i)), AnyNaN(static_cast<float>(i) + sum))
                    << c.name << ", channel " << channel << " entry " << i;
        }
    }
}

TEST(ShapeChannels, EqualControlsOnDifferentEntriesAreNotShared) {
    constexpr Controls kSame[] = {{1, 2}, {1, 2}, {1, 2}};
    const struct {
        const char* name;
        int channel, entry;
        float value;
        std::vector<int> shaped;
    } cases[] = {
        {"first entry of red", 0, 0, 5.0f, {0, 1}},
        {"last entry of green", 1, 1023, 5.0f, {0, 1}},
        {"last entry of blue", 2, 1023, 5.0f, {0, 2}},
        {"the sign of a zero", 1, 0, -0.0f, {0, 1}},
        {"one bit", 2, 1, 1.0000001f, {0, 2}},
    };
    for (const auto& c : cases) {
        OpenLut lut;
        lut.m_pLut[c.channel * 1024 + c.entry] = c.value;
        EXPECT_EQ(Shape(lut, kSame), c.shaped) << c.name;
        EXPECT_EQ(lut.At(c.channel, c.entry), c.value + 3.0f) << c.name;
    }
}

}  // namespace
