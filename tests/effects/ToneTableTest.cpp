#include "effects/ToneTable.h"

#include <gtest/gtest.h>

#include <string>

namespace zel {
namespace {

// Labels that tell where each has come from. The released tables are made by the compiler;
// from something that may change, one is made when the test runs.
ToneSliders sliders{{
    {"a", "a red", "a green", "a blue", kPercent},
    {"b", "b red", "b green", "b blue", kFraction},
    {"c", "c red", "c green", "c blue", kFactor},
}};

TEST(ToneTable, FourGroupsAndACheckBox) {
    const auto table = ToneTable(sliders);
    ASSERT_EQ(table.size(), 81u);
    EXPECT_TRUE(IdsAreRowNumbers(table) && GroupsAreBalanced(table) && NamesFitHost(table));

    std::string labels;
    for (int i = 0; i < kToneGroupRows; ++i) {
        const AEFxGuiElement& e = table[static_cast<std::size_t>(i)];
        labels +=
            e.type == kGroupEnd ? ")" : (e.type == kGroupStart ? "(" : " ") + std::string(e.name);
    }
    EXPECT_EQ(labels,
              "(Master a b c"
              "(Red Channel a red b red c red)"
              "(Green Channel a green b green c green)"
              "(Blue Channel a blue b blue c blue))");

    const char* const names[] = {"Master", "Highlights", "Midtones", "Shadows"};
    for (std::size_t group = 0; group < 4; ++group) {
        const std::size_t first = 20 * group;
        EXPECT_STREQ(table[first].name, names[group]);
        for (const std::size_t slider : {1u, 5u, 10u, 15u})
            for (std::size_t k = 0; k < 3; ++k)
                EXPECT_EQ(table[first + slider + k].range, sliders[k].range) << first + slider + k;
    }
    EXPECT_EQ(table[80].type, kCheckBox);
    EXPECT_STREQ(table[80].name, "ForceRender");
}

TEST(ToneTable, SlidersAreTold) {
    const auto table = ToneTable(sliders);
    EXPECT_TRUE(IsSlider(table, 26, "b red", kFraction));
    EXPECT_FALSE(IsSlider(table, 26, "b", kFraction)) << "another label";
    EXPECT_FALSE(IsSlider(table, 26, "b red", kPercent)) << "another range";
    EXPECT_FALSE(IsSlider(table, 27, "b red", kFraction)) << "another row";
    EXPECT_FALSE(IsSlider(table, 24, "Red Channel", kNoRange)) << "no slider";
    auto moved = table;
    moved[26].id = 27;
    EXPECT_FALSE(IsSlider(moved, 26, "b red", kFraction)) << "another id";
}

}  // namespace
}  // namespace zel
