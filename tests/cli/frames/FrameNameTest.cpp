// Names with a place for the frame's number, read and written.

#include "cli/frames/FrameName.h"

#include "headless/Error.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

using zel::FrameName;

TEST(FrameName, WritesNumbersAsItsPlaceSays) {
    const struct {
        const char* pattern;
        std::int64_t number;
        const char* file;
    } cases[] = {
        {"shot.####.dpx", 1, "shot.0001.dpx"},
        {"shot.####.dpx", 9999, "shot.9999.dpx"},
        {"shot.####.dpx", 10000, "shot.10000.dpx"},
        {"shot.####.dpx", -7, "shot.-0007.dpx"},
        {"shot.#.dpx", 12, "shot.12.dpx"},
        {"shot.%04d.dpx", 1, "shot.0001.dpx"},
        {"shot.%04d.dpx", -7, "shot.-007.dpx"},  // the width holds the minus, as in printf
        {"shot.%d.dpx", 12, "shot.12.dpx"},
        {"shot.%0d.dpx", 3, "shot.3.dpx"},
        {"100%%.%02d.png", 5, "100%.05.png"},
        {"100%.##.png", 5, "100%.05.png"},
        {"a%%b.##.png", 5, "a%%b.05.png"},  // no printf pattern: the signs stand for themselves
        {"####", 8, "0008"},
        {"in/the/shot_#####.exr", 8, "in/the/shot_00008.exr"},
        {"in.##/shot.###.exr", 8, "in.##/shot.008.exr"},
        {"../up/##.png", 8, "../up/08.png"},
        {"%018d.png", 1, "000000000000000001.png"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.pattern);
        const auto name = FrameName::Parse(c.pattern);
        ASSERT_TRUE(name);
        EXPECT_TRUE(name->HasPlace());
        EXPECT_EQ(name->Of(c.number), c.file);
        EXPECT_EQ(name->NumberOf(std::filesystem::path(c.file).filename().string()), c.number);
    }
}

TEST(FrameName, TextsWithoutAPlace) {
    for (const char* text : {"shot.dpx", "", "in.####/shot.dpx", "50%.png", "a%4d.png", "a%s.png",
                             "a%%d.png", "%", "a%04"})
        EXPECT_FALSE(FrameName::Parse(text)) << text;
}

TEST(FrameName, RefusesWhatIsNoOnePlace) {
    for (const char* text : {"a.##.b.##.png", "a.##.%04d.png", "%d%d.png", "%019d.png",
                             "%099999999999999999999d.png", "###################.png"})
        EXPECT_THROW(FrameName::Parse(text), zel::Error) << text;
}

TEST(FrameName, OtherFilesHaveNoNumber) {
    const FrameName name = *FrameName::Parse("in/shot.####.dpx");
    for (const char* file :
         {"shot.1.dpx", "shot.00001.dpx", "shot..dpx", "shot.001a.dpx", "shot.+001.dpx",
          "shot.0001.dpx.bak", "Shot.0001.dpx", "shot.-0000.dpx", "shot.--001.dpx", "shot.dpx", "",
          "shot.0x01.dpx", "shot. 001.dpx", "shot.99999999999999999999.dpx"})
        EXPECT_FALSE(name.NumberOf(file)) << file;
    // The number must not be made of the text around it.
    EXPECT_FALSE(FrameName::Parse("a1#1.png")->NumberOf("a1.png"));
    EXPECT_EQ(FrameName::Parse("a1#1.png")->NumberOf("a1111.png"), 11);
}

TEST(FrameName, LiteralNamesAreOne) {
    const FrameName name = FrameName::Literal("in/a.##.png");
    EXPECT_FALSE(name.HasPlace());
    EXPECT_EQ(name.Of(7), "in/a.##.png");
    EXPECT_EQ(name.Text(), "in/a.##.png");
    EXPECT_FALSE(name.NumberOf("a.##.png"));
}

TEST(FrameName, MovesToAnotherFolder) {
    EXPECT_EQ(FrameName::Parse("in/a.##.png")->In("out").Of(3), "out/a.03.png");
}

TEST(FrameName, TextIsThePattern) {
    for (const char* text : {"in/a.###.png", "a.#.png", "a.%04d.png", "a.%d.png"})
        EXPECT_EQ(FrameName::Parse(text)->Text(), text);
}

}  // namespace
