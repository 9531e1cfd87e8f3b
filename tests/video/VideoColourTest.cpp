// From Y, Cb, Cr to red, green, blue and back: by the matrix and range that a clip names,
// and by stated ones where it names none.

#include "tests/video/VideoTests.h"

#include <array>
#include <cmath>

namespace {

using namespace zel::test;
using VideoColour = VideoTest;

struct Colour {
    int y, cb, cr;  // of 8 bits
};

/// Red, green and blue on the scale 0..1, from the weights of red and blue in Y.
std::array<double, 3> RgbOf(const Colour& c, double kr, double kb, bool full) {
    const double y = full ? c.y / 255.0 : (c.y - 16) / 219.0;
    const double cb = (c.cb - 128) / (full ? 255.0 : 224.0);
    const double cr = (c.cr - 128) / (full ? 255.0 : 224.0);
    const double r = y + 2 * (1 - kr) * cr, b = y + 2 * (1 - kb) * cb;
    return {r, (y - kr * r - kb * b) / (1 - kr - kb), b};
}

TEST_F(VideoColour, MatrixAndRangeAreThoseNamed) {
    const struct {
        const char *name, *matrix, *range;
        double kr, kb;
        int depth;
    } cases[] = {
        {"high definition", "bt709", "tv", 0.2126, 0.0722, 8},
        {"high definition, full range", "bt709", "pc", 0.2126, 0.0722, 8},
        {"standard definition", "smpte170m", "tv", 0.299, 0.114, 8},
        {"standard definition of Europe", "bt470bg", "tv", 0.299, 0.114, 8},
        {"wide gamut in 10 bits", "bt2020nc", "tv", 0.2627, 0.0593, 10},
        {"early high definition", "smpte240m", "tv", 0.212, 0.087, 8},
    };
    // A frame of each.
    constexpr Colour colours[] = {
        {100, 110, 160}, {180, 140, 100}, {60, 150, 120}, {235, 128, 128}, {16, 128, 128}};
    constexpr std::size_t kWidth = 32, kHeight = 16, kPixels = kWidth * kHeight;
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        std::vector<std::uint8_t> raw;
        for (const Colour& colour : colours) {
            raw.insert(raw.end(), kPixels, static_cast<std::uint8_t>(colour.y));
            raw.insert(raw.end(), kPixels / 4, static_cast<std::uint8_t>(colour.cb));
            raw.insert(raw.end(), kPixels / 4, static_cast<std::uint8_t>(colour.cr));
        }
        const bool deep = c.depth == 10;
        if (deep) {
            std::vector<std::uint16_t> codes;
            for (const std::uint8_t v : raw) codes.push_back(static_cast<std::uint16_t>(v * 4));
            WriteFile(In("raw"), codes);
        } else {
            WriteFile(In("raw"), raw);
        }
        Ffmpeg({"-f", "rawvideo", "-s", "32x16", "-pix_fmt", deep ? "yuv420p10le" : "yuv420p", "-i",
                "raw", "-c:v", "ffv1", "-vf", "setparams=range=" + std::string(c.range),
                "-colorspace", c.matrix, "-color_range", c.range, "in.mkv"});

        const Words lossless{"--codec", "ffv1"};
        EXPECT_EQ(RenderClip("in.mkv", "rgb.mkv", lossless + Words{"--pix-fmt", "bgra"}).err, "");
        const auto rgb = Samples<std::uint8_t>("rgb.mkv", "rgb24");
        ASSERT_EQ(rgb.size(), std::size(colours) * kPixels * 3);
        for (std::size_t i = 0; i < rgb.size(); ++i) {
            const Colour& colour = colours[i / (kPixels * 3)];
            const double wanted = RgbOf(colour, c.kr, c.kb, std::string(c.range) == "pc")[i % 3];
            ASSERT_NEAR(rgb[i], std::fmin(std::fmax(wanted, 0), 1) * 255, 1.0)
                << "Y " << colour.y << " sample " << i;
        }

        // And back again.
        RenderClip("in.mkv", "yuv.mkv", lossless);
        const auto yuv = Samples<std::uint8_t>("yuv.mkv", "yuv420p");
        ASSERT_EQ(yuv.size(), raw.size());
        for (std::size_t i = 0; i < yuv.size(); ++i)
            ASSERT_NEAR(yuv[i], raw[i], 1) << "sample " << i;
        EXPECT_EQ(VideoOf("yuv.mkv")["color_space"], c.matrix);
        EXPECT_EQ(VideoOf("yuv.mkv")["color_range"], c.range);
    }
}

TEST_F(VideoColour, WhatIsAssumedIsSaid) {
    const struct {
        const char* size;
        Words marks;
        std::vector<std::string> said, unsaid;
    } cases[] = {
        {"96x64", {}, {"limited range (tv)", "matrix smpte170m", "64 lines"}, {}},
        {"32x720", {}, {"limited range (tv)", "matrix bt709", "720 lines"}, {}},
        {"96x64", {"-color_range", "tv"}, {"matrix smpte170m"}, {"range"}},
        {"96x64", {"-colorspace", "bt709"}, {"limited range (tv)"}, {"matrix"}},
        {"96x64", {"-colorspace", "bt709", "-color_range", "pc"}, {}, {"range", "matrix"}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::PrintToString(c.marks) + c.size);
        MakeClip("in.mkv", Words{"-c:v", "ffv1", "-pix_fmt", "yuv420p", "-an"} + c.marks, c.size,
                 "25", "0.2");
        const Outcome run = RenderClip("in.mkv", "out.mkv", {"--codec", "ffv1"});
        EXPECT_EQ(LinesOf(run.err), c.said.empty() ? 0u : 1u) << run.err;
        for (const std::string& text : c.said)
            EXPECT_NE(run.err.find(text), std::string::npos) << text << " in " << run.err;
        for (const std::string& text : c.unsaid)
            EXPECT_EQ(run.err.find(text), std::string::npos) << text << " in " << run.err;
        // Assumed is not known: the output says no more than the input.
        for (const char* tag : {"color_space", "color_range"})
            EXPECT_EQ(VideoOf("out.mkv").value(tag, "none"), VideoOf("in.mkv").value(tag, "none"));
        EXPECT_EQ(RenderClip("in.mkv", "out.mkv", {"--quiet"}).err, "");
    }
}

TEST_F(VideoColour, RgbIsWrittenByAStatedMatrix) {
    MakeClip("in.mkv", {"-c:v", "ffv1", "-pix_fmt", "bgra", "-an", "-frames:v", "3"});
    const Outcome run = RenderClip("in.mkv", "out.mp4");
    EXPECT_NE(run.err.find("is RGB: written with the matrix smpte170m in limited range"),
              std::string::npos)
        << run.err;
    EXPECT_EQ(VideoOf("out.mp4")["color_space"], "smpte170m");
    EXPECT_EQ(VideoOf("out.mp4")["color_range"], "tv");
}

}  // namespace
