// Alpha and channels beyond it, placement of the picture.

#include "tests/cli/CliTest.h"
#include "tests/support/Bits.h"

#include <cmath>

namespace {

using namespace zel::test;

class RenderAlpha : public CliTest {
protected:
    const std::array<Curve, 3> curves = CurvesOf(kVivid);

    Words Vivid(const Words& more) const { return VividOptions() + more; }
};

/// R, G, B, A with every alpha, fully clear pixels with colours among them.
template <class T>
std::vector<T> WithAlpha() {
    std::vector<T> samples;
    for (unsigned i = 0; i < 1024; ++i)
        for (const unsigned v : {i * 50021u, i * 40503u, i * 30011u, i * 65535u / 1023u})
            samples.push_back(static_cast<T>(sizeof(T) == 1 ? (v & 0xFFFF) >> 8 : v));
    return samples;
}

TEST_F(RenderAlpha, StraightAlphaIsKept) {
    const auto in8 = WithAlpha<std::uint8_t>();
    const auto in16 = WithAlpha<std::uint16_t>();
    for (const std::string suffix : {".png", ".tif"}) {
        SCOPED_TRACE(suffix);
        MakeWithMagick("in8" + suffix, 32, 32, in8);
        Render("in8" + suffix, "out8" + suffix, VividOptions());
        const auto out8 = ReadWithMagick<std::uint8_t>("out8" + suffix, true);
        ASSERT_EQ(out8.size(), in8.size());
        MakeWithMagick("in16" + suffix, 32, 32, in16);
        Render("in16" + suffix, "out16" + suffix, VividOptions());
        const auto out16 = ReadWithMagick<std::uint16_t>("out16" + suffix, true);
        ASSERT_EQ(out16.size(), in16.size());
        for (std::size_t i = 0; i < in8.size(); ++i) {
            ASSERT_EQ(out8[i], i % 4 == 3 ? in8[i] : curves[i % 4].Of8(in8[i])) << i;
            ASSERT_EQ(out16[i], i % 4 == 3 ? in16[i] : curves[i % 4].Of16(in16[i])) << i;
        }
    }
}

TEST_F(RenderAlpha, TheModulesAlphaOf16BitsLosesItsSixLowBits) {
    const auto in = WithAlpha<std::uint16_t>();
    MakeWithMagick("in.png", 32, 32, in);
    for (const Words& host : {Words{}, Words{"--host", "ae"}}) {
        Render("in.png", "out.png", Vivid({"--alpha", "module"}) + host);
        const auto out = ReadWithMagick<std::uint16_t>("out.png", true);
        for (std::size_t i = 3; i < in.size(); i += 4) ASSERT_EQ(out[i], in[i] & 0xFFC0) << i;
    }
}

TEST_F(RenderAlpha, TheModulesAlphaOfFloatIsTheRedCode) {
    const std::vector<float> planes{0.2f, 0.5f, 0.8f, 0.1f, 0.1f, 1.0f};  // G, B, R of 2 pixels
    MakeExr("in.exr", 2, 1, planes, "float");
    Render("in.exr", "out.exr", Vivid({"--alpha", "module"}));
    // G, B, R, A; the file's colours are multiplied with alpha.
    const auto out = ReadWithFfmpeg<float>("out.exr", "gbrapf32le");
    ASSERT_EQ(out.size(), 8u);
    for (std::size_t x = 0; x < 2; ++x) {
        const float red = planes[4 + x];
        const float alpha = static_cast<float>(static_cast<int>(red * 1023.0f)) * (1.0f / 1023.0f);
        EXPECT_EQ(Bits{out[6 + x]}, Bits{alpha}) << x;
        EXPECT_EQ(Bits{out[4 + x]}, Bits{curves[0].OfFloat(red) * alpha}) << x;
    }
}

TEST_F(RenderAlpha, PicturesWithoutAlphaStayWithout) {
    MakeWithMagick("in.png", 4, 1, std::vector<std::uint8_t>(12, 100),
                   {"-define", "png:color-type=2"});
    for (const char* file : {"out.png", "out.tif", "out.exr", "out.dpx"}) {
        Render("in.png", file);
        const std::string info = Tool({"oiiotool", "--info", file}).out;
        EXPECT_NE(info.find("3 channel"), std::string::npos) << info;
    }
}

TEST_F(RenderAlpha, ATypeWithoutAlphaSaysThatItIsLeftOut) {
    MakeWithMagick("in.png", 32, 32, WithAlpha<std::uint8_t>());
    const Outcome run = Render("in.png", "out.jpg");
    EXPECT_EQ(LinesOf(run.err), 1u) << run.err;
    EXPECT_NE(run.err.find("alpha"), std::string::npos) << run.err;
}

TEST_F(RenderAlpha, AssociatedColoursAreGradedStraight) {
    constexpr std::size_t kPixels = 64;
    std::vector<float> planes(4 * kPixels);
    for (std::size_t i = 0; i < kPixels; ++i) {
        const float alpha = static_cast<float>(i) / 63.0f;
        planes[3 * kPixels + i] = alpha;
        for (std::size_t p = 0; p < 3; ++p)
            planes[p * kPixels + i] =
                alpha * (0.1f + 0.25f * static_cast<float>(p) + static_cast<float>(i) / 400.0f);
    }
    for (const std::string depth : {"float", "half"}) {
        MakeExr("in.exr", 64, 1, planes, depth);
        const auto in = ReadWithFfmpeg<float>("in.exr", "gbrapf32le");
        Render("in.exr", "out.exr", VividOptions());
        const auto out = ReadWithFfmpeg<float>("out.exr", "gbrapf32le");
        ASSERT_EQ(out.size(), in.size());
        for (std::size_t i = 1; i < kPixels; ++i) {
            const float alpha = in[3 * kPixels + i];
            EXPECT_EQ(Bits{out[3 * kPixels + i]}, Bits{alpha}) << depth << i;
            for (std::size_t p = 0; p < 3; ++p) {
                const float straight = in[p * kPixels + i] / alpha;
                const float wanted = curves[ChannelOfPlane(p)].OfFloat(straight) * alpha;
                ASSERT_NEAR(out[p * kPixels + i], wanted, depth == "half" ? wanted / 2048 : 0)
                    << depth << " pixel " << i << " plane " << p;
            }
        }
    }
}

TEST_F(RenderAlpha, AssociatedColoursBesideNoAlphaAreKept) {
    // A glow: light that covers nothing. Straight colours under a clear pixel are none.
    MakeExr("in.exr", 1, 1, {0.5f, 0.25f, 0.75f, 0.0f}, "float");
    Render("in.exr", "out.exr", VividOptions());
    EXPECT_EQ(ReadWithFfmpeg<float>("out.exr", "gbrapf32le"),
              (std::vector{curves[1].OfFloat(0.5f), curves[2].OfFloat(0.25f),
                           curves[0].OfFloat(0.75f), 0.0f}));
    MakeWithMagick("in.png", 1, 1, std::vector<std::uint8_t>{200, 100, 50, 0});
    Render("in.png", "out.exr");
    EXPECT_EQ(ReadWithFfmpeg<float>("out.exr", "gbrapf32le"), std::vector<float>(4, 0.0f));
}

TEST_F(RenderAlpha, AssociatedTiffComesOutStraight) {
    MakeWithMagick("in.png", 1, 1, std::vector<std::uint16_t>{40000, 20000, 10000, 32768});
    Tool({"oiiotool", "in.png", "-d", "uint16", "-o", "in.tif"});  // associated, as oiiotool does
    Render("in.tif", "out.png", VividOptions());
    const auto out = ReadWithMagick<std::uint16_t>("out.png", true);
    const std::uint16_t in[] = {40000, 20000, 10000};
    for (std::size_t c = 0; c < 3; ++c) EXPECT_NEAR(out[c], curves[c].Of16(in[c]), 64) << c;
    EXPECT_EQ(out[3], 32768);
}

// --- channels -------------------------------------------------------------------

TEST_F(RenderAlpha, GreyBecomesColour) {
    std::vector<std::uint8_t> ramp;
    for (unsigned i = 0; i < 256; ++i) ramp.push_back(static_cast<std::uint8_t>(i));
    WriteFile(In("ramp.raw"), ramp);
    Tool({"convert", "-size", "16x16", "-depth", "8", "gray:ramp.raw", "-strip", "-define",
          "png:color-type=0", "grey.png"});
    Tool({"convert", "grey.png", "-alpha", "set", "-channel", "A", "-evaluate", "set", "25%",
          "-define", "png:color-type=4", "greya.png"});
    Render("grey.png", "out.png", VividOptions());
    Render("greya.png", "outa.png", VividOptions());
    const auto out = ReadWithMagick<std::uint8_t>("out.png");
    const auto outa = ReadWithMagick<std::uint8_t>("outa.png", true);
    ASSERT_EQ(out.size(), 768u);
    ASSERT_EQ(outa.size(), 1024u);
    for (std::size_t i = 0; i < 256; ++i) {
        for (std::size_t c = 0; c < 3; ++c) {
            ASSERT_EQ(out[3 * i + c], curves[c].Of8(ramp[i])) << i;
            ASSERT_EQ(outa[4 * i + c], curves[c].Of8(ramp[i])) << i;
        }
        ASSERT_EQ(outa[4 * i + 3], 64);
    }
}

TEST_F(RenderAlpha, ChannelsAreFoundByName) {
    const struct {
        const char *names, *values;
        bool alpha;
    } cases[] = {
        {"R,G,B,A,Z", "0.75,0.5,0.25,1.0,7", true},
        {"A,B,G,R,Z", "1.0,0.25,0.5,0.75,7", true},
        {"R,G,B,Z", "0.75,0.5,0.25,7", false},
        {"R,Z,G,x,B,y,A", "0.75,9,0.5,9,0.25,9,1.0", true},
    };
    for (const auto& c : cases) {
        const std::string channels =
            std::to_string(std::count(c.names, c.names + std::strlen(c.names), ',') + 1);
        Tool({"oiiotool", "--pattern", std::string("constant:color=") + c.values, "4x2", channels,
              "--chnames", c.names, "-d", "float", "-o", "in.exr"});
        Render("in.exr", "out.exr", VividOptions());
        const auto out = ReadWithFfmpeg<float>("out.exr", c.alpha ? "gbrapf32le" : "gbrpf32le");
        ASSERT_EQ(out.size(), c.alpha ? 32u : 24u) << c.names;
        EXPECT_EQ(Bits{out[0]}, Bits{curves[1].OfFloat(0.5f)}) << c.names;
        EXPECT_EQ(Bits{out[8]}, Bits{curves[2].OfFloat(0.25f)}) << c.names;
        EXPECT_EQ(Bits{out[16]}, Bits{curves[0].OfFloat(0.75f)}) << c.names;
        EXPECT_EQ(out.back(), c.alpha ? 1.0f : out[16]) << c.names;
    }
}

// --- placement ------------------------------------------------------------------

TEST_F(RenderAlpha, TheDataWindowIsKept) {
    Tool({"oiiotool", "--pattern", "constant:color=0.75,0.5,0.25", "16x12", "3", "--origin", "+5+7",
          "--fullsize", "64x48+2+3", "-d", "float", "-o", "in.exr"});
    Render("in.exr", "out.exr", VividOptions());
    const std::string info = Tool({"oiiotool", "--info", "-v", "out.exr"}).out;
    for (const char* text : {"16 x   12", "pixel data origin: x=5, y=7",
                             "full/display size: 64 x 48", "full/display origin: 2, 3"})
        EXPECT_NE(info.find(text), std::string::npos) << text << "\n" << info;
    Tool({"oiiotool", "out.exr", "--origin", "+0+0", "--fullpixels", "-d", "float", "-o",
          "at0.exr"});
    const auto out = ReadWithFfmpeg<float>("at0.exr", "gbrpf32le");
    ASSERT_EQ(out.size(), 3u * 16 * 12);
    for (std::size_t i = 0; i < 16 * 12; ++i)
        ASSERT_EQ(Bits{out[i]}, Bits{curves[1].OfFloat(0.5f)}) << i;
    for (const std::string file : {"out.png", "out.tif", "out.dpx", "out.jpg"}) {
        Render("in.exr", file);
        const std::string size = Tool({"identify", "-format", "%wx%h", file}).out;
        EXPECT_EQ(size, "16x12") << file;
    }
}

}  // namespace
