#include "headless/Text.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

using namespace zel;
using Names = std::vector<std::string>;

TEST(Text, Lower) { EXPECT_EQ(Lower("Highlights/RGB 9_-."), "highlights/rgb 9_-."); }

TEST(Text, NearestOffersSlipsOfTheFingersNearestFirst) {
    const Names names{"Master/Red", "Highlights/Red", "Midtones/Red", "Shadows/Red", "Gamma"};
    const struct {
        const char *name, *wanted;
        Names nearest;
    } cases[] = {
        {"one letter missing", "Mster/Red", {"Master/Red"}},
        {"one letter other", "Gamna", {"Gamma"}},
        {"case does not count", "GAMMA", {"Gamma"}},
        {"part of several",
         "/red",
         {"Master/Red", "Highlights/Red", "Midtones/Red", "Shadows/Red"}},
        {"part comes before spelling", "shadows", {"Shadows/Red"}},
        {"nothing like it", "exposure!?", {}},
        {"nothing at all", "", {}},
        {"two letters of a short word", "Gxxma", {"Gamma"}},
        {"three letters of a short word", "xxxma", {}},
    };
    for (const auto& c : cases) EXPECT_EQ(Nearest(c.wanted, names, 9), c.nearest) << c.name;
    EXPECT_EQ(Nearest("red", names, 2), (Names{"Master/Red", "Highlights/Red"}));
    EXPECT_EQ(Nearest("red", {}, 4), Names{});
}

TEST(Text, Lists) {
    EXPECT_EQ(Alternatives({}), "");
    EXPECT_EQ(Alternatives(Names{"a"}), "a");
    EXPECT_EQ(Alternatives(Names{"a", "b"}), "a or b");
    EXPECT_EQ(Alternatives(Names{"a", "b", "c"}), "a, b or c");
    EXPECT_EQ(AllOf(Names{"a", "b", "c"}), "a, b and c");
}

TEST(Text, DidYouMean) {
    EXPECT_EQ(DidYouMean("lits", Names{"list", "render"}), "; did you mean list?");
    EXPECT_EQ(DidYouMean("quite another", Names{"list", "render"}), "");
    EXPECT_EQ(DidYouMean("a", Names{"a1", "a2", "a3", "a4", "a5"}),
              "; did you mean a1, a2, a3 or a4?");
}

TEST(Text, OneLine) {
    EXPECT_EQ(OneLine("a\r\nb\tc\x01\n"), "a  b c");
    EXPECT_EQ(OneLine("\n \n"), "");
    EXPECT_EQ(OneLine("\xC3\xA4"), "\xC3\xA4");
}

TEST(Text, NumberIsTheShortestThatReadsBack) {
    EXPECT_EQ(Number(0.6f), "0.6");
    EXPECT_EQ(Number(0.1f), "0.1");
    EXPECT_EQ(Number(-100.0f), "-100");
    EXPECT_EQ(Number(1023.0f), "1023");
    EXPECT_EQ(Number(0.0f), "0");
    EXPECT_EQ(Number(std::nextafter(1.0f, 2.0f)), "1.0000001");
    EXPECT_EQ(Number(100.0000001), "100.0000001");
    EXPECT_EQ(Number(1e300), "1e+300");
    EXPECT_EQ(Number(std::numeric_limits<double>::infinity()), "inf");
}

}  // namespace
