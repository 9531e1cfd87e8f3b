// zelfx convert, pattern and place: the image library on raw frames and pictures.

#include "tests/cli/CliTest.h"

#include <fstream>
#include <numeric>

namespace {

using namespace zel::test;

class RawVerbs : public CliTest {
protected:
    static constexpr int kWidth = 48, kHeight = 8;  // a v210 line of 128 bytes

    Bytes Colours() const {
        Bytes bytes(Pixels(kWidth, kHeight) * 4);
        for (std::size_t i = 0; i < bytes.size(); ++i)
            bytes[i] = static_cast<unsigned char>(i * 37 + i / 251);
        return bytes;
    }
};

TEST_F(RawVerbs, ConvertsToDpxWordsThatOthersRead) {
    const Bytes bgra = Colours();
    WriteFile(In("in.bgra"), bgra);
    const Outcome run = Zelfx(
        {"convert", "in.bgra", "out.dpx10", "--from", "BGRA8", "--to", "DpxBE", "--size", "48x8"});
    ASSERT_EQ(run.status, 0) << run.err;
    const Bytes words = ReadFile(In("out.dpx10"));
    ASSERT_EQ(words.size(), bgra.size());
    for (std::size_t p = 0; p < bgra.size(); p += 4) {
        const unsigned word = static_cast<unsigned>(words[p]) << 24 |
                              static_cast<unsigned>(words[p + 1]) << 16 |
                              static_cast<unsigned>(words[p + 2]) << 8 | words[p + 3];
        ASSERT_EQ(word, static_cast<unsigned>(bgra[p + 2]) << 24 |
                            static_cast<unsigned>(bgra[p + 1]) << 14 |
                            static_cast<unsigned>(bgra[p]) << 4);
    }
}

TEST_F(RawVerbs, V210IsDecodedByFfmpeg) {
    Bytes bgra(Pixels(kWidth, kHeight) * 4, 128);
    WriteFile(In("in.bgra"), bgra);
    ASSERT_EQ(Zelfx({"convert", "in.bgra", "out.v210", "--from", "bgra8", "--to", "v210", "--size",
                     "48x8"})
                  .status,
              0);
    Tool({"ffmpeg", "-v", "error", "-y", "-f", "v210", "-video_size", "48x8", "-i", "out.v210",
          "-f", "rawvideo", "-pix_fmt", "yuv422p10le", "planes.raw"});
    const auto planes = ValuesOf<std::uint16_t>(ReadFile(In("planes.raw")));
    ASSERT_EQ(planes.size(), Pixels(kWidth, kHeight) * 2);
    EXPECT_NEAR(planes[0], 511, 1);                   // half grey
    EXPECT_EQ(planes[Pixels(kWidth, kHeight)], 511);  // its chroma
}

TEST_F(RawVerbs, StreamsAndFramesInARow) {
    const Bytes frame = Colours();
    Bytes three;
    for (int i = 0; i < 3; ++i) three.insert(three.end(), frame.begin(), frame.end());
    WriteFile(In("in.bgra"), three);
    ASSERT_EQ(Zelfx({"convert", "in.bgra", "out.rgb", "--from", "BGRA8", "--to", "RGB8", "--size",
                     "48x8"})
                  .status,
              0);
    const Outcome piped = Tool({"sh", "-c",
                                std::string("cat in.bgra | ") + ZELFX_PROGRAM +
                                    " convert - - --from BGRA8 --to RGB8 --size 48x8 > piped.rgb"});
    EXPECT_EQ(piped.err, "");
    const Bytes rgb = ReadFile(In("out.rgb"));
    EXPECT_EQ(rgb.size(), three.size() / 4 * 3);
    EXPECT_EQ(rgb, ReadFile(In("piped.rgb")));
    EXPECT_EQ(rgb[0], frame[2]);
    EXPECT_EQ(rgb[2], frame[0]);
}

TEST_F(RawVerbs, PaddedRows) {
    const std::size_t padded = 200;
    const Bytes packed = Colours();
    Bytes frame(padded * kHeight, 0xEE);
    for (std::size_t y = 0; y < kHeight; ++y)
        std::copy_n(packed.begin() + static_cast<std::ptrdiff_t>(y * kWidth * 4), kWidth * 4,
                    frame.begin() + static_cast<std::ptrdiff_t>(y * padded));
    WriteFile(In("in.bgra"), frame);
    ASSERT_EQ(Zelfx({"convert", "in.bgra", "out.argb", "--from", "BGRA8", "--to", "ARGB8", "--size",
                     "48x8", "--row-bytes", "200", "--out-row-bytes", "256"})
                  .status,
              0);
    const Bytes argb = ReadFile(In("out.argb"));
    ASSERT_EQ(argb.size(), std::size_t{256} * kHeight);
    for (std::size_t y = 0; y < kHeight; ++y)
        for (std::size_t x = 0; x < kWidth; ++x)
            for (std::size_t k = 0; k < 4; ++k)
                ASSERT_EQ(argb[y * 256 + x * 4 + k],
                          packed[(y * kWidth + x) * 4 + 3 - (k == 0 ? 0 : k)])
                    << x << ' ' << y << ' ' << k;
}

TEST_F(RawVerbs, ConvertRefusals) {
    WriteFile(In("in.bgra"), Colours());
    const auto refused = [&](const Words& more, int status, const Words& texts) {
        ExpectRefused(Words{"convert", "in.bgra", "out"} + more, status, texts);
    };
    refused({"--from", "BGRA8", "--to", "RGB8", "--size", "49x8"}, 3,
            {"'in.bgra'", "breaks off", "1536", "1568"});
    refused({"--from", "BGRA8", "--to", "RGB8", "--size", "48"}, 2, {"'48'", "1920x1080"});
    refused({"--from", "BGRA8", "--to", "RGB8", "--size", "0x8"}, 2, {"'0x8'"});
    refused({"--from", "v210", "--to", "BGRA8", "--size", "48x8"}, 2, {"v210", "YCbYCr8"});
    refused({"--from", "vXYZ", "--to", "BGRA8", "--size", "48x8"}, 2, {"'vXYZ'", "BGRA8"});
    refused({"--from", "BGRA8", "--to", "RGB8", "--size", "48x8", "--row-bytes", "191"}, 2,
            {"row-bytes", "192"});
    ExpectRefused({"convert", "none", "out", "--from", "BGRA8", "--to", "RGB8", "--size", "48x8"},
                  3, {"'none'"});
    WriteFile(In("empty"), Bytes{});
    ExpectRefused({"convert", "empty", "out", "--from", "BGRA8", "--to", "RGB8", "--size", "48x8"},
                  3, {"'empty'", "no frame"});
}

TEST_F(RawVerbs, PatternOfAPicture) {
    ASSERT_EQ(Zelfx({"pattern", "pattern.png", "--size", "20x11"}).status, 0);
    const auto rgb = ReadWithMagick<std::uint8_t>("pattern.png");
    ASSERT_EQ(rgb.size(), Pixels(20, 11) * 3);
    for (int y = 0; y < 11; ++y)
        for (int x = 0; x < 20; ++x) {
            const bool on = y < 2 || y > 8 || y == 5 || x == 0 || x == 19;
            ASSERT_EQ(rgb[(Pixels(20, y) + static_cast<std::size_t>(x)) * 3], on ? 255 : 0)
                << x << ' ' << y;
        }
}

TEST_F(RawVerbs, PatternOfRawLayouts) {
    for (const char* layout : {"RGB10", "DpxLE", "DpxBE", "YUYV8", "UYVY8"}) {
        ASSERT_EQ(Zelfx({"pattern", "raw", "--size", "20x11", "--layout", layout}).status, 0)
            << layout;
        const bool pairs = std::string(layout).ends_with("8");
        EXPECT_EQ(ReadFile(In("raw")).size(), Pixels(20, 11) * (pairs ? 2 : 4)) << layout;
    }
    ExpectRefused({"pattern", "raw", "--size", "20x11", "--layout", "v210"}, 2, {"v210"});
    ExpectRefused({"pattern", "x.png", "--size", "20x11", "--layout", "RGB10"}, 2,
                  {"BGRA8", "RGB10"});
}

TEST_F(RawVerbs, PlaceCropsMovesAndFlips) {
    const int width = 36, height = 10;
    std::vector<std::uint8_t> rgb(Pixels(width, height) * 3);
    for (std::size_t i = 0; i < rgb.size(); ++i) rgb[i] = static_cast<std::uint8_t>(1 + i % 250);
    MakeWithMagick("in.png", width, height, rgb);
    const auto at = [&](const std::vector<std::uint8_t>& from, int x, int y) {
        return from[(Pixels(width, y) + static_cast<std::size_t>(x)) * 3];
    };

    ASSERT_EQ(Zelfx({"place", "in.png", "same.png"}).status, 0);
    EXPECT_EQ(ReadWithMagick<std::uint8_t>("same.png"), rgb);

    ASSERT_EQ(Zelfx({"place", "in.png", "flip.png", "--flip"}).status, 0);
    const auto flipped = ReadWithMagick<std::uint8_t>("flip.png");
    ASSERT_EQ(
        Zelfx({"place", "in.png", "moved.png", "--offset", "6,3", "--crop", "0,0,12,0"}).status, 0);
    const auto moved = ReadWithMagick<std::uint8_t>("moved.png");
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x) {
            ASSERT_EQ(at(flipped, x, y), at(rgb, x, height - 1 - y));
            // Right by 6, up by 2 (3 drops to the even number), 12 columns cut at the right.
            const bool covered = x >= 6 && x < 30 && y + 2 < height;
            ASSERT_EQ(at(moved, x, y), covered ? at(rgb, x - 6, y + 2) : 0) << x << ' ' << y;
        }
}

TEST_F(RawVerbs, PlaceSaysThatColumnsGoBySix) {
    MakeWithMagick("in.png", 20, 4, std::vector<std::uint8_t>(240, 200));
    const Outcome run = Zelfx({"place", "in.png", "out.png"});
    EXPECT_EQ(run.status, 0);
    EXPECT_NE(run.err.find("last 2 are black"), std::string::npos) << run.err;
    ExpectRefused({"place", "in.png", "o.png", "--crop", "1,2,3"}, 2,
                  {"--crop", "'1,2,3'", "L,T,R,B"});
    ExpectRefused({"place", "in.png", "o.png", "--offset", "nan,0"}, 2, {"--offset"});
    ExpectRefused({"place", "in.png", "o.png", "--size", "big"}, 2, {"'big'"});
}

}  // namespace
