// Two pictures, measured, and against the figures of other programs.

#include "tests/looks/LooksTest.h"

#include <nlohmann/json.hpp>

#include <cmath>

namespace {

using namespace zel::test;
using nlohmann::json;

class ComparePictures : public LooksTest {
protected:
    json Compared(const Words& arguments, int status = 1) const {
        const Outcome run = Zelfx(Words{"compare"} + arguments + Words{"--json"});
        EXPECT_EQ(run.status, status) << run.err;
        EXPECT_EQ(run.err, "");
        return json::parse(run.out);
    }

    /// The number that ImageMagick prints for a metric: for some the part of 1 in brackets.
    double Magick(const std::string& metric, const std::string& a, const std::string& b) const {
        const Outcome run =
            RunProgram({"compare", "-metric", metric, a, b, "null:"}, {.folder = folder / ""});
        EXPECT_LE(run.status, 1) << run.err;
        const auto bracket = run.err.find('(');
        return std::stod(run.err.substr(bracket == std::string::npos ? 0 : bracket + 1));
    }
};

constexpr const char* kNames[] = {"red", "green", "blue"};

TEST_F(ComparePictures, TheSamePictureIsTheSame) {
    const json same = Compared({kPhotograph, kPhotograph}, 0);
    EXPECT_EQ(same.at("same"), true);
    EXPECT_EQ(same.at("pixels"), 240000);
    EXPECT_EQ(same.at("differing"), 0);
    EXPECT_EQ(same.at("all").at("max"), 0.0);
    EXPECT_EQ(same.at("all").at("psnr"), nullptr) << "infinite";
    const Outcome run = Succeeds({"compare", kPhotograph, kPhotograph});
    EXPECT_NE(run.out.find("0 of 240000 pixels differ: the pictures are the same"),
              std::string::npos);
    EXPECT_NE(run.out.find("inf"), std::string::npos);
}

TEST_F(ComparePictures, FiguresByHand) {
    // Off by 0, 1000, -2000 and 655 in red, by nothing in green, by 65535 once in blue.
    MakePicture("a.png", 4, {0, 5, 0, 1000, 5, 9, 4000, 5, 9, 655, 5, 9});
    MakePicture("b.png", 4, {0, 5, 65535, 2000, 5, 9, 2000, 5, 9, 0, 5, 9});
    const json c = Compared({"a.png", "b.png"});
    EXPECT_EQ(c.at("differing"), 4);
    const double red[] = {1000 / 65535.0, 2000 / 65535.0, 655 / 65535.0};
    const double squares = red[0] * red[0] + red[1] * red[1] + red[2] * red[2];
    EXPECT_NEAR(c.at("red").at("max").get<double>(), red[1], 1e-7);
    EXPECT_NEAR(c.at("red").at("mean").get<double>(), (red[0] + red[1] + red[2]) / 4, 1e-7);
    EXPECT_NEAR(c.at("red").at("psnr").get<double>(), -10 * std::log10(squares / 4), 1e-4);
    EXPECT_EQ(c.at("green").at("max"), 0.0);
    EXPECT_EQ(c.at("green").at("psnr"), nullptr);
    EXPECT_EQ(c.at("blue").at("max"), 1.0);
    EXPECT_EQ(c.at("blue").at("mean"), 0.25);
    EXPECT_NEAR(c.at("all").at("psnr").get<double>(), -10 * std::log10((squares + 1) / 12), 1e-4);
}

TEST_F(ComparePictures, AgreesWithImageMagickAndFfmpeg) {
    Succeeds({"render", kPhotograph, "graded.png", "-e", "color_balance", "-s", "midtones.red=-12",
              "-s", "shadows.blue=8"});
    const json c = Compared({kPhotograph, "graded.png"});
    EXPECT_EQ(c.at("differing"), Magick("AE", kPhotograph, "graded.png"));
    EXPECT_NEAR(c.at("all").at("mean").get<double>(), Magick("MAE", kPhotograph, "graded.png"),
                1e-6);
    EXPECT_NEAR(c.at("all").at("max").get<double>(), Magick("PAE", kPhotograph, "graded.png"),
                1e-5);
    EXPECT_NEAR(c.at("all").at("psnr").get<double>(), Magick("PSNR", kPhotograph, "graded.png"),
                1e-3);
    const std::string log = Tool({"ffmpeg", "-nostdin", "-hide_banner", "-i", kPhotograph, "-i",
                                  "graded.png", "-lavfi", "psnr", "-f", "null", "-"})
                                .err;
    for (const char* name : kNames) {
        const auto at = log.find(std::string("PSNR "));
        ASSERT_NE(at, std::string::npos) << log;
        const std::string key = std::string(" ") + name[0] + ":";
        const double psnr = std::stod(log.substr(log.find(key, at) + key.size()));
        EXPECT_NEAR(c.at(name).at("psnr").get<double>(), psnr, 1e-3) << name;
    }
}

TEST_F(ComparePictures, DepthsAreComparedOnOneScale) {
    Tool({"convert", kPhotograph, "-depth", "16", "-define", "png:bit-depth=16", "deep.png"});
    Compared({kPhotograph, "deep.png"}, 0);
    Tool({"oiiotool", kPhotograph, "-d", "float", "-o", "float.tif"});
    Compared({"float.tif", kPhotograph}, 0);
    MakePicture("a.png", 1, {0x8080, 0x8080, 0x8080});
    MakePicture("b.png", 1, {0x8080, 0x8081, 0x8080});
    EXPECT_NEAR(Compared({"a.png", "b.png"}).at("green").at("max").get<double>(), 1 / 65535.0,
                1e-7);
}

TEST_F(ComparePictures, AlphaCounts) {
    Tool({"convert", "-size", "2x1", "xc:rgba(10,20,30,0.2)", "-depth", "8", "PNG32:a.png"});
    Tool({"convert", "-size", "2x1", "xc:rgb(10,20,30)", "-depth", "8", "PNG24:b.png"});
    const json c = Compared({"a.png", "b.png"});
    EXPECT_EQ(c.at("red").at("max"), 0.0);
    EXPECT_NEAR(c.at("alpha").at("max").get<double>(), 204 / 255.0, 1e-6);
    EXPECT_FALSE(Compared({kPhotograph, kPhotograph}, 0).contains("alpha"));
}

TEST_F(ComparePictures, NotANumberIsTheSameOnlyAsItself) {
    const auto make = [&](const std::string& file, float first) {
        std::vector<std::uint8_t> bytes(2 * 3 * sizeof(float));
        const float samples[] = {0.5f, first, 0.5f, 0.5f, 0.25f, 0.25f};
        std::memcpy(bytes.data(), samples, sizeof samples);
        folder.Write("made.raw", bytes);
        Tool({"ffmpeg", "-v", "error", "-y", "-f", "rawvideo", "-pix_fmt", "gbrpf32le", "-s", "2x1",
              "-i", "made.raw", "-format", "float", "-update", "1", file});
    };
    make("nan.exr", std::nanf(""));
    make("one.exr", 1.0f);
    make("inf.exr", INFINITY);
    Compared({"nan.exr", "nan.exr"}, 0);
    Compared({"inf.exr", "inf.exr"}, 0);
    for (const char* odd : {"nan.exr", "inf.exr"}) {
        const json c = Compared({odd, "one.exr"});
        EXPECT_EQ(c.at("differing"), 1) << odd;
        EXPECT_EQ(c.at("all").at("unmeasured"), 1) << odd;
        EXPECT_EQ(c.at("all").at("max"), 0.0) << odd;
        const Outcome run = Zelfx({"compare", odd, "one.exr"});
        EXPECT_NE(run.out.find("1 samples differ and are no finite numbers"), std::string::npos)
            << run.out;
    }
}

// --- pictures of the two ----------------------------------------------------------

class PictureOfTwo : public ComparePictures {
protected:
    static constexpr int kWidth = 6;
    Samples a, b;

    void SetUp() override {
        for (unsigned i = 0; i < 3 * 2 * kWidth; ++i) {
            a.push_back(static_cast<std::uint16_t>(i * 1777));
            b.push_back(static_cast<std::uint16_t>(65535 - i * 1111));
        }
        MakePicture("a.png", kWidth, a);
        MakePicture("b.png", kWidth, b);
    }

    Samples Drawn(const Words& options) const {
        EXPECT_EQ(Zelfx(Words{"compare", "a.png", "b.png", "-o", "two.png"} + options).status, 1);
        return ReadPicture("two.png");
    }
};

TEST_F(PictureOfTwo, Difference) {
    const struct {
        Words options;
        double gain;
    } cases[] = {{{}, 1}, {{"--mode", "diff", "--gain", "3"}, 3}, {{"--gain", "0.5"}, 0.5}};
    for (const auto& c : cases) {
        const Samples drawn = Drawn(c.options);
        ASSERT_EQ(drawn.size(), a.size());
        for (std::size_t i = 0; i < a.size(); ++i)
            ASSERT_NEAR(drawn[i], std::min(65535.0, c.gain * std::abs(a[i] - b[i])), 1.0)
                << "sample " << i << ", gain " << c.gain;
    }
}

TEST_F(PictureOfTwo, SideBySide) {
    const Samples drawn = Drawn({"--mode", "side"});
    ASSERT_EQ(drawn.size(), 2 * a.size());
    for (std::size_t y = 0; y < 2; ++y)
        for (std::size_t x = 0; x < 3 * 2 * kWidth; ++x) {
            const bool left = x < 3 * kWidth;
            ASSERT_EQ(drawn[y * 6 * kWidth + x],
                      (left ? a : b)[y * 3 * kWidth + x - (left ? 0 : 3 * kWidth)])
                << x << ',' << y;
        }
}

TEST_F(PictureOfTwo, Split) {
    const Samples drawn = Drawn({"--mode", "Split"});
    ASSERT_EQ(drawn.size(), a.size());
    for (std::size_t i = 0; i < a.size(); ++i) {
        const std::size_t x = i / 3 % kWidth;
        ASSERT_EQ(drawn[i], x < 3 ? a[i] : x == 3 ? 65535 : b[i]) << "sample " << i;
    }
}

TEST_F(PictureOfTwo, IsAsDeepAsTheDeeperOne) {
    Tool({"convert", "-size", "6x2", "xc:gray", "-depth", "8", "PNG24:flat.png"});
    for (const Words& two : {Words{"flat.png", "a.png"}, Words{"a.png", "flat.png"}}) {
        Zelfx(Words{"compare"} + two + Words{"-o", "two.png"});
        EXPECT_EQ(Tool({"identify", "-format", "%[bit-depth]", "two.png"}).out, "16");
    }
}

TEST_F(ComparePictures, WrongUsage) {
    Tool({"convert", "-size", "6x2", "xc:gray", "flat.png"});
    Fails({"compare", kPhotograph, "flat.png"}, 1, {"600 x 400", "6 x 2", "size"});
    Fails({"compare", kPhotograph, "none.png"}, 3, {"none.png"});
    Fails({"compare", kPhotograph}, 2, {"B"});
    const Words two{"compare", kPhotograph, kPhotograph};
    Fails(two + Words{"-o", "x.png", "--mode", "wipe"}, 2, {"'wipe'", "diff, side or split"});
    for (const char* gain : {"0", "-1", "nan", "inf", "much", "2x"})
        Fails(two + Words{"-o", "x.png", "--gain", gain}, 2,
              {"--gain", std::string("'") + gain + "'"});
    Fails(two + Words{"-o", "x.png", "--mode", "side", "--gain", "2"}, 2, {"--gain", "diff"});
    Fails(two + Words{"--gain", "2"}, 2, {"--gain", "--output"});
    Fails(two + Words{"--mode", "side"}, 2, {"--mode", "--output"});
    Fails(two + Words{"-o", "x.gif"}, 2, {"x.gif", ".png"});
    Fails(two + Words{"-o", "no/x.png"}, 1, {"'no'"});
    EXPECT_FALSE(Exists("x.png"));
}

}  // namespace
