#include "ip/IpLut.h"

#include "ip/IpTables.h"
#include "tests/ip/SlowPixels.h"
#include "tests/ip/Sweep.h"
#include "tests/support/Bits.h"

#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <limits>
#include <numeric>
#include <random>

namespace {

using namespace zel::test;

using Table8 = std::array<std::uint8_t, 256>;
using Table10 = std::array<std::uint16_t, 1024>;

constexpr float kInf = std::numeric_limits<float>::infinity();
constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();

/// Three tables without order, so that a sample in the wrong one shows.
struct RandomTables {
    std::array<Table8, 3> bytes;
    std::array<Table10, 3> codes;

    RandomTables() {
        std::mt19937 random(20);
        for (auto& table : bytes)
            for (auto& entry : table) entry = static_cast<std::uint8_t>(random() % 256);
        for (auto& table : codes)
            for (auto& entry : table) entry = static_cast<std::uint16_t>(random() % 1024);
    }
};
RandomTables tables;

Table8 Identity8() {
    Table8 t;
    std::iota(t.begin(), t.end(), std::uint8_t{0});
    return t;
}
Table10 Identity10() {
    Table10 t;
    std::iota(t.begin(), t.end(), std::uint16_t{0});
    return t;
}
const Table8 identity8 = Identity8();
const Table10 identity10 = Identity10();

/// A sample through table `c` (0 red, 1 green, 2 blue, 3 the identity).
std::uint8_t Slow8(int c, std::uint8_t sample) {
    return c == 3 ? sample : tables.bytes[static_cast<std::size_t>(c)][sample];
}
std::uint16_t SlowCode(int c, unsigned index) {
    return static_cast<std::uint16_t>(c == 3 ? index
                                             : tables.codes[static_cast<std::size_t>(c)][index]);
}
std::uint16_t Slow16(int c, unsigned sample) {
    return static_cast<std::uint16_t>(SlowCode(c, sample / 64) * 64);
}
unsigned SlowIndex(float sample) {
    if (std::isnan(sample)) return 0;
    return static_cast<unsigned>(Clamped(std::trunc(Single(double{sample} * 1023)), 0, 1023));
}
float SlowFloat(int c, float sample) {
    // The constant is the single nearest to 1/1023, not a division.
    return static_cast<float>(double{static_cast<float>(1.0 / 1023)} *
                              SlowCode(c, SlowIndex(sample)));
}

using ChannelTables = std::array<int, 4>;  // by memory channel; 3 is the identity

Bytes SlowPixel8(const std::uint8_t* in, ChannelTables t) {
    Bytes out;
    for (std::size_t c = 0; c < 4; ++c) out.push_back(Slow8(t[c], in[c]));
    return out;
}

Bytes SlowPixel16(const std::uint8_t* in, ChannelTables t) {
    Bytes out;
    for (std::size_t c = 0; c < 4; ++c)
        out = out + BytesOf(Slow16(t[c], in[2 * c] + 256u * in[2 * c + 1]), 2);
    return out;
}

Bytes SlowPixelFloat(const std::uint8_t* in, ChannelTables t) {
    float samples[4];
    std::memcpy(samples, in, sizeof samples);
    Bytes out;
    for (std::size_t c = 0; c < 4; ++c) {
        const float value = SlowFloat(t[c], samples[c == 3 ? 2 : c]);
        out = out + BytesOf(std::bit_cast<std::uint32_t>(value), 4);
    }
    return out;
}

struct Member {
    const char* name;
    IpFrameLutFn* frame;
    IpScanLutFn* scan;
    std::size_t pixelBytes;
    Bytes (*slow)(const std::uint8_t*, ChannelTables);
    ChannelTables channels;
};

// clang-format off
const Member kMembers[] = {
    {"RGBA8",     IpFrame_Lut_RGBA8,     IpScan_Lut_8,      4, SlowPixel8,     {0, 1, 2, 3}},
    {"BGRA8",     IpFrame_Lut_BGRA8,     IpScan_Lut_8,      4, SlowPixel8,     {2, 1, 0, 3}},
    {"ARGB8",     IpFrame_Lut_ARGB8,     IpScan_Lut_8,      4, SlowPixel8,     {3, 0, 1, 2}},
    {"BGRA16",    IpFrame_Lut_BGRA16,    IpScan_Lut_16,     8, SlowPixel16,    {2, 1, 0, 3}},
    {"ARGB16",    IpFrame_Lut_ARGB16,    IpScan_Lut_16,     8, SlowPixel16,    {3, 0, 1, 2}},
    {"BGRAFloat", IpFrame_Lut_BGRAFloat, IpScan_Lut_Float, 16, SlowPixelFloat, {2, 1, 0, 3}},
};
// clang-format on

class Lut : public testing::Test {
protected:
    void SetUp() override { IpInitialize(); }

    /// The tables of the caller in the order red, green, blue.
    static std::array<void*, 4> TablesFor(std::size_t pixelBytes) {
        std::array<void*, 4> t;
        for (std::size_t c = 0; c < 3; ++c)
            t[c] = pixelBytes == 4 ? static_cast<void*>(tables.bytes[c].data())
                                   : static_cast<void*>(tables.codes[c].data());
        t[3] = pixelBytes == 4 ? static_cast<void*>(unityLut8) : static_cast<void*>(unityLut10);
        return t;
    }
};

TEST_F(Lut, EveryShape) {
    for (const Member& m : kMembers) {
        RowRoutine routine =
            ByUnits(m.name, 1, m.pixelBytes, m.pixelBytes,
                    [&](const std::uint8_t* in) { return m.slow(in, m.channels); });
        routine.walk = RowWalk::asGiven;
        const auto t = TablesFor(m.pixelBytes);
        routine.frame = [&](void* dst, int dstRow, void* src, int srcRow, int w, int h) {
            m.frame(dst, dstRow, src, srcRow, w, h, t[0], t[1], t[2]);
        };
        routine.scan = [&](void* dst, int, void* src, int, int w) {
            const auto at = [&](std::size_t c) {
                return t[static_cast<std::size_t>(m.channels[c])];
            };
            m.scan(dst, src, w, at(0), at(1), at(2), at(3));
        };
        Sweep(routine);
    }
}

// All samples of 8 and 16 bits, in every channel.
TEST_F(Lut, WholeSampleDomains) {
    for (const Member& m : kMembers) {
        if (m.pixelBytes == 16) continue;
        const std::size_t sample = m.pixelBytes / 4, count = sample == 1 ? 256 : 65536;
        const auto t = TablesFor(m.pixelBytes);
        Bytes in, out(count * m.pixelBytes);
        for (std::size_t v = 0; v < count; ++v)
            for (std::size_t c = 0; c < 4; ++c)
                for (const std::uint8_t byte :
                     BytesOf((v + c * 77) % count, static_cast<int>(sample)))
                    in.push_back(byte);
        m.frame(out.data(), 0, in.data(), 0, static_cast<int>(count), 1, t[0], t[1], t[2]);
        for (std::size_t v = 0; v < count; ++v) {
            const std::size_t at = v * m.pixelBytes;
            const Bytes pixel(&out[at], &out[at] + m.pixelBytes);
            ASSERT_EQ(pixel, m.slow(&in[at], m.channels)) << m.name << " sample " << v;
        }
    }
}

TEST_F(Lut, Bgra8RedTableMovesByteTwoOnly) {
    Table8 full;
    full.fill(255);
    Table8 same = identity8;
    std::uint8_t in[8] = {1, 2, 3, 4, 250, 251, 252, 253}, out[8] = {};
    IpFrame_Lut_BGRA8(out, 8, in, 8, 2, 1, full.data(), same.data(), same.data());
    EXPECT_EQ(Bytes(out, out + 8), (Bytes{1, 2, 255, 4, 250, 251, 255, 253}));
}

TEST_F(Lut, Argb8LeavesByteZero) {
    Table8 r, g, b;
    r.fill(10), g.fill(20), b.fill(30);
    std::uint8_t in[4] = {77, 1, 2, 3}, out[4] = {};
    IpFrame_Lut_ARGB8(out, 4, in, 4, 1, 1, r.data(), g.data(), b.data());
    EXPECT_EQ(Bytes(out, out + 4), (Bytes{77, 10, 20, 30}));
}

TEST_F(Lut, SixteenBitSamplesAreLeftAlignedCodes) {
    Table10 same = identity10;
    const struct {
        const char* name;
        std::uint16_t in, out;
    } cases[] = {
        {"white loses its six low bits", 0xFFFF, 0xFFC0},
        {"mid grey is exact", 0x8000, 0x8000},
        {"under one 10-bit step is 0", 0x003F, 0},
        {"one step", 0x0040, 0x0040},
    };
    for (const auto& c : cases) {
        std::uint16_t in[4] = {c.in, c.in, c.in, c.in}, out[4] = {};
        IpFrame_Lut_BGRA16(out, 8, in, 8, 1, 1, same.data(), same.data(), same.data());
        for (const std::uint16_t value : out) EXPECT_EQ(value, c.out) << c.name;
    }
}

// A table entry above 1023 loses the bits that 16 cannot hold.
TEST_F(Lut, SixteenBitOutputDropsHighBits) {
    Table10 wide;
    wide.fill(0xFFFF);
    std::uint16_t in[4] = {}, out[4] = {};
    IpScan_Lut_16(out, in, 1, wide.data(), wide.data(), wide.data(), wide.data());
    for (const std::uint16_t value : out) EXPECT_EQ(value, 0xFFC0);
}

TEST_F(Lut, FloatSamples) {
    Table10 same = identity10;
    const struct {
        const char* name;
        float in;
        int code;
    } cases[] = {
        {"one is the top code", 1.0f, 1023},
        {"half truncates", 0.5f, 511},
        {"negative", -0.2f, 0},
        {"above one", 7.0f, 1023},
        {"last before one", std::nextafter(1.0f, 0.0f), 1022},
        {"minus zero", -0.0f, 0},
        {"denormal", std::numeric_limits<float>::denorm_min(), 0},
        {"infinity", kInf, 1023},
        {"minus infinity", -kInf, 0},
        {"NaN", kNaN, 0},
        {"huge", 3.4e38f, 1023},
        {"hugely negative", -3.4e38f, 0},
        {"just past int", 2099202.0f, 1023},
    };
    for (const auto& c : cases) {
        float in[4] = {c.in, c.in, c.in, 0.3f}, out[4] = {};
        IpFrame_Lut_BGRAFloat(out, 16, in, 16, 1, 1, same.data(), same.data(), same.data());
        const Bits expected{static_cast<float>(c.code) * std::bit_cast<float>(0x3A802008u)};
        for (const float value : out) EXPECT_EQ(Bits{value}, expected) << c.name;
    }
    EXPECT_EQ(Bits{1023.0f * std::bit_cast<float>(0x3A802008u)}, Bits{1.0f});
}

TEST_F(Lut, FloatAlpha) {
    Table10 same = identity10;
    float in[4] = {0.1f, 0.2f, 0.8f, 0.3f}, out[4] = {};
    IpFrame_Lut_BGRAFloat(out, 16, in, 16, 1, 1, same.data(), same.data(), same.data());
    EXPECT_NEAR(out[3], 818.0 / 1023, 1e-7);
    EXPECT_EQ(Bits{out[3]}, Bits{out[2]});
    in[3] = kNaN;
    IpFrame_Lut_BGRAFloat(out, 16, in, 16, 1, 1, same.data(), same.data(), same.data());
    EXPECT_NEAR(out[3], 818.0 / 1023, 1e-7) << "source alpha is not used";
}

// Every code's neighbourhood on the 0..1 scale, in every channel.
TEST_F(Lut, FloatSamplesAroundEveryCode) {
    std::vector<float> in;
    for (int code = -1; code <= 1024; ++code) {
        const float middle = static_cast<float>(code) / 1023.0f;
        for (const float x : {std::nextafter(middle, -9.0f), middle, std::nextafter(middle, 9.0f)})
            in.insert(in.end(), {x, 1.0f - x, x * 0.5f, kNaN});
    }
    std::vector<float> out(in.size());
    const int width = static_cast<int>(in.size() / 4);
    const auto t = TablesFor(16);
    IpFrame_Lut_BGRAFloat(out.data(), 0, in.data(), 0, width, 1, t[0], t[1], t[2]);
    for (std::size_t i = 0; i < in.size(); i += 4) {
        EXPECT_EQ(Bits{out[i]}, Bits{SlowFloat(2, in[i])}) << in[i];
        EXPECT_EQ(Bits{out[i + 1]}, Bits{SlowFloat(1, in[i + 1])}) << in[i + 1];
        EXPECT_EQ(Bits{out[i + 2]}, Bits{SlowFloat(0, in[i + 2])}) << in[i + 2];
        EXPECT_EQ(Bits{out[i + 3]}, Bits{SlowFloat(3, in[i + 2])}) << in[i + 2];
    }
}

TEST_F(Lut, MasterTakesAnyScanRoutine) {
    struct Call {
        void *dst, *src;
        int width;
        std::array<void*, 4> tables;
    };
    static std::vector<Call> calls;
    calls.clear();
    IpScanLutFn* const record = [](void* dst, void* src, int width, void* t0, void* t1, void* t2,
                                   void* t3) {
        calls.push_back({dst, src, width, {t0, t1, t2, t3}});
    };
    std::uint8_t memory[64];
    std::uint8_t t[4];
    IpFrame_Lut_Master(record, memory + 32, -10, memory, 7, 9, 3, t, t + 1, t + 2, t + 3);
    ASSERT_EQ(calls.size(), 3u);
    for (std::size_t r = 0; r < 3; ++r) {
        EXPECT_EQ(calls[r].dst, memory + 32 - 10 * r) << "negative steps walk down";
        EXPECT_EQ(calls[r].src, memory + 7 * r);
        EXPECT_EQ(calls[r].width, 9);
        for (std::size_t i = 0; i < 4; ++i) EXPECT_EQ(calls[r].tables[i], t + i);
    }
    for (int height : {0, -1, -100})
        IpFrame_Lut_Master(record, memory, 1, memory, 1, 9, height, t, t, t, t);
    EXPECT_EQ(calls.size(), 3u) << "no rows";
}

TEST_F(Lut, InPlace) {
    for (const Member& m : kMembers) {
        const auto t = TablesFor(m.pixelBytes);
        GuardedFrame frame({m.pixelBytes * 33, 2}, Place::guarded, 5);
        Bytes expected = frame.content();
        for (int r = 0; r < 2; ++r)
            for (std::size_t i = 0; i < 33; ++i) {
                const std::size_t at = frame.Offset(r) + i * m.pixelBytes;
                const Bytes pixel = m.slow(&expected[at], m.channels);
                std::ranges::copy(pixel, expected.begin() + static_cast<std::ptrdiff_t>(at));
            }
        m.frame(frame.base(), frame.rowBytes(), frame.base(), frame.rowBytes(), 33, 2, t[0], t[1],
                t[2]);
        EXPECT_EQ(frame.Difference(expected), "") << m.name;
    }
}

}  // namespace
