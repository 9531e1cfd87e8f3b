// 10-bit DPX: codes, byte order and tags, held against two other readers.

#include "tests/cli/CliTest.h"

#include <algorithm>
#include <string_view>

namespace {

using namespace zel::test;

constexpr int kWidth = 1024, kHeight = 3;
constexpr std::size_t kTransferAt = 801, kColorimetricAt = 802;

class RenderDpx : public CliTest {
protected:
    /// Every code along a row, in planes G, B, R; made by ffmpeg in either byte order.
    std::vector<std::uint16_t> MakeRamp(const std::string& file, bool bigEndian) const {
        std::vector<std::uint16_t> planes;
        for (std::size_t i = 0; i < std::size_t{3} * kWidth * kHeight; ++i)
            planes.push_back(static_cast<std::uint16_t>(i % kWidth));
        WriteFile(In("made.raw"), planes);
        Tool({"ffmpeg", "-v", "error", "-y", "-f", "rawvideo", "-pix_fmt", "gbrp10le", "-s",
              "1024x3", "-i", "made.raw", "-pix_fmt", bigEndian ? "gbrp10be" : "gbrp10le", file});
        fs::remove(In("made.raw"));
        return planes;
    }
    std::vector<std::uint16_t> Codes(const std::string& file) const {
        return ReadWithFfmpeg<std::uint16_t>(file, "gbrp10le");
    }
    void SetTags(const std::string& file, unsigned char transfer, unsigned char colorimetric) {
        Bytes bytes = ReadFile(In(file));
        bytes[kTransferAt] = transfer;
        bytes[kColorimetricAt] = colorimetric;
        WriteFile(In(file), bytes);
    }
    std::string Magic(const std::string& file) const {
        const Bytes bytes = ReadFile(In(file));
        return {bytes.begin(), bytes.begin() + 4};
    }
};

TEST_F(RenderDpx, ANeutralBalanceLowers129CodesByOne) {
    const auto in = MakeRamp("in.dpx", true);
    ASSERT_EQ(Codes("in.dpx"), in) << "the ramp is not what it should be";
    Render("in.dpx", "out.dpx");
    const auto out = Codes("out.dpx");
    ASSERT_EQ(out.size(), in.size());
    const Curve neutral(Balance{}, 0);
    std::vector<std::size_t> lower;
    for (std::size_t i = 0; i < out.size(); ++i) {
        ASSERT_EQ(out[i], neutral.Code(in[i])) << "code " << in[i];
        ASSERT_TRUE(out[i] == in[i] || out[i] + 1 == in[i]) << "code " << in[i];
        if (i < kWidth && out[i] != in[i]) lower.push_back(i);
    }
    EXPECT_EQ(lower.size(), 129u);
    lower.resize(5);
    EXPECT_EQ(lower, (std::vector<std::size_t>{34, 35, 37, 40, 41}));

    // The same again through another library: 10 bits in the top of 16.
    Tool({"oiiotool", "out.dpx", "--compression", "none", "-d", "uint16", "-o", "out.tif"});
    const auto other = ReadWithMagick<std::uint16_t>("out.tif");
    for (std::size_t i = 0; i < kWidth; ++i) ASSERT_EQ(other[3 * i] >> 6, out[i]) << i;
}

TEST_F(RenderDpx, EveryCodeThroughAVividBalance) {
    const auto in = MakeRamp("in.dpx", false);
    const auto curves = CurvesOf(kVivid);
    Render("in.dpx", "out.dpx", VividOptions());
    const auto out = Codes("out.dpx");
    ASSERT_EQ(out.size(), in.size());
    for (std::size_t i = 0; i < out.size(); ++i)
        ASSERT_EQ(out[i], curves[ChannelOfPlane(i / (kWidth * kHeight))].Code(in[i])) << i;
}

TEST_F(RenderDpx, TheByteOrderIsKeptOrChosen) {
    const struct {
        bool inBig;
        Words options;
        std::string_view magic;
    } cases[] = {
        {true, {}, "SDPX"},
        {false, {}, "XPDS"},
        {true, {"--endian", "little"}, "XPDS"},
        {false, {"--endian", "BIG"}, "SDPX"},
    };
    for (const auto& c : cases) {
        const auto in = MakeRamp("in.dpx", c.inBig);
        ASSERT_EQ(Magic("in.dpx"), c.inBig ? "SDPX" : "XPDS");
        Render("in.dpx", "out.dpx", c.options);
        EXPECT_EQ(Magic("out.dpx"), c.magic);
        const auto out = Codes("out.dpx");
        EXPECT_EQ(out[34], 33);
        EXPECT_EQ(out[36], 36);
        EXPECT_EQ(out[1023], 1023);
    }
}

TEST_F(RenderDpx, TagsAreKept) {
    const std::pair<unsigned char, unsigned char> tags[] = {
        {0, 0}, {1, 1}, {2, 2},  {3, 3},  {4, 4},    {5, 6},    {6, 5},
        {7, 8}, {8, 9}, {9, 10}, {10, 7}, {12, 255}, {254, 77}, {255, 255}};
    for (const bool big : {true, false}) {
        MakeRamp("in.dpx", big);
        for (const auto& [transfer, colorimetric] : tags) {
            SetTags("in.dpx", transfer, colorimetric);
            Render("in.dpx", "out.dpx");
            const Bytes out = ReadFile(In("out.dpx"));
            EXPECT_EQ(out[kTransferAt], transfer);
            EXPECT_EQ(out[kColorimetricAt], colorimetric);
            EXPECT_EQ(Codes("out.dpx")[34], 33) << "transfer tag " << int{transfer};
        }
    }
}

TEST_F(RenderDpx, TheTransferTagIsChosen) {
    const std::pair<const char*, int> names[] = {
        {"user", 0},      {"printing", 1}, {"linear", 2},    {"log", 3},       {"video", 4},
        {"smpte274m", 5}, {"REC709", 6},   {"bt601-625", 7}, {"bt601-525", 8}, {"undefined", 255},
    };
    MakeRamp("in.dpx", true);
    SetTags("in.dpx", 4, 6);
    for (const auto& [name, value] : names) {
        Render("in.dpx", "out.dpx", {"--transfer", name});
        const Bytes out = ReadFile(In("out.dpx"));
        EXPECT_EQ(out[kTransferAt], value) << name;
        EXPECT_EQ(out[kColorimetricAt], 6) << name;
        EXPECT_EQ(Codes("out.dpx")[35], 34) << name;
    }
}

TEST_F(RenderDpx, FromOtherFilesTheTagsAreUndefined) {
    MakeWithMagick("in.png", 2, 1, std::vector<std::uint16_t>{0, 64, 128, 65535, 32768, 6400},
                   {"-define", "png:bit-depth=16"});
    Render("in.png", "out.dpx", {"--depth", "10"});
    EXPECT_EQ(Magic("out.dpx"), "SDPX");
    const Bytes out = ReadFile(In("out.dpx"));
    EXPECT_EQ(out[kTransferAt], 255);
    EXPECT_EQ(out[kColorimetricAt], 255);
    std::vector<std::uint16_t> codes{1, 512, 2, 100, 0, 1023};  // planes G, B, R
    const Curve neutral(Balance{}, 0);
    for (std::uint16_t& code : codes) code = static_cast<std::uint16_t>(neutral.Code(code));
    EXPECT_EQ(Codes("out.dpx"), codes);
}

TEST_F(RenderDpx, TheHeaderNamesTheFileItself) {
    MakeRamp("in.dpx", true);
    Render("in.dpx", "out.dpx");
    const Bytes out = ReadFile(In("out.dpx"));
    EXPECT_STREQ(reinterpret_cast<const char*>(out.data()) + 36, "out.dpx");
}

TEST_F(RenderDpx, FilesOfOtherWritersAreNotTakenForBroken) {
    const std::vector<std::uint16_t> samples(std::size_t{3} * 37 * 35, 0x8000);
    MakeWithMagick("in.tif", 37, 35, samples);
    for (const char* depth : {"8", "10", "12", "16"}) {
        Tool({"convert", "in.tif", "-depth", depth, "magick.dpx"});
        Render("magick.dpx", "out.dpx");
    }
    for (const char* layout : {"rgb24", "gbrp10le", "gbrp10be", "gbrp12le", "rgb48be", "rgba64le",
                               "gray8", "gray16be"}) {
        Tool({"ffmpeg", "-v", "error", "-y", "-i", "in.tif", "-pix_fmt", layout, "ff.dpx"});
        Render("ff.dpx", "out.dpx");
    }
    for (const char* depth : {"uint8", "uint10", "uint12", "uint16"}) {
        Tool({"oiiotool", "in.tif", "-d", depth, "-o", "oiio.dpx"});
        Render("oiio.dpx", "out.dpx");
    }
}

}  // namespace
