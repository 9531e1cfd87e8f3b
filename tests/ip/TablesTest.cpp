#include "ip/IpTables.h"

#include "tests/ip/SlowPixels.h"
#include "tests/support/Shapes.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <span>

namespace {

using namespace zel::test;

std::span<const std::uint8_t> Raw(const auto& table) {
    return {reinterpret_cast<const std::uint8_t*>(&table), sizeof table};
}

bool AllZero() {
    const std::span<const std::uint8_t> tables[] = {
        Raw(unityLut8),        Raw(unityLut10),        Raw(g_blackYUYV8),
        Raw(g_blackUYVY8),     Raw(g_blackY10),        Raw(g_blackU10),
        Raw(g_blackV10),       Raw(g_blackV210Even),   Raw(g_blackV210Odd),
        Raw(g_blackScanChar4), Raw(g_blackScanShort4), Raw(g_blackScanFloat4),
        Raw(g_blackScanYUYV8), Raw(g_blackScanUYVY8),  Raw(g_blackScanV210),
    };
    return std::ranges::all_of(tables, [](auto table) {
        return std::ranges::all_of(table, [](std::uint8_t byte) { return byte == 0; });
    });
}

// Taken before main(), so before any test has started the library.
const bool zeroAtLoad = AllZero();

class Tables : public testing::Test {
protected:
    void SetUp() override { IpInitialize(); }
};

TEST_F(Tables, AreZeroBeforeStartUp) { EXPECT_TRUE(zeroAtLoad); }

TEST_F(Tables, UnityTablesAreTheIdentity) {
    for (unsigned i = 0; i < 256; ++i) ASSERT_EQ(unityLut8[i], i);
    for (unsigned i = 0; i < 1024; ++i) ASSERT_EQ(unityLut10[i], i);
    EXPECT_EQ(unityLut8[255], 255);
    EXPECT_EQ(unityLut10[1023], 1023);
}

TEST_F(Tables, BlackCodes) {
    EXPECT_EQ(g_blackYUYV8, 0x80008000u);
    EXPECT_EQ(g_blackUYVY8, 0x00800080u);
    EXPECT_EQ(g_blackY10, 0u);
    EXPECT_EQ(g_blackU10, 511u) << "0.5 x 1023 truncated, not 512";
    EXPECT_EQ(g_blackV10, 511u);
    EXPECT_EQ(g_blackV210Even[0], 0x1FF001FFu);
    EXPECT_EQ(g_blackV210Even[1], 0x0007FC00u);
    EXPECT_EQ(g_blackV210Odd[0], 0x1FF001FFu);
    EXPECT_EQ(g_blackV210Odd[1], 0x0007FC00u);
}

TEST_F(Tables, BlackLines) {
    const struct {
        const char* name;
        void* line;
        std::span<const std::uint8_t> table;
        Bytes pattern;
        std::size_t written;
    } lines[] = {
        {"Char4", IpScan_Black_Char4(), Raw(g_blackScanChar4), Bytes(4, 0), 2048 * 4},
        {"Short4", IpScan_Black_Short4(), Raw(g_blackScanShort4), Bytes(8, 0), 2048 * 8},
        {"Float4", IpScan_Black_Float4(), Raw(g_blackScanFloat4), Bytes(16, 0), 2048 * 16},
        {"YUYV8", IpScan_Black_YUYV8(), Raw(g_blackScanYUYV8), {0, 0x80, 0, 0x80}, 2048 * 2},
        {"UYVY8", IpScan_Black_UYVY8(), Raw(g_blackScanUYVY8), {0x80, 0, 0x80, 0}, 2048 * 2},
        {"v210", IpScan_Black_v210(), Raw(g_blackScanV210),
         BytesOf(0x1FF001FF, 4) + BytesOf(0x0007FC00, 4), 341 * 16},
    };
    for (const auto& l : lines) {
        EXPECT_EQ(l.line, l.table.data()) << l.name;
        ASSERT_GE(l.table.size(), l.written) << l.name;
        for (std::size_t i = 0; i < l.table.size(); ++i)
            ASSERT_EQ(l.table[i], i < l.written ? l.pattern[i % l.pattern.size()] : 0)
                << l.name << " byte " << i;
    }
    EXPECT_GE(sizeof g_blackScanV210, 2048u * 16 / 6) << "room for 2048 pixels";
}

TEST_F(Tables, StartingAgainRebuildsTheSameValues) {
    unityLut8[7] = 1;
    g_blackV210Odd[1] = 5;
    std::memset(g_blackScanV210, 0xEE, 32);
    IpInitialize();
    EXPECT_EQ(unityLut8[7], 7);
    EXPECT_EQ(g_blackV210Odd[1], 0x0007FC00u);
    EXPECT_EQ(WordOf(g_blackScanV210 + 16), 0x1FF001FFu);
}

TEST_F(Tables, ShutDownChangesNothing) {
    IpFinalize();
    EXPECT_EQ(unityLut10[1023], 1023);
    EXPECT_EQ(g_blackYUYV8, 0x80008000u);
}

TEST_F(Tables, Pitches) {
    for (int w = -70; w <= 5000; ++w) {
        ASSERT_EQ(IpScan_Pitch_Char4(w), w * 4);
        ASSERT_EQ(IpScan_Pitch_Short4(w), w * 8);
        ASSERT_EQ(IpScan_Pitch_Float4(w), w * 16);
        ASSERT_EQ(IpScan_Pitch_YUYV8(w), w * 2);
        ASSERT_EQ(IpScan_Pitch_UYVY8(w), w * 2);
    }
}

// Four units for six pixels, truncated.
TEST_F(Tables, V210Pitch) {
    const struct {
        int width, pitch;
    } v210[] = {{0, 0},  {1, 0},       {2, 1},  {5, 3},   {6, 4},  {7, 4},
                {12, 8}, {1920, 1280}, {-1, 0}, {-2, -1}, {-6, -4}};
    for (const auto& c : v210) EXPECT_EQ(IpScan_Pitch_v210(c.width), c.pitch) << c.width;
}

TEST_F(Tables, NothingIsCapable) {
    for (int a : {-1, 0, 1, 10, 0x7FFFFFFF})
        for (int b : {-1, 0, 1, 32}) EXPECT_FALSE(IpScan_Capable(a, b));
}

// Where each blacker starts, in bytes, how much it repeats, and what.
TEST_F(Tables, RangeBlackers) {
    const Bytes zeros4(4, 0), zeros16(16, 0);
    const Bytes yuyv{0, 0x80, 0, 0x80}, uyvy{0x80, 0, 0x80, 0};
    const Bytes v210 = BytesOf(0x1FF001FF, 4) + BytesOf(0x0007FC00, 4) + BytesOf(0x1FF001FF, 4) +
                       BytesOf(0x0007FC00, 4);
    const struct {
        const char* name;
        IpScanBlackFn* black;
        Bytes unit;
        int startDivisor, startBytes, countTimes, countDivisor;
    } members[] = {
        {"RGBA8", IpScan_Black_RGBA8, zeros4, 1, 4, 1, 1},
        {"BGRA8", IpScan_Black_BGRA8, zeros4, 1, 4, 1, 1},
        {"ARGB8", IpScan_Black_ARGB8, zeros4, 1, 4, 1, 1},
        {"DpxLe", IpScan_Black_DpxLe, zeros4, 1, 4, 1, 1},
        {"DpxBe", IpScan_Black_DpxBe, zeros4, 1, 4, 1, 1},
        {"RGBA16", IpScan_Black_RGBA16, zeros4, 1, 4, 2, 1},
        {"BGRA16", IpScan_Black_BGRA16, zeros4, 1, 4, 2, 1},
        {"ARGB16", IpScan_Black_ARGB16, zeros4, 1, 4, 2, 1},
        {"RGB10", IpScan_Black_RGB10, zeros4, 1, 4, 2, 1},
        {"YUYV8", IpScan_Black_YUYV8, yuyv, 1, 4, 1, 2},
        {"UYVY8", IpScan_Black_UYVY8, uyvy, 1, 4, 1, 2},
        {"BGRA32Float", IpScan_Black_BGRA32Float, zeros16, 1, 16, 1, 1},
        {"v210", IpScan_Black_v210, v210, 6, 16, 1, 6},
    };
    for (const auto& m : members)
        for (Place place : {Place::guarded, Place::atFront, Place::atBack})
            for (int start : {0, 1, 3, 6, 7, 13})
                for (int count : Widths()) {
                    const std::size_t from =
                        static_cast<std::size_t>(start / m.startDivisor * m.startBytes);
                    const std::size_t units =
                        static_cast<std::size_t>(count * m.countTimes / m.countDivisor);
                    const std::size_t bytes = from + units * m.unit.size();
                    GuardedFrame row({.rowBytes = bytes, .height = 1, .misalignment = 1}, place, 1);
                    Bytes expected = row.content();
                    for (std::size_t i = from; i < bytes; ++i)
                        expected[row.Offset(0) + i] = m.unit[(i - from) % m.unit.size()];
                    m.black(row.base(), start, count);
                    ASSERT_EQ(row.Difference(expected), "")
                        << m.name << " start " << start << " count " << count;
                }
}

// The start counts words of four bytes, also for pixels of eight.
TEST_F(Tables, BlackerStart) {
    Bytes row(24, 0xEE);
    IpScan_Black_BGRA16(row.data(), 1, 1);
    for (std::size_t i = 0; i < row.size(); ++i)
        EXPECT_EQ(row[i], i / 4 == 1 || i / 4 == 2 ? 0 : 0xEE);
    row.assign(24, 0xEE);
    IpScan_Black_YUYV8(row.data(), 3, 5);
    EXPECT_EQ(row, Bytes(12, 0xEE) + (Bytes{0, 0x80, 0, 0x80, 0, 0x80, 0, 0x80}) + Bytes(4, 0xEE));
}

// Twice the pixels asked for.
TEST_F(Tables, Rgb10Blacker) {
    Bytes row(24, 0xEE);
    IpScan_Black_RGB10(row.data(), 1, 2);
    EXPECT_EQ(row, Bytes(4, 0xEE) + Bytes(16, 0) + Bytes(4, 0xEE));
}

TEST_F(Tables, StatedBlackers) {
    Bytes five(10, 0xEE);
    IpScan_Black_YUYV8(five.data(), 0, 5);
    EXPECT_EQ(five, (Bytes{0, 0x80, 0, 0x80, 0, 0x80, 0, 0x80, 0xEE, 0xEE})) << "two pairs of five";
    Bytes groups(64, 0xEE);
    IpScan_Black_v210(groups.data(), 7, 12);
    const Bytes half = BytesOf(0x1FF001FF, 4) + BytesOf(0x0007FC00, 4);
    EXPECT_EQ(groups, Bytes(16, 0xEE) + half + half + half + half + Bytes(16, 0xEE));
}

TEST_F(Tables, BlackersTakeNegativeCountsAsNone) {
    for (IpScanBlackFn* black : {IpScan_Black_RGBA8, IpScan_Black_RGBA16, IpScan_Black_RGB10,
                                 IpScan_Black_YUYV8, IpScan_Black_BGRA32Float, IpScan_Black_v210}) {
        GuardedFrame row({.rowBytes = 64, .height = 1}, Place::guarded, 2);
        const Bytes before = row.content();
        black(row.base(), 0, -12);
        EXPECT_EQ(row.Difference(before), "");
    }
}

TEST_F(Tables, SwapExchangesWholeWords) {
    for (int bytes : {-8, -1, 0, 1, 3, 4, 7, 8, 13, 64, 67}) {
        GuardedFrame a({.rowBytes = 67, .height = 1, .misalignment = 1}, Place::guarded, 3);
        GuardedFrame b({.rowBytes = 67, .height = 1, .misalignment = 2}, Place::guarded, 4);
        Bytes newA = a.content(), newB = b.content();
        for (int i = 0; i < bytes - bytes % 4; ++i)
            std::swap(newA[a.Offset(0) + static_cast<std::size_t>(i)],
                      newB[b.Offset(0) + static_cast<std::size_t>(i)]);
        IpScan_Swap(static_cast<int*>(a.base()), static_cast<int*>(b.base()), bytes);
        EXPECT_EQ(a.Difference(newA), "") << bytes;
        EXPECT_EQ(b.Difference(newB), "") << bytes;
    }
}

}  // namespace
