// The scopes, read back as pictures.

#include "tests/looks/LooksTest.h"

#include <algorithm>

namespace {

using namespace zel::test;

class Scopes : public LooksTest {
protected:
    // Where the drawing has its parts, in pixels.
    static constexpr int kWidth = 1094, kHeight = 966;
    static constexpr int kLeft = 64, kPanel = 320, kGap = 18;
    static constexpr int kHistogramTop = 92, kHistogramBottom = 352;
    static constexpr int kParadeTop = 420, kParadeBottom = 932;

    Samples drawn;

    void Draw(const std::string& file) {
        Succeeds({"scope", file, "-o", "scope.png"});
        drawn = ReadPicture("scope.png");
        ASSERT_EQ(drawn.size(), std::size_t{3} * kWidth * kHeight);
    }

    int Sample(int x, int y, int channel) const {
        return drawn[static_cast<std::size_t>(3 * (y * kWidth + x) + channel)] / 257;
    }

    /// Rows of a panel of the parade that are lit at its column x, top and bottom.
    std::pair<int, int> Lit(int panel, int x) const {
        int top = -1, bottom = -1;
        for (int y = kParadeTop + 1; y < kParadeBottom; ++y) {
            if (Sample(kLeft + panel * (kPanel + kGap) + x, y, panel) < 100) continue;
            if (top < 0) top = y;
            bottom = y;
        }
        return {top, bottom};
    }
};

TEST_F(Scopes, ParadeShowsEachChannelAtItsCode) {
    // Levels of four codes: 8-bit values 200, 100 and 50, two rows of pixels each.
    Tool({"convert", "-size", "400x30", "xc:rgb(200,100,50)", "-depth", "8", "PNG24:flat.png"});
    Draw("flat.png");
    const int values[] = {200, 100, 50};
    for (int panel = 0; panel < 3; ++panel)
        for (const int x : {1, 100, 318}) {
            const auto [top, bottom] = Lit(panel, x);
            EXPECT_EQ(top, kParadeTop + 2 * (255 - values[panel])) << panel << ' ' << x;
            EXPECT_EQ(bottom, top + 1) << panel << ' ' << x;
        }
}

TEST_F(Scopes, ParadeFollowsTheColumns) {
    Tool({"convert", "-size", "1x640", "gradient:white-black", "-rotate", "-90", "-depth", "8",
          "PNG24:ramp.png"});
    const Samples ramp = ReadPicture("ramp.png");
    Draw("ramp.png");
    for (const int x : {5, 80, 160, 240, 314}) {
        const int value = ramp[static_cast<std::size_t>(3 * 2 * x)] / 257;
        for (int panel = 0; panel < 3; ++panel)
            EXPECT_NEAR(Lit(panel, x).first, kParadeTop + 2 * (255 - value), 2) << x;
    }
}

TEST_F(Scopes, HistogramStandsAtTheCode) {
    // Half of the pixels at 64, a quarter each at 128 and 192.
    Tool({"convert", "-size", "100x20", "xc:rgb(64,64,64)", "(", "-size", "100x10",
          "xc:rgb(128,128,128)", ")", "(", "-size", "100x10", "xc:rgb(192,192,192)", ")", "-append",
          "-depth", "8", "PNG24:bars.png"});
    Draw("bars.png");
    const auto height = [&](int value) {
        const int x = kLeft + static_cast<int>((value + 0.5) * 996 / 256);
        int y = kHistogramBottom - 1;
        while (y > kHistogramTop && Sample(x, y, 0) > 150 && Sample(x, y, 2) > 150) --y;
        return kHistogramBottom - 1 - y;
    };
    EXPECT_NEAR(height(64), 0.96 * (kHistogramBottom - kHistogramTop), 2);
    EXPECT_NEAR(height(128), 0.48 * (kHistogramBottom - kHistogramTop), 2);
    EXPECT_NEAR(height(192), 0.48 * (kHistogramBottom - kHistogramTop), 2);
    for (const int value : {20, 62, 66, 126, 130, 230}) EXPECT_EQ(height(value), 0) << value;
}

TEST_F(Scopes, DrawsPicturesOfEverySize) {
    for (const char* size : {"1x1", "1x500", "500x1", "321x7"}) {
        SCOPED_TRACE(size);
        Tool({"convert", "-size", size, "xc:rgb(200,100,50)", "-depth", "16", "in.png"});
        Draw("in.png");
        EXPECT_EQ(Lit(0, 160).first, kParadeTop + 2 * (255 - 200));
    }
}

TEST_F(Scopes, FloatsOutsideAreAtTheEnds) {
    Tool({"oiiotool", "--pattern", "constant:color=7,-3,0.5", "8x8", "3", "-d", "float", "-o",
          "in.exr"});
    Draw("in.exr");
    EXPECT_LE(Lit(0, 160).first, kParadeTop + 1);
    EXPECT_GE(Lit(1, 160).second, kParadeBottom - 2);
    EXPECT_NEAR(Lit(2, 160).first, kParadeTop + 2 * (255 - 127), 1);
}

TEST_F(Scopes, SameBytesEveryTime) {
    Succeeds({"scope", kPhotograph, "-o", "a.png"});
    Succeeds({"scope", kPhotograph, "-o", "b.png"});
    EXPECT_EQ(folder.Read("a.png"), folder.Read("b.png"));
}

TEST_F(Scopes, WrongUsage) {
    Fails({"scope", kPhotograph}, 2, {"--output"});
    Fails({"scope", kPhotograph, "-o", "x.jpg"}, 2, {"x.jpg", ".png"});
    Fails({"scope", kPhotograph, "-o", "no/x.png"}, 1, {"'no'"});
    Fails({"scope", "none.png", "-o", "x.png"}, 3, {"none.png"});
    EXPECT_FALSE(Exists("x.png"));
}

}  // namespace
