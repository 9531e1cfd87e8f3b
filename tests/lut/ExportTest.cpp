#include "lut/CUtilLut.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <cstring>
#include <limits>
#include <vector>

namespace {

constexpr float kInf = std::numeric_limits<float>::infinity();
constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();

class Export : public testing::Test {
protected:
    void SetUp() override {
        lut.Open();
        lut.Reset();
    }
    CUtilLut lut;
    std::array<std::array<unsigned char, 256>, 3> bytes{};
    std::array<std::array<unsigned short, 1024>, 3> shorts{};
    std::array<std::array<unsigned int, 1024>, 3> ints{};
    std::vector<std::uint32_t> words = std::vector<std::uint32_t>(1536 + 1, 0xDEADBEEF);

    void Build() {
        lut.Build8Bit(bytes[0].data(), bytes[1].data(), bytes[2].data());
        lut.Build10Bit(shorts[0].data(), shorts[1].data(), shorts[2].data());
        lut.Build10Bit(ints[0].data(), ints[1].data(), ints[2].data());
        lut.BuildZelLut(words.data(), 0);
    }
};

TEST_F(Export, IdentityExportsAsIdentity) {
    Build();
    for (std::size_t c = 0; c < 3; ++c) {
        for (std::size_t j = 0; j < 256; ++j) ASSERT_EQ(bytes[c][j], j);
        for (std::size_t i = 0; i < 1024; ++i) {
            ASSERT_EQ(shorts[c][i], i);
            ASSERT_EQ(ints[c][i], i);
        }
    }
}

TEST_F(Export, PackedTableOfTheIdentity) {
    Build();
    for (std::uint32_t w = 0; w < 1536; ++w) {
        const std::uint32_t k = w % 512;
        ASSERT_EQ(words[w], ((2 * k + 1) << 22) + ((2 * k) << 6)) << w;
    }
    EXPECT_EQ(words[0], 0x00400000u);
    EXPECT_EQ(words[1], 0x00C00080u);
    EXPECT_EQ(words[511], 0xFFC0FF80u);
    EXPECT_EQ(words[512], 0x00400000u);
    EXPECT_EQ(words[513], 0x00C00080u);
    EXPECT_EQ(words[1023], 0xFFC0FF80u);
    EXPECT_EQ(words[1536], 0xDEADBEEFu) << "wrote past 6144 bytes";
}

TEST_F(Export, PackedTableIgnoresTheCount) {
    std::vector<std::uint32_t> other(1536);
    Build();
    lut.BuildZelLut(other.data(), 100000);
    EXPECT_EQ(std::memcmp(words.data(), other.data(), 6144), 0);
}

TEST_F(Export, PackedTableTakesAnyAlignment) {
    Build();
    std::vector<unsigned char> odd(6145);
    lut.BuildZelLut(odd.data() + 1, 0);
    EXPECT_EQ(std::memcmp(words.data(), odd.data() + 1, 6144), 0);
}

TEST_F(Export, TruncatesAndNeverRounds) {
    lut.m_pLut[508] = 511.99f;
    Build();
    EXPECT_EQ(bytes[0][127], 127);
    EXPECT_EQ(shorts[0][508], 511);
    EXPECT_EQ(ints[0][508], 511u);
}

TEST_F(Export, EightBitSamplesEveryFourthEntry) {
    lut.m_pLut[1020] = 1023.0f;
    for (int i = 1021; i < 1024; ++i) lut.m_pLut[i] = kNaN;
    lut.m_pLut[4] = 0.0f;
    lut.m_pLut[5] = 900.0f;
    Build();
    EXPECT_EQ(bytes[0][255], 255);
    EXPECT_EQ(bytes[0][1], 0);
}

// What each export does with values that its cells cannot hold.
TEST_F(Export, ValuesOutsideTheCells) {
    const struct {
        const char* name;
        float entry;
        unsigned char byte;
        unsigned short cell16;
        unsigned int cell32;
    } cases[] = {
        {"just below zero truncates to zero", -0.75f, 0, 0, 0},
        {"negative wraps, or is raised to 0", -4.0f, 255, 0xFFFC, 0},
        {"wider than the cell wraps", 70000.0f, 92, 4464, 70000u},
        {"last before the int32 range", 2147483520.0f, 0xE0, 0xFF80, 2147483520u},
        {"2^31 is outside int32", 2147483648.0f, 0, 0, 2147483648u},
        {"-2^31 is inside int32", -2147483648.0f, 0, 0, 0},
        {"below int32; a quarter of it is not", -3e9f, 0x80, 0, 0},
        {"last before 2^32", 4294967040.0f, 0xC0, 0, 4294967040u},
        {"2^32 saturates", 4294967296.0f, 0, 0, 0xFFFFFFFFu},
        {"infinity", kInf, 0, 0, 0xFFFFFFFFu},
        {"minus infinity", -kInf, 0, 0, 0},
        {"NaN", kNaN, 0, 0, 0},
    };
    for (const auto& c : cases) {
        lut.m_pLut[8] = c.entry;
        Build();
        EXPECT_EQ(bytes[0][2], c.byte) << c.name;
        EXPECT_EQ(shorts[0][8], c.cell16) << c.name;
        EXPECT_EQ(ints[0][8], c.cell32) << c.name;
    }
}

TEST_F(Export, LeavesTheTableAlone) {
    std::vector<float> before(lut.m_pLut, lut.m_pLut + 3072);
    Build();
    EXPECT_EQ(std::memcmp(before.data(), lut.m_pLut, 3072 * sizeof(float)), 0);
}

}  // namespace
