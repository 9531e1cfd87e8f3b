#include "ip/detail/CopyVariants.h"
#include "ip/detail/Variants.h"
#include "tests/support/GuardedBuffer.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <random>

namespace {

using namespace zel::ip;
using namespace zel::test;

struct Case {
    const CopyFamily* family;
    const CopyVariant* variant;
};

std::vector<Case> AllCases() {
    std::vector<Case> cases;
    for (const CopyFamily* const family : CopyFamilies())
        for (const CopyVariant& variant : family->variants.subspan(1))
            cases.push_back({family, &variant});
    return cases;
}

std::string NameOfCase(const testing::TestParamInfo<Case>& tested) {
    std::string name = std::string(tested.param.family->name) + '_' + tested.param.variant->name;
    std::ranges::replace(name, ' ', '_');
    return name;
}

class CopyVariantTest : public testing::TestWithParam<Case> {
protected:
    void SetUp() override {
        if (variant.needs > SupportedCpu())
            GTEST_SKIP() << "this processor lacks " << NameOf(variant.needs);
    }

    std::vector<IpScanCopyFn*> Rows() const {
        return variant.streamingRow ? std::vector{variant.row, variant.streamingRow}
                                    : std::vector{variant.row};
    }
    std::size_t SrcBytes(int width) const {
        return static_cast<std::size_t>(width / family.pixels * family.srcBytes);
    }
    std::size_t DstBytes(int width) const {
        return static_cast<std::size_t>(width / family.pixels * family.dstBytes);
    }

    /// One row of `width` pixels, in every way of storing.
    void CompareRow(int width, Place place, std::size_t dstOffset, std::size_t srcOffset) {
        const int dstBytes = static_cast<int>(DstBytes(width));
        const int srcBytes = static_cast<int>(SrcBytes(width));
        const auto seed = static_cast<std::uint32_t>(width);
        GuardedFrame src({SrcBytes(width), 1, false, 0, srcOffset}, place, seed);
        const Bytes before = src.content();
        for (IpScanCopyFn* const row : Rows()) {
            GuardedFrame dst({DstBytes(width), 1, false, 0, dstOffset}, place, 5);
            Bytes expected = dst.content();
            reference(expected.data() + dst.Offset(0), dstBytes, src.base(), srcBytes, width);
            row(dst.base(), dstBytes, src.base(), srcBytes, width);
            ASSERT_EQ(dst.Difference(expected), "")
                << width << " pixels, offsets " << dstOffset << " and " << srcOffset;
            ASSERT_EQ(src.Difference(before), "") << width << " pixels, source written";
        }
    }

    const CopyFamily& family = *GetParam().family;
    const CopyVariant& variant = *GetParam().variant;
    IpScanCopyFn* const reference = family.variants.front().row;
};

TEST_P(CopyVariantTest, EveryWidthAndAlignment) {
    for (int width = 0; width <= 130; ++width)
        for (std::size_t offset = 0; offset < 64; offset += width % 8 == 0 ? 1 : 5) {
            CompareRow(width, Place::guarded, offset, offset * 7 % 64);
            if (HasFatalFailure()) return;
        }
}

// Against pages that fault: nothing beyond the row is read or written.
TEST_P(CopyVariantTest, NothingIsTouchedBesideTheRow) {
    for (int width = 0; width <= 130; ++width)
        for (const Place place : {Place::atFront, Place::atBack}) {
            CompareRow(width, place, 0, 0);
            if (HasFatalFailure()) return;
        }
}

TEST_P(CopyVariantTest, NegativeWidthsDoNothing) {
    std::uint8_t src[64] = {}, dst[64] = {};
    for (const int width : {-1, -6, -100})
        for (IpScanCopyFn* const row : Rows()) row(dst, -64, src, -64, width);
    EXPECT_TRUE(std::ranges::all_of(dst, [](std::uint8_t byte) { return byte == 0; }));
}

// Frames below and above the size from which stores go past the caches, both stride signs.
TEST_P(CopyVariantTest, Frames) {
    const int width = 600 * family.pixels + 5;
    const int dstBytes = static_cast<int>(DstBytes(width));
    const int srcBytes = static_cast<int>(SrcBytes(width));
    for (const int height : {3, (2 << 20) / dstBytes + 2})
        for (const int padding : {0, 3, 40})
            for (const int signs : {0, 1, 2, 3}) {
                // A plain copy takes the smaller of the two.
                const int dstStep = dstBytes + padding, srcStep = srcBytes + padding;
                const auto size = [&](int step) { return static_cast<std::size_t>(step * height); };
                Bytes src(size(srcStep)), expected(size(dstStep), 0x5A), got(size(dstStep), 0x5A);
                std::mt19937 random(3);
                for (std::uint8_t& byte : src) byte = static_cast<std::uint8_t>(random());
                const auto run = [&](const CopyVariant& v, Bytes& dst) {
                    const bool down = signs & 1, srcDown = signs & 2;
                    CopyFrame(family, v, dst.data() + (down ? dstStep * (height - 1) : 0),
                              down ? -dstStep : dstStep,
                              src.data() + (srcDown ? srcStep * (height - 1) : 0),
                              srcDown ? -srcStep : srcStep, width, height);
                };
                run(family.variants.front(), expected);
                run(variant, got);
                ASSERT_TRUE(got == expected)
                    << height << " rows, padding " << padding << ", signs " << signs;
            }
}

INSTANTIATE_TEST_SUITE_P(, CopyVariantTest, testing::ValuesIn(AllCases()), NameOfCase);

// Units that do not grow may be converted where they lie.
class CopyInPlaceTest : public CopyVariantTest {};

TEST_P(CopyInPlaceTest, GivesTheSame) {
    for (const int width : {1, 5, 6, 47, 64, 65, 130, 1920}) {
        const int dstBytes = static_cast<int>(DstBytes(width));
        const int srcBytes = static_cast<int>(SrcBytes(width));
        Bytes row(SrcBytes(width) + 1);
        std::mt19937 random(9);
        for (std::uint8_t& byte : row) byte = static_cast<std::uint8_t>(random());
        Bytes expected(DstBytes(width));
        std::uint8_t* const odd = row.data() + 1;
        reference(expected.data(), dstBytes, odd, srcBytes, width);
        variant.row(odd, dstBytes, odd, srcBytes, width);
        EXPECT_TRUE(std::equal(expected.begin(), expected.end(), odd)) << width << " pixels";
    }
}

// All 2^24 colours. A group takes its chroma from the first three pixels, so a second pass
// has every colour three pixels on.
class V210PackTest : public CopyVariantTest {};

TEST_P(V210PackTest, EveryColour) {
    const int step = family.srcBytes / 6;
    constexpr int kPixels = 6 << 10;
    const auto bytes = static_cast<std::size_t>(kPixels / 6 * 16);
    Bytes src(static_cast<std::size_t>(kPixels * step)), expected(bytes), got(bytes);
    for (const std::uint32_t shift : {0u, 3u})
        for (std::uint32_t colour = 0; colour < 1u << 24; colour += kPixels) {
            for (std::uint32_t i = 0; i < kPixels; ++i) {
                const std::uint32_t moved = colour + i + shift;
                std::memcpy(&src[i * static_cast<std::size_t>(step)], &moved, 3);
            }
            reference(expected.data(), 0, src.data(), 0, kPixels);
            for (IpScanCopyFn* const row : Rows()) {
                row(got.data(), 0, src.data(), 0, kPixels);
                ASSERT_TRUE(got == expected)
                    << "colours from 0x" << std::hex << colour + shift << " on";
            }
        }
}

std::vector<Case> CasesInPlace() {
    std::vector<Case> cases = AllCases();
    std::erase_if(cases, [](const Case& c) {
        return c.family->dstBytes > c.family->srcBytes || c.family == &kPlainCopy;
    });
    return cases;
}

INSTANTIATE_TEST_SUITE_P(, CopyInPlaceTest, testing::ValuesIn(CasesInPlace()), NameOfCase);

std::vector<Case> PackCases() {
    std::vector<Case> cases = AllCases();
    std::erase_if(cases, [](const Case& c) {
        return c.family != &kRgbToV210 && c.family != &kRgbaToV210 && c.family != &kBgraToV210;
    });
    return cases;
}

INSTANTIATE_TEST_SUITE_P(, V210PackTest, testing::ValuesIn(PackCases()), NameOfCase);

TEST(CopyVariants, ListsAscend) {
    for (const CopyFamily* const family : CopyFamilies()) {
        EXPECT_EQ(family->variants.front().needs, Cpu::scalar) << family->name;
        EXPECT_TRUE(std::ranges::is_sorted(family->variants, {}, &CopyVariant::needs));
    }
}

}  // namespace
