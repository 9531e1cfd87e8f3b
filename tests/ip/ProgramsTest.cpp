// What other programs make of our pixels, and we of theirs.

#include "ip/Ip.h"
#include "tests/ip/SlowPixels.h"
#include "tests/support/Programs.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

namespace {

using namespace zel::test;

constexpr unsigned kSeed = 71;
const std::string kFfmpeg = "ffmpeg -hide_banner -loglevel error -y ";

Bytes RandomBytes(std::size_t count) {
    std::mt19937 random(kSeed);
    Bytes bytes(count);
    for (std::uint8_t& byte : bytes) byte = static_cast<std::uint8_t>(random() % 256);
    return bytes;
}

/// 16-bit little-endian samples.
unsigned SampleAt(const Bytes& bytes, std::size_t index) {
    return bytes[2 * index] + 256u * bytes[2 * index + 1];
}

std::string Size(int width, int height) {
    return std::to_string(width) + "x" + std::to_string(height);
}

// --- v210 -----------------------------------------------------------------------

/// Rows of v210 files are whole numbers of 128 bytes, which hold 48 pixels.
std::size_t FileRowBytes(int width) { return static_cast<std::size_t>((width + 47) / 48) * 128; }

struct Packer {
    const char* name;
    decltype(&IpFrame_Copy) copy;
    std::size_t step, r, g, b;
};

const Packer kPackers[] = {
    {"RGB8", IpFrame_Copy_RGB8_To_v210, 3, 0, 1, 2},
    {"RGBA8", IpFrame_Copy_RGBA8_To_v210, 4, 0, 1, 2},
    {"BGRA8", IpFrame_Copy_BGRA8_To_v210, 4, 2, 1, 0},
};

/// Decodes a stream with ffmpeg into planes Y, Cb, Cr of 16-bit codes.
Bytes DecodedV210(const Bytes& stream, int width, int height) {
    const WorkFolder folder;
    folder.Write("in.v210", stream);
    folder.Run(kFfmpeg + "-f v210 -video_size " + Size(width, height) +
               " -i in.v210 -pix_fmt yuv422p10le -f rawvideo out.yuv");
    return folder.Read("out.yuv");
}

void CheckDecoded(const Packer& packer, int width, int height) {
    const auto w = static_cast<std::size_t>(width), h = static_cast<std::size_t>(height);
    Bytes pixels = RandomBytes(w * h * packer.step), stream(FileRowBytes(width) * h, 0);
    packer.copy(stream.data(), static_cast<int>(FileRowBytes(width)), pixels.data(),
                static_cast<int>(w * packer.step), width, height);
    const Bytes planes = DecodedV210(stream, width, height);
    ASSERT_EQ(planes.size(), w * h * 4);
    for (std::size_t i = 0; i < w * h; ++i) {
        const auto codes = [&](std::size_t pixel) {
            const std::uint8_t* const p = &pixels[pixel * packer.step];
            return SlowYuv10(p[packer.r], p[packer.g], p[packer.b], false);
        };
        ASSERT_EQ(SampleAt(planes, i), codes(i)[0]) << packer.name << " Y of pixel " << i;
        if (i % 2) continue;
        // Chroma sample k of a group is that of its pixel k.
        const std::size_t group = i / 6 * 6, source = group + (i - group) / 2;
        ASSERT_EQ(SampleAt(planes, w * h + i / 2), codes(source)[1]) << packer.name << " Cb " << i;
        ASSERT_EQ(SampleAt(planes, w * h * 3 / 2 + i / 2), codes(source)[2])
            << packer.name << " Cr " << i;
    }
}

// Four rows or more: some versions of the decoder leave smaller pictures black.
TEST(Programs, FfmpegDecodesOurV210) {
    for (const Packer& packer : kPackers)
        for (const auto& [width, height] : {std::pair{96, 6}, {48, 4}, {54, 5}, {1920, 4}})
            CheckDecoded(packer, width, height);
}

TEST(Programs, FfmpegDecodesOurV210Black) {
    Bytes stream(256 * 4, 0xEE);
    IpFrame_Fill_v210(stream.data(), 256, 96, 4, 1, 1, 1, 1, true);
    const Bytes planes = DecodedV210(stream, 96, 4);
    ASSERT_EQ(planes.size(), 96u * 4 * 4);
    for (std::size_t i = 0; i < 96 * 4 * 2; ++i)
        ASSERT_EQ(SampleAt(planes, i), i < 96 * 4 ? 0u : 511u) << i;
}

TEST(Programs, WeUnpackV210OfFfmpeg) {
    for (const auto& [width, height] : {std::pair{96, 6}, {54, 5}, {1920, 4}}) {
        const auto w = static_cast<std::size_t>(width), h = static_cast<std::size_t>(height);
        std::mt19937 random(kSeed);
        Bytes planes;
        // The encoder keeps codes inside 4..1019, the ends being sync codes.
        for (std::size_t i = 0; i < w * h * 2; ++i)
            planes = std::move(planes) + BytesOf(4 + random() % 1016, 2);
        const WorkFolder folder;
        folder.Write("in.yuv", planes);
        folder.Run(kFfmpeg + "-f rawvideo -pix_fmt yuv422p10le -s " + Size(width, height) +
                   " -i in.yuv -vcodec v210 -f rawvideo out.v210");
        Bytes stream = folder.Read("out.v210");
        ASSERT_EQ(stream.size(), FileRowBytes(width) * h);
        Bytes pairs(w * 2 * h, 0xEE);
        IpFrame_Copy_v210_To_YCbYCr8(pairs.data(), width * 2, stream.data(),
                                     static_cast<int>(FileRowBytes(width)), width, height);
        for (std::size_t i = 0; i < w * h; ++i) {
            ASSERT_EQ(pairs[2 * i], SampleAt(planes, i) / 4) << "Y of pixel " << i;
            const std::size_t chroma = (i % 2 ? w * h * 3 / 2 : w * h) + i / 2;
            ASSERT_EQ(pairs[2 * i + 1], SampleAt(planes, chroma) / 4) << "chroma of pixel " << i;
        }
    }
}

// --- DPX ------------------------------------------------------------------------

constexpr int kWidth = 61, kHeight = 7;
constexpr std::size_t kPixels = kWidth * kHeight;

/// Where the picture of a DPX file starts; the byte order is told by the first four.
std::size_t DpxBody(const Bytes& file, bool bigEndian) {
    const std::string magic(file.begin(), file.begin() + 4);
    EXPECT_EQ(magic, bigEndian ? "SDPX" : "XPDS");
    const std::size_t at =
        bigEndian ? WordOf(Reversed({&file[4], &file[8]}).data()) : WordOf(&file[4]);
    EXPECT_GE(file.size(), at + kPixels * 4);
    return at;
}

/// Samples R, G, B in the top ten bits of 16, through a TIFF file to OpenImageIO.
Bytes RandomSamples() {
    std::mt19937 random(kSeed);
    Bytes samples;
    for (std::size_t i = 0; i < kPixels * 3; ++i)
        samples = std::move(samples) + BytesOf(random() % 1024 * 64, 2);
    return samples;
}

void WriteTiff(const WorkFolder& folder, const Bytes& samples, const std::string& name) {
    folder.Write("in.raw", samples);
    folder.Run(kFfmpeg + "-f rawvideo -pix_fmt rgb48le -s " + Size(kWidth, kHeight) +
               " -i in.raw -frames:v 1 " + name);
}

/// The codes that OpenImageIO reads from a DPX file, R, G, B of each pixel.
std::vector<unsigned> CodesRead(const WorkFolder& folder, const std::string& name) {
    folder.Run("oiiotool " + name + " -d uint16 -o read.tif");
    folder.Run(kFfmpeg + "-i read.tif -pix_fmt rgb48le -f rawvideo read.raw");
    const Bytes samples = folder.Read("read.raw");
    EXPECT_EQ(samples.size(), kPixels * 6);
    std::vector<unsigned> codes;
    for (std::size_t i = 0; i < samples.size() / 2; ++i) codes.push_back(SampleAt(samples, i) / 64);
    return codes;
}

void WriteDpx(const WorkFolder& folder, bool bigEndian) {
    WriteTiff(folder, RandomSamples(), "in.tif");
    folder.Run(std::string("oiiotool in.tif -d uint10 --attrib oiio:Endian ") +
               (bigEndian ? "big" : "little") +
               " --attrib oiio:ColorSpace KodakLog -o picture.dpx");
}

void CheckUnpacked(Bytes file, bool bigEndian, const std::vector<unsigned>& codes) {
    const std::size_t body = DpxBody(file, bigEndian);
    ASSERT_EQ(codes.size(), kPixels * 3);
    Bytes bgra(kPixels * 4);
    const auto copy = bigEndian ? IpFrame_Copy_DpxBE_To_BGRA8 : IpFrame_Copy_DpxLE_To_BGRA8;
    copy(bgra.data(), kWidth * 4, &file[body], kWidth * 4, kWidth, kHeight);
    for (std::size_t i = 0; i < kPixels; ++i) {
        const unsigned r = codes[3 * i], g = codes[3 * i + 1], b = codes[3 * i + 2];
        ASSERT_EQ(bgra[4 * i], b / 4) << "blue of pixel " << i;
        ASSERT_EQ(bgra[4 * i + 1], g / 4) << "green of pixel " << i;
        ASSERT_EQ(bgra[4 * i + 2], r / 4) << "red of pixel " << i;
        ASSERT_EQ(bgra[4 * i + 3], 255) << "alpha of pixel " << i;
    }
}

TEST(Programs, WeUnpackDpxOfOpenImageIO) {
    for (const bool bigEndian : {false, true}) {
        const WorkFolder folder;
        WriteDpx(folder, bigEndian);
        const std::vector<unsigned> codes = CodesRead(folder, "picture.dpx");
        const Bytes samples = RandomSamples();
        for (std::size_t i = 0; i < codes.size(); ++i)
            ASSERT_EQ(codes[i], SampleAt(samples, i) / 64) << "the file holds other codes";
        CheckUnpacked(folder.Read("picture.dpx"), bigEndian, codes);
    }
}

TEST(Programs, WeUnpackDpxOfFfmpeg) {
    for (const bool bigEndian : {false, true}) {
        const WorkFolder folder;
        std::mt19937 random(kSeed);
        // Planes in the order G, B, R.
        std::vector<unsigned> codes(kPixels * 3);
        Bytes planes;
        for (const std::size_t colour : {1u, 2u, 0u})
            for (std::size_t i = 0; i < kPixels; ++i) {
                codes[3 * i + colour] = random() % 1024;
                planes = std::move(planes) + BytesOf(codes[3 * i + colour], 2);
            }
        folder.Write("in.raw", planes);
        folder.Run(kFfmpeg + "-f rawvideo -pix_fmt gbrp10le -s " + Size(kWidth, kHeight) +
                   " -i in.raw -frames:v 1 -pix_fmt " + (bigEndian ? "gbrp10be" : "gbrp10le") +
                   " picture.dpx");
        CheckUnpacked(folder.Read("picture.dpx"), bigEndian, codes);
    }
}

TEST(Programs, OpenImageIOReadsOurDpx) {
    for (const bool bigEndian : {false, true}) {
        const WorkFolder folder;
        WriteDpx(folder, bigEndian);
        Bytes file = folder.Read("picture.dpx"), bgra = RandomBytes(kPixels * 4);
        const std::size_t body = DpxBody(file, bigEndian);
        const auto copy = bigEndian ? IpFrame_Copy_BGRA8_To_DpxBE : IpFrame_Copy_BGRA8_To_DpxLE;
        copy(&file[body], kWidth * 4, bgra.data(), kWidth * 4, kWidth, kHeight);
        folder.Write("ours.dpx", file);
        const std::vector<unsigned> codes = CodesRead(folder, "ours.dpx");
        ASSERT_EQ(codes.size(), kPixels * 3);
        for (std::size_t i = 0; i < kPixels; ++i)
            for (std::size_t c = 0; c < 3; ++c)
                ASSERT_EQ(codes[3 * i + c], bgra[4 * i + 2 - c] * 4u)
                    << "pixel " << i << " colour " << c;
    }
}

// --- 16-bit RGB -----------------------------------------------------------------

TEST(Programs, ImageMagickReadsOurRgb16) {
    const WorkFolder folder;
    Bytes bgra = RandomBytes(kPixels * 4), rgb16(kPixels * 6);
    IpFrame_Copy_BGRA8_To_RGB16(rgb16.data(), kWidth * 6, bgra.data(), kWidth * 4, kWidth, kHeight);
    folder.Write("in.raw", rgb16);
    folder.Run("convert -size " + Size(kWidth, kHeight) +
               " -depth 16 -endian MSB rgb:in.raw -endian LSB rgb:out.raw");
    const Bytes samples = folder.Read("out.raw");
    ASSERT_EQ(samples.size(), kPixels * 6);
    for (std::size_t i = 0; i < kPixels; ++i)
        for (std::size_t c = 0; c < 3; ++c)
            ASSERT_EQ(SampleAt(samples, 3 * i + c), bgra[4 * i + 2 - c] * 256u)
                << "pixel " << i << " colour " << c;
}

}  // namespace
