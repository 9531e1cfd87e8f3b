#include "ip/IpFill.h"

#include "tests/ip/SlowPixels.h"
#include "tests/support/Shapes.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <limits>

namespace {

using namespace zel::test;

constexpr float kInf = std::numeric_limits<float>::infinity();
constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();

struct Colour {
    float r, g, b, a;
};

// --- restatement ----------------------------------------------------------------

/// Truncated into an unsigned integer of `bits` bits, 32 or 64.
std::uint64_t SlowInteger(double x, int bits) {
    if (!(x > 0)) return 0;
    if (x >= std::ldexp(1.0, bits)) return bits == 64 ? ~std::uint64_t{0} : 0xFFFFFFFFu;
    return static_cast<std::uint64_t>(std::floor(x));
}

std::uint64_t SlowCode(float c, bool normalised, double factor, double top, int bits) {
    return SlowInteger(normalised ? Clamped(Single(double{c} * factor), 0, top) : double{c}, bits);
}

Bytes Slow4x8(float e0, float e1, float e2, float e3, bool n) {
    const auto code = [=](float c) { return SlowCode(c, n, 256, 255, 32); };
    return BytesOf(code(e0) + 256 * code(e1) + 65536 * code(e2) + 16777216 * code(e3), 4);
}

Bytes Slow4x16(float e0, float e1, float e2, float e3, bool n) {
    const auto code = [=](float c) { return SlowCode(c, n, 65536, 65535, 64); };
    const std::uint64_t k = 65536;
    return BytesOf(code(e0) + k * (code(e1) + k * (code(e2) + k * code(e3))), 8);
}

Bytes SlowFloats(float e0, float e1, float e2, float e3, bool) {
    Bytes out;
    for (const float e : {e0, e1, e2, e3}) {
        const float unit = std::isnan(e) ? e : static_cast<float>(Clamped(e, 0, 1));
        std::uint32_t bits;
        std::memcpy(&bits, &unit, sizeof bits);
        out = out + BytesOf(bits, 4);
    }
    return out;
}

std::uint64_t SlowThree(Colour c, bool n, double factor, std::uint64_t r, std::uint64_t g,
                        std::uint64_t b) {
    const auto code = [=](float x) { return SlowCode(x, n, factor, 1023, 32); };
    return r * code(c.r) + g * code(c.g) + b * code(c.b);
}

Bytes SlowPair(Colour c, bool n, const char* order) {
    const Ycc ycc = SlowYuv8(c.r, c.g, c.b, n);
    Bytes out;
    for (; *order; ++order)
        out.push_back(static_cast<std::uint8_t>(ycc[*order == 'Y' ? 0 : *order == 'U' ? 1 : 2]));
    return out;
}

Bytes BlackV210() {
    const Bytes half = BytesOf(0x1FF001FF, 4) + BytesOf(0x0007FC00, 4);
    return half + half;
}

struct Member {
    const char* name;
    IpScanFillFn* scan;
    decltype(&IpFrame_Fill_RGBA8) frame;
    int pixels;  // of a unit
    std::size_t unitBytes;
    Bytes (*unit)(Colour c, bool normalised);
};

// clang-format off
const Member kMembers[] = {
    {"RGBA8",       IpScan_Fill_RGBA8,       IpFrame_Fill_RGBA8,       1,  4, [](Colour c, bool n) { return Slow4x8(c.r, c.g, c.b, c.a, n); }},
    {"BGRA8",       IpScan_Fill_BGRA8,       IpFrame_Fill_BGRA8,       1,  4, [](Colour c, bool n) { return Slow4x8(c.b, c.g, c.r, c.a, n); }},
    {"ARGB8",       IpScan_Fill_ARGB8,       IpFrame_Fill_ARGB8,       1,  4, [](Colour c, bool n) { return Slow4x8(c.a, c.r, c.g, c.b, n); }},
    {"RGBA16",      IpScan_Fill_RGBA16,      IpFrame_Fill_RGBA16,      1,  8, [](Colour c, bool n) { return Slow4x16(c.r, c.g, c.b, c.a, n); }},
    {"BGRA16",      IpScan_Fill_BGRA16,      IpFrame_Fill_BGRA16,      1,  8, [](Colour c, bool n) { return Slow4x16(c.b, c.g, c.r, c.a, n); }},
    {"ARGB16",      IpScan_Fill_ARGB16,      IpFrame_Fill_ARGB16,      1,  8, [](Colour c, bool n) { return Slow4x16(c.a, c.r, c.g, c.b, n); }},
    {"BGRA32Float", IpScan_Fill_BGRA32Float, IpFrame_Fill_BGRA32Float, 1, 16, [](Colour c, bool n) { return SlowFloats(c.b, c.g, c.r, c.a, n); }},
    {"RGB10",       IpScan_Fill_RGB10,       IpFrame_Fill_RGB10,       1,  4, [](Colour c, bool n) { return BytesOf(SlowThree(c, n, 1023, 1, 1 << 10, 1 << 20), 4); }},
    {"DpxLe",       IpScan_Fill_DpxLe,       IpFrame_Fill_DpxLe,       1,  4, [](Colour c, bool n) { return BytesOf(SlowThree(c, n, 1024, 1 << 24, 1 << 14, 16), 4); }},
    {"DpxBe",       IpScan_Fill_DpxBe,       IpFrame_Fill_DpxBe,       1,  4, [](Colour c, bool n) { return Reversed(BytesOf(SlowThree(c, n, 1024, 1 << 24, 1 << 14, 16), 4)); }},
    {"YUYV8",       IpScan_Fill_YUYV8,       IpFrame_Fill_YUYV8,       2,  4, [](Colour c, bool n) { return SlowPair(c, n, "YUYV"); }},
    {"UYVY8",       IpScan_Fill_UYVY8,       IpFrame_Fill_UYVY8,       2,  4, [](Colour c, bool n) { return SlowPair(c, n, "UYVY"); }},
    {"v210",        IpScan_Fill_v210,        IpFrame_Fill_v210,        6, 16, [](Colour, bool) { return BlackV210(); }},
};
// clang-format on

const Colour kColours[] = {
    {0, 0, 0, 0},
    {1, 1, 1, 1},
    {1, 0.5f, 0, 1},
    {0.25f, 0.999999f, 0.333f, 0.75f},
    {-1, 2, -0.001f, 1.5f},
    {300, 12, 200, 99},
    {1023.9f, 511.5f, 255.999f, 65535.5f},
    {70000, 5000, 1e6f, 3},
    {4294967040.0f, 4294967296.0f, 1e10f, 1e19f},
    {18446742974197923840.0f, 18446744073709551616.0f, 3e38f, -3e38f},
    {kInf, -kInf, kNaN, -0.0f},
    {kNaN, kInf, 0.5f, kNaN},
};

// --- shapes ---------------------------------------------------------------------

TEST(Fill, RowsFromEveryStart) {
    for (const Member& m : kMembers)
        for (const Place place : {Place::guarded, Place::atFront, Place::atBack})
            for (int start = 0; start <= 13; ++start)
                for (const int count : Widths()) {
                    const Colour c =
                        kColours[static_cast<std::size_t>(start + count) % std::size(kColours)];
                    const bool normalised = count % 2;
                    const auto units = [&](int pixels) {
                        return static_cast<std::size_t>(pixels / m.pixels) * m.unitBytes;
                    };
                    GuardedFrame row({units(start) + units(count), 1, false, 0, 1}, place, 1);
                    Bytes expected = row.content();
                    const Bytes unit = m.unit(c, normalised);
                    for (std::size_t i = 0; i < units(count); ++i)
                        expected[row.Offset(0) + units(start) + i] = unit[i % unit.size()];
                    m.scan(row.base(), start, count, c.r, c.g, c.b, c.a, normalised);
                    ASSERT_EQ(row.Difference(expected), "")
                        << m.name << " start " << start << " count " << count;
                }
}

void FillFrame(const Member& m, int width, int height, bool negative, Place place, Layout layout) {
    const std::size_t rowBytes = static_cast<std::size_t>(width / m.pixels) * m.unitBytes;
    GuardedFrame frame({rowBytes, height, negative, layout.padding, layout.misalignment}, place, 2);
    Bytes expected = frame.content();
    const Bytes unit = m.unit(kColours[3], true);
    for (int r = 0; r < height; ++r)
        for (std::size_t i = 0; i < rowBytes; ++i)
            expected[frame.Offset(r) + i] = unit[i % unit.size()];
    const auto [cr, cg, cb, ca] = kColours[3];
    m.frame(frame.base(), frame.rowBytes(), width, height, cr, cg, cb, ca, true);
    ASSERT_EQ(frame.Difference(expected), "") << m.name << ' ' << width << " x " << height;
}

TEST(Fill, FramesOfEveryShape) {
    for (const Member& m : kMembers)
        for (const int width : Widths())
            for (int height = 0; height <= kMaxHeight; ++height)
                for (const bool negative : {false, true}) {
                    for (const Layout layout : kLayouts)
                        FillFrame(m, width, height, negative, Place::guarded, layout);
                    FillFrame(m, width, height, negative, Place::atFront, kLayouts[0]);
                    FillFrame(m, width, height, negative, Place::atBack, kLayouts[0]);
                }
}

TEST(Fill, NegativeExtentsFillNothing) {
    for (const Member& m : kMembers)
        for (const auto& [width, height] : {std::pair{-12, 3}, {12, -3}, {-12, -3}, {12, 0}}) {
            GuardedFrame frame({16 * 12, 3}, Place::guarded, 3);
            const Bytes before = frame.content();
            m.frame(frame.base(), frame.rowBytes(), width, height, 1, 1, 1, 1, true);
            EXPECT_EQ(frame.Difference(before), "") << m.name << ' ' << width << " x " << height;
        }
}

// --- values ---------------------------------------------------------------------

TEST(Fill, EveryColourInEveryLayout) {
    for (const Member& m : kMembers)
        for (const Colour& c : kColours)
            for (const bool normalised : {false, true}) {
                Bytes unit(m.unitBytes);
                m.scan(unit.data(), 0, m.pixels, c.r, c.g, c.b, c.a, normalised);
                EXPECT_EQ(unit, m.unit(c, normalised))
                    << m.name << " of " << c.r << ' ' << c.g << ' ' << c.b << ' ' << c.a
                    << (normalised ? " normalised" : "");
            }
}

// Both sides of every code, on the 0..1 scale and as codes.
TEST(Fill, CodesTruncate) {
    for (const Member& m : kMembers) {
        for (int code = 0; code <= 1024; ++code)
            for (const float scale : {1.0f, 256.0f, 1023.0f, 1024.0f, 65536.0f})
                for (const float towards : {-1e9f, 0.0f, 1e9f}) {
                    const float value = static_cast<float>(code) / scale;
                    const float x = towards == 0 ? value : std::nextafter(value, towards);
                    Bytes unit(m.unitBytes);
                    const bool normalised = scale != 1.0f;
                    m.scan(unit.data(), 0, m.pixels, x, x, x, x, normalised);
                    ASSERT_EQ(unit, m.unit({x, x, x, x}, normalised)) << m.name << ' ' << x;
                }
    }
}

struct Case {
    const char* name;
    IpScanFillFn* scan;
    int start, count;
    Colour c;
    bool normalised;
    Bytes row;  // EE where nothing is written
};

TEST(Fill, StatedValues) {
    const Bytes group = BlackV210();
    const Case cases[] = {
        {"one is clamped to 255, half is 128",
         IpScan_Fill_RGBA8,
         0,
         1,
         {1, 0.5f, 0, 1},
         true,
         {0xFF, 0x80, 0x00, 0xFF}},
        {"300 spills into green",
         IpScan_Fill_RGBA8,
         0,
         1,
         {300, 0, 0, 0},
         false,
         {0x2C, 0x01, 0x00, 0x00}},
        {"RGB10 white", IpScan_Fill_RGB10, 0, 1, {1, 1, 1, 7}, true, {0xFF, 0xFF, 0xFF, 0x3F}},
        {"DPX white", IpScan_Fill_DpxLe, 0, 1, {1, 1, 1, 7}, true, {0xF0, 0xFF, 0xFF, 0xFF}},
        {"DPX white, big-endian",
         IpScan_Fill_DpxBe,
         0,
         1,
         {1, 1, 1, 7},
         true,
         {0xFF, 0xFF, 0xFF, 0xF0}},
        {"floats B G R A",
         IpScan_Fill_BGRA32Float,
         0,
         1,
         {2, -1, 0.5f, 0.25f},
         false,
         {0, 0, 0, 0x3F, 0, 0, 0, 0, 0, 0, 0x80, 0x3F, 0, 0, 0x80, 0x3E}},
        {"v210 is black", IpScan_Fill_v210, 0, 6, {1, 0.5f, 0.2f, 1}, true, group},
        {"odd start and count round down",
         IpScan_Fill_YUYV8,
         3,
         5,
         {1, 1, 1, 1},
         true,
         {0xEE, 0xEE, 0xEE, 0xEE, 255, 128, 255, 128, 255, 128, 255, 128, 0xEE, 0xEE}},
        {"UYVY8 white", IpScan_Fill_UYVY8, 0, 2, {1, 1, 1, 1}, true, {128, 255, 128, 255}},
        {"16-bit one is 65535",
         IpScan_Fill_RGBA16,
         0,
         1,
         {1, 0.5f, 0, 1},
         true,
         {0xFF, 0xFF, 0x00, 0x80, 0, 0, 0xFF, 0xFF}},
        {"16-bit start counts pixels",
         IpScan_Fill_RGBA16,
         1,
         1,
         {1, 2, 3, 4},
         false,
         {0xEE, 0xEE, 0xEE, 0xEE, 0xEE, 0xEE, 0xEE, 0xEE, 1, 0, 2, 0, 3, 0, 4, 0}},
    };
    for (const Case& c : cases) {
        Bytes row(c.row.size(), 0xEE);
        c.scan(row.data(), c.start, c.count, c.c.r, c.c.g, c.c.b, c.c.a, c.normalised);
        EXPECT_EQ(row, c.row) << c.name;
    }
}

// Codes are added into their word, so a wide one reaches its neighbours.
TEST(Fill, WideCodes) {
    Bytes word(4), wide(8);
    IpScan_Fill_RGBA8(word.data(), 0, 1, 300, 255, 0, 0, false);
    EXPECT_EQ(WordOf(word.data()), 300u + 256u * 255u) << "a sum: 1 and 255 carry into blue";
    IpScan_Fill_RGB10(word.data(), 0, 1, 1024, 1023, 0, 0, false);
    EXPECT_EQ(WordOf(word.data()), 1024u * 1024u);
    IpScan_Fill_RGBA16(wide.data(), 0, 1, 65536, 65535, 0, 7, false);
    EXPECT_EQ(wide, (Bytes{0, 0, 0, 0, 1, 0, 7, 0}));
}

// Red keeps its low eight bits: 256 of 1023 vanishes.
TEST(Fill, DpxFill) {
    Bytes word(4);
    IpScan_Fill_DpxLe(word.data(), 0, 1, 256, 0, 0, 0, false);
    EXPECT_EQ(WordOf(word.data()), 0u);
    IpScan_Fill_DpxLe(word.data(), 0, 1, 0x2A5, 0, 0, 0, false);
    EXPECT_EQ(WordOf(word.data()), 0xA5000000u);
}

TEST(Fill, V210Fill) {
    Bytes coloured(16), black(16);
    IpScan_Fill_v210(coloured.data(), 0, 6, 1, 0, 1, 1, false);
    IpScan_Fill_v210(black.data(), 0, 6, 0, 0, 0, 0, true);
    EXPECT_EQ(coloured, black);
    EXPECT_EQ(coloured, BlackV210());
}

TEST(Fill, FloatIgnoresTheFlag) {
    Bytes clear(16), set(16);
    IpScan_Fill_BGRA32Float(clear.data(), 0, 1, 0.1f, 200, 0.7f, 255, false);
    IpScan_Fill_BGRA32Float(set.data(), 0, 1, 0.1f, 200, 0.7f, 255, true);
    EXPECT_EQ(clear, set);
}

TEST(Fill, MasterTakesAnyScanRoutine) {
    struct Call {
        void* scan;
        int start, count;
        Colour c;
        bool normalised;
    };
    static std::vector<Call> calls;
    calls.clear();
    IpScanFillFn* const record = [](void* scan, int start, int count, float r, float g, float b,
                                    float a, bool n) {
        calls.push_back({scan, start, count, {r, g, b, a}, n});
    };
    std::uint8_t memory[64];
    IpFrame_Fill_Master(record, memory + 40, -20, 5, 3, 1, 2, 3, 4, true);
    ASSERT_EQ(calls.size(), 3u);
    for (std::size_t r = 0; r < 3; ++r) {
        EXPECT_EQ(calls[r].scan, memory + 20 * r) << "from the lowest row upwards";
        EXPECT_EQ(calls[r].start, 0);
        EXPECT_EQ(calls[r].count, 5);
        EXPECT_EQ(calls[r].c.b, 3);
        EXPECT_TRUE(calls[r].normalised);
    }
}

}  // namespace
