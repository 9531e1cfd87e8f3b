// Pictures of every kind through Color Balance, made and read back by other programs,
// against the curve stated once more in Curve.h.

#include "tests/cli/CliTest.h"
#include "tests/support/Bits.h"

#include <bit>
#include <cmath>
#include <random>

namespace {

using namespace zel::test;

class RenderPixels : public CliTest {
protected:
    const std::array<Curve, 3> curves = CurvesOf(kVivid);

    template <class T, class Of>
    void ExpectMapped(const std::vector<T>& in, const std::vector<T>& out, Of of) const {
        ASSERT_EQ(in.size(), out.size());
        for (std::size_t i = 0; i < in.size(); ++i)
            ASSERT_EQ(out[i], of(curves[i % 3], in[i]))
                << "pixel " << i / 3 << " channel " << i % 3 << " in 0x" << std::hex << +in[i];
    }
    void ExpectMapped8(const std::vector<std::uint8_t>& in,
                       const std::vector<std::uint8_t>& out) const {
        ExpectMapped(in, out, [](const Curve& c, std::uint8_t v) { return c.Of8(v); });
    }
    void ExpectMapped16(const std::vector<std::uint16_t>& in,
                        const std::vector<std::uint16_t>& out) const {
        ExpectMapped(in, out, [](const Curve& c, std::uint16_t v) { return c.Of16(v); });
    }
};

/// Every 8-bit value in every channel, each time with other neighbours.
std::vector<std::uint8_t> Every8() {
    std::vector<std::uint8_t> samples;
    for (unsigned i = 0; i < 256; ++i)
        for (const unsigned v : {i, 255 - i, i * 77})
            samples.push_back(static_cast<std::uint8_t>(v));
    return samples;
}

std::vector<std::uint16_t> Every16() {
    std::vector<std::uint16_t> samples;
    for (unsigned i = 0; i < 65536; ++i)
        for (const unsigned v : {i, 65535 - i, i * 40503})
            samples.push_back(static_cast<std::uint16_t>(v));
    return samples;
}

float HalfToFloat(unsigned bits) {
    const int exponent = static_cast<int>(bits >> 10 & 31);
    const float fraction = static_cast<float>(bits & 1023);
    return exponent == 0 ? std::ldexp(fraction, -24)
                         : std::ldexp(1024.0f + fraction, exponent - 25);
}

/// A positive float rounded to half, nearest even.
float RoundedToHalf(float v) {
    const int exponent = std::max(std::ilogb(v > 0 ? v : 1e-30f), -14);
    const float step = std::ldexp(1.0f, exponent - 10);
    return std::nearbyint(v / step) * step;
}

TEST_F(RenderPixels, EveryValueOf8BitFiles) {
    const auto in = Every8();
    for (const std::string suffix : {".png", ".tif"}) {
        SCOPED_TRACE(suffix);
        MakeWithMagick("in" + suffix, 32, 8, in, {"-define", "png:color-type=2"});
        const Outcome run = Render("in" + suffix, "out" + suffix, VividOptions());
        EXPECT_EQ(run.err, "");
        EXPECT_EQ(run.out,
                  "out" + suffix + ": 32 x 8, 8 bit, through ZEL Color Balance as BGRA8\n");
        ExpectMapped8(in, ReadWithMagick<std::uint8_t>("out" + suffix));
    }
}

TEST_F(RenderPixels, EveryValueOf16BitFiles) {
    const auto in = Every16();
    for (const std::string suffix : {".png", ".tif"}) {
        SCOPED_TRACE(suffix);
        MakeWithMagick("in" + suffix, 256, 256, in, {"-define", "png:bit-depth=16"});
        Render("in" + suffix, "out" + suffix, VividOptions());
        ExpectMapped16(in, ReadWithMagick<std::uint16_t>("out" + suffix));
    }
}

TEST_F(RenderPixels, AfterEffectsRendersTheSamePixelsAndAnswers516) {
    for (const auto& [in, bits] : {std::pair{Every8(), 8}}) {
        MakeWithMagick("in.png", 32, 8, in, {"-define", "png:color-type=2"});
        const Outcome run = Render("in.png", "ae.png", [] {
            Words options = VividOptions();
            options.insert(options.end(), {"--host", "ae"});
            return options;
        }());
        EXPECT_EQ(LinesOf(run.err), 1u) << run.err;
        EXPECT_NE(run.err.find("516"), std::string::npos) << run.err;
        EXPECT_NE(run.err.find("Not able to acquire AEFX Suite."), std::string::npos) << run.err;
        EXPECT_NE(run.out.find("as ARGB8"), std::string::npos) << run.out;
        ExpectMapped8(in, ReadWithMagick<std::uint8_t>("ae.png"));
    }
    const auto in = Every16();
    MakeWithMagick("in16.png", 256, 256, in, {"-define", "png:bit-depth=16"});
    Words options = VividOptions();
    options.insert(options.end(), {"--host", "ae", "--quiet"});
    const Outcome run = Render("in16.png", "ae16.png", options);
    EXPECT_EQ(run.err + run.out, "") << "--quiet";
    ExpectMapped16(in, ReadWithMagick<std::uint16_t>("ae16.png"));
    Render("in16.png", "premiere.png", VividOptions());
    EXPECT_EQ(ReadFile(In("ae16.png")), ReadFile(In("premiere.png")));
}

TEST_F(RenderPixels, ForceRenderChangesNoByte) {
    MakeWithMagick("in.png", 32, 8, Every8(), {"-define", "png:color-type=2"});
    Words options = VividOptions();
    options.insert(options.end(), {"-s", "ForceRender=on"});
    Render("in.png", "off.png", VividOptions());
    Render("in.png", "on.png", options);
    EXPECT_EQ(ReadFile(In("off.png")), ReadFile(In("on.png")));
}

TEST_F(RenderPixels, EveryHalfBetween0And1) {
    constexpr int kWidth = 128, kHeight = 120;  // 0x0000..0x3BFF: 0 to just below 1
    std::vector<float> planes;
    for (unsigned p = 0; p < 3; ++p)
        for (unsigned i = 0; i < 0x3C00; ++i)
            planes.push_back(HalfToFloat(p == 1 ? 0x3BFF - i : (i + p * 517) % 0x3C00));
    MakeExr("in.exr", kWidth, kHeight, planes, "half");
    const Outcome run = Render("in.exr", "out.exr", VividOptions());
    EXPECT_EQ(run.err, "");
    EXPECT_NE(run.out.find(", half, through ZEL Color Balance as BGRAFloat"), std::string::npos);
    const auto out = ReadWithFfmpeg<float>("out.exr", "gbrpf32le");
    ASSERT_EQ(out.size(), planes.size());
    for (std::size_t i = 0; i < out.size(); ++i) {
        const Curve& curve = curves[ChannelOfPlane(i / 0x3C00)];
        ASSERT_EQ(Bits{out[i]}, Bits{RoundedToHalf(curve.OfFloat(planes[i]))})
            << i << " in " << Bits{planes[i]};
    }
}

class FloatPixels : public RenderPixels {
protected:
    static constexpr int kWidth = 128, kHeight = 64;
    static constexpr std::size_t kPixels = kWidth * kHeight;

    /// Edges of the codes and a seeded sample, G B R planes.
    std::vector<float> Planes() {
        std::mt19937 random(20240611);
        std::uniform_real_distribution<float> unit(0.0f, 1.0f);
        std::vector<float> planes(3 * kPixels);
        for (std::size_t i = 0; i < planes.size(); ++i) {
            const float code = static_cast<float>(i % 1024) / 1023.0f;
            planes[i] = i % 4096 < 1024   ? code
                        : i % 4096 < 2048 ? std::nextafter(code, 0.0f)
                                          : unit(random);
        }
        return planes;
    }
    void ExpectMapped(const std::vector<float>& in, const std::string& file) {
        const auto out = ReadWithFfmpeg<float>(file, "gbrpf32le");
        ASSERT_EQ(out.size(), in.size());
        for (std::size_t i = 0; i < out.size(); ++i) {
            const Curve& curve = curves[ChannelOfPlane(i / kPixels)];
            ASSERT_EQ(Bits{out[i]}, Bits{curve.OfFloat(in[i])}) << i << " in " << Bits{in[i]};
        }
    }
};

TEST_F(FloatPixels, FloatExr) {
    const auto in = Planes();
    MakeExr("in.exr", kWidth, kHeight, in, "float");
    Render("in.exr", "out.exr", VividOptions());
    ExpectMapped(in, "out.exr");
}

TEST_F(FloatPixels, FloatTiffAlsoTiled) {
    const auto in = Planes();
    MakeExr("in.exr", kWidth, kHeight, in, "float");
    for (const Words& layout : {Words{}, Words{"--tile", "32", "16"}}) {
        Tool(Words{"oiiotool", "in.exr"} + layout + Words{"-d", "float", "-o", "in.tif"});
        Render("in.tif", "out.tif", VividOptions());
        Tool({"oiiotool", "out.tif", "-d", "float", "-o", "back.exr"});
        ExpectMapped(in, "back.exr");
    }
}

TEST_F(FloatPixels, UnderAfterEffectsAFloatPictureIsTakenIn16Bits) {
    const auto in = Planes();
    MakeExr("in.exr", kWidth, kHeight, in, "float");
    const Outcome run = Render("in.exr", "out.exr", {"--host", "ae", "-s", "Master/Red=50"});
    EXPECT_EQ(LinesOf(run.err), 2u) << run.err;
    EXPECT_NE(run.err.find("16 bits"), std::string::npos) << run.err;
    EXPECT_NE(run.out.find("as ARGB16"), std::string::npos) << run.out;
    const auto out = ReadWithFfmpeg<float>("out.exr", "gbrpf32le");
    const auto red = Curve(Balance{.master = {0, 50, 0, 0}}, 0);
    for (std::size_t i = 2 * kPixels; i < 3 * kPixels; ++i) {
        const auto sample = static_cast<std::uint16_t>(std::floor(in[i] * 65535.0f + 0.5f));
        ASSERT_NEAR(out[i], static_cast<float>(red.Of16(sample)) / 65535.0f, 1e-6f) << i;
    }
}

TEST_F(FloatPixels, SamplesOutside0To1AreCountedAndSaidOnce) {
    std::vector<float> in(3 * kPixels, 0.5f);
    in[0] = 1.5f;
    in[7] = -0.25f;
    in[kPixels] = std::numeric_limits<float>::infinity();
    in[2 * kPixels + 3] = std::numeric_limits<float>::quiet_NaN();
    in[5] = 1.0f;
    in[6] = 0.0f;
    MakeExr("in.exr", kWidth, kHeight, in, "float");
    const Outcome run = Render("in.exr", "out.exr");
    EXPECT_EQ(run.err,
              "zelfx: note: 4 of 24576 colour samples lie outside 0..1 and were clipped "
              "by the effect\n");
    const auto out = ReadWithFfmpeg<float>("out.exr", "gbrpf32le");
    EXPECT_EQ(out[0], 1.0f);
    EXPECT_EQ(out[7], 0.0f);
    EXPECT_EQ(out[kPixels], 1.0f);
    EXPECT_EQ(out[2 * kPixels + 3], 0.0f);
    EXPECT_EQ(out[5], 1.0f);
    EXPECT_EQ(out[6], 0.0f);
}

// --- options --------------------------------------------------------------------

TEST_F(RenderPixels, FormatOverrides) {
    const auto in = Every16();
    MakeWithMagick("in.png", 256, 256, in, {"-define", "png:bit-depth=16"});
    for (const std::string format : {"bgra16", "ARGB16"}) {
        Words options = VividOptions();
        options.insert(options.end(), {"--format", format});
        Render("in.png", "out.png", options);
        ExpectMapped16(in, ReadWithMagick<std::uint16_t>("out.png"));
    }
    Words options = VividOptions();
    options.insert(options.end(), {"--format", "BGRA8"});
    const Outcome run = Render("in.png", "out.png", options);
    EXPECT_NE(run.out.find("16 bit, through ZEL Color Balance as BGRA8"), std::string::npos);
    const auto out = ReadWithMagick<std::uint16_t>("out.png");
    for (std::size_t i = 0; i < in.size(); ++i) {
        const auto byte = static_cast<std::uint8_t>((in[i] + 128u) / 257u);
        ASSERT_EQ(out[i], curves[i % 3].Of8(byte) * 257u) << i;
    }
}

TEST_F(RenderPixels, EditorsScaleOf16Bits) {
    // White, 65535 in the file, is 32768 to the editors and lands on code 512.
    const std::vector<std::uint16_t> in{65535, 65535, 65535, 32768, 0, 16384};
    MakeWithMagick("in.png", 2, 1, in, {"-define", "png:bit-depth=16"});
    Words options = VividOptions();
    options.insert(options.end(), {"--range16", "ae"});
    Render("in.png", "out.png", options);
    const auto out = ReadWithMagick<std::uint16_t>("out.png");
    ASSERT_EQ(out.size(), in.size());
    for (std::size_t i = 0; i < in.size(); ++i) {
        const auto editors = static_cast<std::uint16_t>(std::lround(in[i] * 32768.0 / 65535.0));
        const double back = curves[i % 3].Of16(editors) * 65535.0 / 32768.0;
        EXPECT_EQ(out[i], std::min(std::lround(back), 65535L)) << i;
    }
    for (std::size_t c = 0; c < 3; ++c)
        EXPECT_EQ(out[c],
                  std::min(std::lround(curves[c].Code(512) * 64 * 65535.0 / 32768.0), 65535L));
}

TEST_F(RenderPixels, DepthOfTheOutput) {
    const auto in = Every8();
    MakeWithMagick("in.png", 32, 8, in, {"-define", "png:color-type=2"});
    const struct {
        const char *depth, *file, *said, *identify;
    } cases[] = {
        {"16", "a.png", "16 bit", "uint16"},  {"16", "a.tif", "16 bit", "uint16"},
        {"half", "a.exr", "half", "half"},    {"float", "b.exr", "float", "float"},
        {"float", "b.tif", "float", "float"}, {"8", "c.exr", "half", "half"},
        {"10", "c.dpx", "10 bit", "uint10"},  {"float", "c.png", "16 bit", "uint16"},
    };
    for (const auto& c : cases) {
        const Outcome run = Render("in.png", c.file, {"--depth", c.depth});
        EXPECT_NE(run.out.find(std::string(", ") + c.said + ","), std::string::npos) << run.out;
        const Outcome info = Tool({"oiiotool", "--info", c.file});
        EXPECT_NE(info.out.find(c.identify), std::string::npos) << c.file << ": " << info.out;
    }
}

TEST_F(RenderPixels, JpegInAndOut) {
    // Flat areas, which JPEG keeps to within a few codes.
    std::vector<std::uint8_t> flat;
    for (int i = 0; i < 64 * 64; ++i)
        for (const int v : {180, 120, 60}) flat.push_back(static_cast<std::uint8_t>(v));
    MakeWithMagick("in.jpg", 64, 64, flat, {"-quality", "98"});
    const auto in = ReadWithMagick<std::uint8_t>("in.jpg");
    Render("in.jpg", "out.jpg", VividOptions());
    const auto out = ReadWithMagick<std::uint8_t>("out.jpg");
    ASSERT_EQ(out.size(), in.size());
    for (std::size_t i = 0; i < in.size(); ++i)
        ASSERT_NEAR(out[i], curves[i % 3].Of8(in[i]), 3) << i;
    EXPECT_GT(std::abs(in[0] - out[0]) + std::abs(in[1] - out[1]) + std::abs(in[2] - out[2]), 30);
}

TEST_F(RenderPixels, OtherTypesAreRead) {
    const auto in = Every8();
    MakeWithMagick("in.png", 32, 8, in, {"-define", "png:color-type=2"});
    for (const std::string type : {"gif", "bmp", "ppm", "sgi"}) {
        SCOPED_TRACE(type);
        Tool({"convert", "in.png", "in." + type});
        Render("in." + type, type + ".png", VividOptions());
        ExpectMapped8(in, ReadWithMagick<std::uint8_t>(type + ".png"));
    }
}

TEST_F(RenderPixels, FirstBytesTellTheTypeWhereTheSuffixDoesNot) {
    const auto in = Every8();
    MakeWithMagick("in.png", 32, 8, in, {"-define", "png:color-type=2"});
    MakeWithMagick("in.tif", 32, 8, in);
    Tool({"oiiotool", "in.png", "-d", "uint8", "-o", "in.dpx"});
    for (const std::string right : {"in.png", "in.tif", "in.dpx"})
        for (const std::string wrong : {"named.jpg", "named.exr", "named.xyz", "named"}) {
            SCOPED_TRACE(right + " as " + wrong);
            fs::copy_file(In(right), In(wrong));
            Render(wrong, "out.png", VividOptions());
            ExpectMapped8(in, ReadWithMagick<std::uint8_t>("out.png"));
            fs::remove(In(wrong));
        }
}

TEST_F(RenderPixels, InputAndOutputMayBeOneFile) {
    const auto in = Every8();
    MakeWithMagick("in.png", 32, 8, in, {"-define", "png:color-type=2"});
    Render("in.png", "in.png", VividOptions());
    ExpectMapped8(in, ReadWithMagick<std::uint8_t>("in.png"));
    EXPECT_EQ(Listing(), (Words{"in.png", "read.raw"}));
}

TEST_F(RenderPixels, NamesOfFilesAreTakenAsTheyAre) {
    MakeWithMagick("in.png", 32, 8, Every8(), {"-define", "png:color-type=2"});
    Render("in.png", "plain.png");
    const std::string longest = std::string(251, 'x') + ".png";
    for (const std::string& name : {std::string("[a,b].png"), std::string("a b%04d.png"),
                                    std::string("\xC3\xA4\xFF.PNG"), longest}) {
        fs::copy_file(In("in.png"), In("copy.png"));
        fs::rename(In("copy.png"), In(name));
        Render(name, name);
        EXPECT_EQ(ReadFile(In(name)), ReadFile(In("plain.png"))) << name;
        fs::remove(In(name));
    }
}

}  // namespace
