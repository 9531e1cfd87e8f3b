#include "ip/IpTables.h"
#include "ip/detail/LutVariants.h"
#include "tests/support/GuardedBuffer.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <random>

namespace {

using namespace zel::ip;
using namespace zel::test;

struct Case {
    const LutFamily* family;
    const LutVariant* variant;
};

std::vector<Case> CasesOf(std::span<const LutFamily* const> families) {
    std::vector<Case> cases;
    for (const LutFamily* const family : families)
        for (const LutVariant& variant : family->variants.subspan(1))
            cases.push_back({family, &variant});
    return cases;
}

/// Four tables without order and, of 10-bit codes, beyond 1023; each at an odd address.
class Tables {
public:
    explicit Tables(std::size_t tableBytes) : m_step(tableBytes + 1), m_bytes(4 * m_step + 1) {
        std::mt19937 random(7);
        for (std::uint8_t& byte : m_bytes) byte = static_cast<std::uint8_t>(random());
    }
    void* operator[](std::size_t i) {
        std::uint8_t* const from = m_bytes.data() + i * m_step;
        return from + (reinterpret_cast<std::uintptr_t>(from) % 2 == 0 ? 1 : 0);
    }

private:
    std::size_t m_step;
    Bytes m_bytes;
};

// NaNs with payloads and signs, both infinities, zeros, denormals, the edges of the scale
// and of int32 after it.
const std::uint32_t kHostile[] = {
    0x7FC00000, 0xFFC00000, 0x7F800001, 0xFF812345, 0x7FFFFFFF, 0xFFFFFFFF, 0x7F800000, 0xFF800000,
    0x00000000, 0x80000000, 0x00000001, 0x80000001, 0x007FFFFF, 0x00800000, 0x3F800000, 0x3F7FFFFF,
    0x3F800001, 0xBF800000, 0x3A802008, 0x3A802007, 0x3A802009, 0x4A002008, 0x4A002009, 0xCA002008,
    0x4F000000, 0xCF000000, 0x7F7FFFFF, 0xFF7FFFFF, 0x3F7FBFF0, 0x3F7FBFEF, 0x3F000000, 0x3EFFFFFF,
};

/// Fills a buffer with samples; floats lie around 0..1, every eighth is hostile.
void FillSamples(std::span<std::uint8_t> to, bool floats, std::uint32_t seed) {
    std::mt19937 random(seed);
    for (std::size_t i = 0; i + 4 <= to.size(); i += 4) {
        const auto bits = static_cast<std::uint32_t>(random());
        std::uint32_t sample = bits;
        if (floats && bits % 8 == 0)
            sample = kHostile[bits / 8 % std::size(kHostile)];
        else if (floats)
            sample = std::bit_cast<std::uint32_t>(static_cast<float>(bits) / 3.5e9f - 0.1f);
        std::memcpy(to.data() + i, &sample, 4);
    }
}

class LutVariantTest : public testing::TestWithParam<Case> {
protected:
    void SetUp() override {
        if (variant.needs > SupportedCpu())
            GTEST_SKIP() << "this processor lacks " << NameOf(variant.needs);
    }

    void Row(const LutVariant& v, IpScanLutFn* row, void* dst, void* src, int width) {
        if (!v.prepare) return row(dst, src, width, tables[0], tables[1], tables[2], tables[3]);
        v.prepare(prepared, tables[0], tables[1], tables[2], tables[3]);
        row(dst, src, width, &prepared[0], &prepared[1024], &prepared[2048], &prepared[3072]);
    }
    void ReferenceRow(void* dst, void* src, int width) {
        Row(family.variants.front(), family.variants.front().row, dst, src, width);
    }

    std::vector<IpScanLutFn*> Rows() const {
        return variant.streamingRow ? std::vector{variant.row, variant.streamingRow}
                                    : std::vector{variant.row};
    }

    /// Both kinds of stores on `src`, compared with the reference; `hint` says what it is.
    void CompareRow(Bytes& src, const std::string& hint) {
        const int width = static_cast<int>(src.size()) / family.pixelBytes;
        Bytes expected(src.size()), got(src.size());
        ReferenceRow(expected.data(), src.data(), width);
        for (IpScanLutFn* const row : Rows()) {
            std::ranges::fill(got, std::uint8_t{0xA5});
            Row(variant, row, got.data(), src.data(), width);
            if (got == expected) continue;
            const auto at =
                static_cast<std::size_t>(std::ranges::mismatch(got, expected).in1 - got.begin());
            FAIL() << hint << ": byte " << at << " is 0x" << std::hex << int{got[at]}
                   << ", expected 0x" << int{expected[at]};
        }
    }

    const LutFamily& family = *GetParam().family;
    const LutVariant& variant = *GetParam().variant;
    const bool floats = family.pixelBytes == 16;
    Tables tables{family.pixelBytes == 4 ? std::size_t{256} : 2048};
    PreparedTables prepared;
};

class FloatVariantTest : public LutVariantTest {};

TEST_P(LutVariantTest, EveryWidthAndAlignment) {
    const auto bytesPerPixel = static_cast<std::size_t>(family.pixelBytes);
    for (int width = 0; width <= 130; ++width)
        for (std::size_t off = 0; off < 64; off += width % 8 == 0 ? 1 : 5) {
            const std::size_t bytes = static_cast<std::size_t>(width) * bytesPerPixel;
            GuardedFrame src({bytes, 1, false, 0, (off * 7) % 64}, Place::guarded, 3);
            FillSamples(src.row(0), floats, static_cast<std::uint32_t>(width));
            const Bytes before = src.content();
            for (IpScanLutFn* const row : Rows()) {
                GuardedFrame dst({bytes, 1, false, 0, off}, Place::guarded, 5);
                Bytes expected = dst.content();
                ReferenceRow(expected.data() + dst.Offset(0), src.base(), width);
                Row(variant, row, dst.base(), src.base(), width);
                ASSERT_EQ(dst.Difference(expected), "") << width << " pixels, offset " << off;
                ASSERT_EQ(src.Difference(before), "") << width << " pixels, source written";
            }
        }
}

// Against pages that fault: nothing beyond the row is read or written.
TEST_P(LutVariantTest, NothingIsTouchedBesideTheRow) {
    const auto bytesPerPixel = static_cast<std::size_t>(family.pixelBytes);
    for (int width = 0; width <= 130; ++width)
        for (const Place place : {Place::atFront, Place::atBack})
            for (IpScanLutFn* const row : Rows()) {
                const std::size_t bytes = static_cast<std::size_t>(width) * bytesPerPixel;
                GuardedFrame src({bytes, 1}, place, 3), dst({bytes, 1}, place, 5);
                FillSamples(src.row(0), floats, static_cast<std::uint32_t>(width));
                Bytes expected = dst.content();
                ReferenceRow(expected.data() + dst.Offset(0), src.base(), width);
                Row(variant, row, dst.base(), src.base(), width);
                ASSERT_EQ(dst.Difference(expected), "") << width << " pixels";
            }
}

TEST_P(LutVariantTest, InPlace) {
    for (const int width : {1, 15, 16, 17, 63, 64, 65, 1920}) {
        Bytes row(static_cast<std::size_t>(width * family.pixelBytes) + 1);
        const std::span<std::uint8_t> samples = std::span(row).subspan(1);  // odd address
        FillSamples(samples, floats, 9);
        Bytes expected(samples.size());
        ReferenceRow(expected.data(), samples.data(), width);
        Row(variant, variant.row, samples.data(), samples.data(), width);
        EXPECT_TRUE(std::ranges::equal(samples, expected)) << width << " pixels";
    }
}

// Frames below and above the size from which stores go past the caches, both stride signs.
TEST_P(LutVariantTest, Frames) {
    const int width = 641;
    const int rowBytes = width * family.pixelBytes;
    for (const int height : {3, (2 << 20) / rowBytes + 2})
        for (const int padding : {0, 3, 28})
            for (const int signs : {0, 1, 2, 3}) {
                const int step = rowBytes + padding;
                const auto size = static_cast<std::size_t>(step * height);
                Bytes src(size), expected(size, 0x5A), got(size, 0x5A);
                FillSamples(src, floats, 11);
                const auto base = [&](Bytes& frame, bool negative) {
                    return frame.data() + (negative ? step * (height - 1) : 0);
                };
                const auto stride = [&](bool negative) { return negative ? -step : step; };
                const bool down = signs & 1, srcDown = signs & 2;
                const auto run = [&](const LutVariant& v, Bytes& dst) {
                    LutFrame(family, v, base(dst, down), stride(down), base(src, srcDown),
                             stride(srcDown), width, height, tables[0], tables[1], tables[2],
                             tables[3]);
                };
                run(family.variants.front(), expected);
                run(variant, got);
                ASSERT_TRUE(got == expected)
                    << height << " rows, padding " << padding << ", signs " << signs;
                if (padding != 0 || signs != 0) continue;
                LutFrame(family, variant, src.data(), step, src.data(), step, width, height,
                         tables[0], tables[1], tables[2], tables[3]);
                ASSERT_TRUE(src == expected) << height << " rows in place";
            }
}

// Every sample of 8 and 16 bits in every channel, and every hostile float.
TEST_P(LutVariantTest, WholeDomain) {
    const std::size_t sampleBytes = static_cast<std::size_t>(family.pixelBytes) / 4;
    const std::size_t count = floats ? std::size(kHostile) : std::size_t{1} << 8 * sampleBytes;
    Bytes src(4 * count * sampleBytes);
    for (std::size_t i = 0; i < count; ++i)
        for (std::size_t c = 0; c < 4; ++c) {
            const std::size_t sample = (i + c * 77) % count;
            const std::size_t bits = floats ? kHostile[sample] : sample;
            std::memcpy(&src[(4 * i + c) * sampleBytes], &bits, sampleBytes);
        }
    CompareRow(src, "whole domain");
}

// Every float, or every 251st, as the sample of a channel that has an index of its own.
TEST_P(FloatVariantTest, EveryFloat) {
    constexpr std::size_t kPixels = 1 << 14;
    const std::uint64_t step = std::getenv("ZEL_TEST_ALL_FLOATS") ? 1 : 251;
    std::vector<std::uint32_t> samples(4 * kPixels, 0xFFFFFFFF);
    Bytes src(samples.size() * 4);
    for (std::uint64_t bits = 0; bits <= 0xFFFFFFFF;) {
        const auto first = static_cast<std::uint32_t>(bits);
        for (std::size_t i = 0; i < samples.size(); ++i) {
            if (i % 4 == 3) continue;
            samples[i] = static_cast<std::uint32_t>(bits);
            bits += step;
        }
        std::memcpy(src.data(), samples.data(), src.size());
        CompareRow(src, "floats from bits " + std::to_string(first));
        if (HasFatalFailure()) return;
    }
}

std::string NameOfCase(const testing::TestParamInfo<Case>& tested) {
    std::string name = std::string(tested.param.family->name) + '_' + tested.param.variant->name;
    std::ranges::replace(name, ' ', '_');
    return name;
}

INSTANTIATE_TEST_SUITE_P(, LutVariantTest, testing::ValuesIn(CasesOf(LutFamilies())), NameOfCase);
INSTANTIATE_TEST_SUITE_P(, FloatVariantTest, testing::ValuesIn(CasesOf(LutFamilies().last(1))),
                         NameOfCase);

}  // namespace
