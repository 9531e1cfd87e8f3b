// Texts of wanted frames, and the numbers that they stand for.

#include "cli/frames/FrameRange.h"

#include "headless/Error.h"

#include <gtest/gtest.h>

namespace {

using zel::FrameRange;
using Numbers = std::vector<std::int64_t>;

TEST(FrameRange, WithinASequence) {
    const struct {
        const char* text;
        std::int64_t first, last;
        Numbers expected;
    } cases[] = {
        {"1-5", 1, 100, {1, 2, 3, 4, 5}},
        {"7", 1, 100, {7}},
        {"1-9x3", 1, 100, {1, 4, 7}},
        {"1-10x3", 1, 100, {1, 4, 7, 10}},
        {"1-3,40", 1, 100, {1, 2, 3, 40}},
        {"40,1-3,2-4", 1, 100, {1, 2, 3, 4, 40}},
        {" 1 - 3 , 5 ", 1, 100, {1, 2, 3, 5}},
        {"-3--1", -10, 10, {-3, -2, -1}},
        {"-1-1", -10, 10, {-1, 0, 1}},
        {"0001-0003", 1, 100, {1, 2, 3}},
        {"5-5", 1, 100, {5}},
        // Ranges are clipped, and keep to their steps.
        {"1-100", 98, 99, {98, 99}},
        {"1-100x2", 98, 102, {99}},
        {"1-100x10", 50, 75, {51, 61, 71}},
        {"1-999999999999999999x999999999999999999", 1, 4, {1}},
        {"200-300", 1, 100, {}},
        {"1-3,200-300", 1, 100, {1, 2, 3}},
        // A number of its own is not.
        {"200", 1, 100, {200}},
        {"1-3,200", 1, 100, {1, 2, 3, 200}},
        {"200-200", 1, 100, {}},
    };
    for (const auto& c : cases)
        EXPECT_EQ(FrameRange::Parse(c.text).Within(c.first, c.last), c.expected) << c.text;
    EXPECT_EQ(FrameRange().Within(3, 5), (Numbers{3, 4, 5}));
}

TEST(FrameRange, TellsWhereItGoesBeyond) {
    const struct {
        const char* text;
        bool beyond;
    } cases[] = {{"1-100", false}, {"0-5", true}, {"99-101", true}, {"101", false}, {"5,7", false}};
    for (const auto& c : cases)
        EXPECT_EQ(FrameRange::Parse(c.text).GoesBeyond(1, 100), c.beyond) << c.text;
    EXPECT_FALSE(FrameRange().GoesBeyond(1, 100));
}

TEST(FrameRange, RefusesOtherTexts) {
    for (const char* text : {"",
                             "a",
                             "1-",
                             "-",
                             "1,",
                             ",1",
                             "1-5x",
                             "1-5x0",
                             "1-5x-1",
                             "5-1",
                             "1..5",
                             "1-5,a",
                             "1-5-9",
                             "1x2",
                             "1 2",
                             "- 1",
                             "0x10",
                             "1.5",
                             "9999999999999999999",
                             "1-5y2"})
        EXPECT_THROW(FrameRange::Parse(text), zel::Error) << text;
}

TEST(FrameRange, RefusesMoreFramesThanItHolds) {
    EXPECT_THROW(FrameRange::Parse("1-99999999").Within(1, 99999999), zel::Error);
    EXPECT_THROW(FrameRange().Within(-999999999999999999, 999999999999999999), zel::Error);
    EXPECT_EQ(FrameRange::Parse("1-99999999x10000").Within(1, 99999999).size(), 10000u);
}

TEST(FrameRange, TextOfNumbers) {
    const struct {
        Numbers numbers;
        const char* text;
    } cases[] = {
        {{}, ""},
        {{5}, "5"},
        {{1, 2, 3}, "1-3"},
        {{1, 3, 4, 9}, "1, 3-4, 9"},
        {{-2, -1, 0}, "-2-0"},
        {{1, 3, 5, 7, 9, 11, 13, 15, 17, 18}, "1, 3, 5, 7, 9, 11, 13, 15 and 2 more"},
    };
    for (const auto& c : cases) EXPECT_EQ(zel::RangeText(c.numbers), c.text);
}

}  // namespace
