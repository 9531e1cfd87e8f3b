#include "ip/IpTables.h"

#include "ip/IpFill.h"
#include "ip/detail/Cpu.h"
#include "ip/detail/Layouts.h"
#include "ip/detail/Memory.h"
#include "ip/detail/Units.h"

#include <algorithm>
#include <array>
#include <mutex>
#include <span>

std::uint8_t unityLut8[256];
std::uint16_t unityLut10[1024];
std::uint32_t g_blackYUYV8, g_blackUYVY8;
std::uint32_t g_blackY10, g_blackU10, g_blackV10;
std::uint32_t g_blackV210Even[2], g_blackV210Odd[2];
std::uint8_t g_blackScanChar4[kIpBlackScanPixels * 4];
std::uint8_t g_blackScanShort4[kIpBlackScanPixels * 8];
std::uint8_t g_blackScanFloat4[kIpBlackScanPixels * 16];
std::uint8_t g_blackScanYUYV8[kIpBlackScanPixels * 2];
std::uint8_t g_blackScanUYVY8[kIpBlackScanPixels * 2];
std::uint8_t g_blackScanV210[(kIpBlackScanPixels + 5) / 6 * 16];

namespace {

using namespace zel::ip;

// Hosts set an effect up again while it renders on other threads: what stands already is
// compared and not written, so that readers meet no writer.

template <class T>
void Set(T& place, const T& value) {
    if (place != value) place = value;
}

void InitUnity() {
    for (std::size_t i = 0; i < std::size(unityLut8); ++i)
        Set(unityLut8[i], static_cast<std::uint8_t>(i));
    for (std::size_t i = 0; i < std::size(unityLut10); ++i)
        Set(unityLut10[i], static_cast<std::uint16_t>(i));
}

void InitBlack8() {
    unsigned char y, cb, cr;
    IpRGBToYUV8(&y, &cb, &cr, 0, 0, 0, true);
    Set(g_blackYUYV8, PackBytes(y, cb, y, cr));
    Set(g_blackUYVY8, PackBytes(cb, y, cr, y));
}

void InitBlack10() {
    unsigned int y, cb, cr;
    IpRGBToYUV10(&y, &cb, &cr, 0, 0, 0, true);
    Set(g_blackY10, y);
    Set(g_blackU10, cb);
    Set(g_blackV10, cr);
    const V210Words group = PackV210(y, cb, cr);
    for (std::size_t i = 0; i < 2; ++i) {
        Set(g_blackV210Even[i], group[i]);
        Set(g_blackV210Odd[i], group[2 + i]);
    }
}

/// What the fill does not reach stays as it is.
void InitBlackScan(IpScanFillFn* fill, std::span<std::uint8_t> scan) {
    std::array<std::uint8_t, sizeof g_blackScanFloat4> line;
    const std::span filled = std::span(line).first(scan.size());
    std::ranges::copy(scan, filled.begin());
    fill(filled.data(), 0, kIpBlackScanPixels, 0, 0, 0, 0, false);
    if (!std::ranges::equal(scan, filled)) std::ranges::copy(filled, scan.begin());
}

void InitBlackScans() {
    InitBlackScan(IpScan_Fill_RGBA8, g_blackScanChar4);
    InitBlackScan(IpScan_Fill_RGBA16, g_blackScanShort4);
    InitBlackScan(IpScan_Fill_BGRA32Float, g_blackScanFloat4);
    InitBlackScan(IpScan_Fill_YUYV8, g_blackScanYUYV8);
    InitBlackScan(IpScan_Fill_UYVY8, g_blackScanUYVY8);
    InitBlackScan(IpScan_Fill_v210, g_blackScanV210);
}

}  // namespace

void IpInitialize() {
    static std::mutex oneAtATime;
    const std::scoped_lock lock(oneAtATime);
    InitUnity();
    InitBlack8();
    InitBlack10();
    InitBlackScans();
    ChooseCpu();
}

void IpFinalize() {}

void* IpScan_Black_Char4() { return g_blackScanChar4; }
void* IpScan_Black_Short4() { return g_blackScanShort4; }
void* IpScan_Black_Float4() { return g_blackScanFloat4; }
void* IpScan_Black_YUYV8() { return g_blackScanYUYV8; }
void* IpScan_Black_UYVY8() { return g_blackScanUYVY8; }
void* IpScan_Black_v210() { return g_blackScanV210; }

int IpScan_Pitch_Char4(int width) { return width * 4; }
int IpScan_Pitch_Short4(int width) { return width * 8; }
int IpScan_Pitch_Float4(int width) { return width * 16; }
int IpScan_Pitch_YUYV8(int width) { return width * 2; }
int IpScan_Pitch_UYVY8(int width) { return IpScan_Pitch_YUYV8(width); }

// Deliberate: four units per six pixels, truncated. docs/quirks.md, "v210 pitch".
int IpScan_Pitch_v210(int width) { return width * 4 / 6; }

void IpScan_Black_RGBA8(void* scan, int start, int count) {
    FillUnits(scan, start, count, std::uint32_t{0});
}
void IpScan_Black_BGRA8(void* scan, int start, int count) {
    IpScan_Black_RGBA8(scan, start, count);
}
void IpScan_Black_ARGB8(void* scan, int start, int count) {
    IpScan_Black_RGBA8(scan, start, count);
}
void IpScan_Black_DpxLe(void* scan, int start, int count) {
    IpScan_Black_RGBA8(scan, start, count);
}
void IpScan_Black_DpxBe(void* scan, int start, int count) {
    IpScan_Black_RGBA8(scan, start, count);
}

// Deliberate: `start` counts 4-byte words here too. docs/quirks.md, "blacker start".
void IpScan_Black_RGBA16(void* scan, int start, int count) {
    FillUnits(scan, start, std::ptrdiff_t{2} * count, std::uint32_t{0});
}
void IpScan_Black_BGRA16(void* scan, int start, int count) {
    IpScan_Black_RGBA16(scan, start, count);
}
void IpScan_Black_ARGB16(void* scan, int start, int count) {
    IpScan_Black_RGBA16(scan, start, count);
}

// Deliberate: clears twice the pixels asked for. docs/quirks.md, "RGB10 blacker".
void IpScan_Black_RGB10(void* scan, int start, int count) {
    IpScan_Black_RGBA16(scan, start, count);
}

void IpScan_Black_YUYV8(void* scan, int start, int count) {
    FillUnits(scan, start, count / 2, g_blackYUYV8);
}
void IpScan_Black_UYVY8(void* scan, int start, int count) {
    FillUnits(scan, start, count / 2, g_blackUYVY8);
}

void IpScan_Black_BGRA32Float(void* scan, int start, int count) {
    FillUnits(scan, start, count, std::array<float, 4>{});
}

void IpScan_Black_v210(void* scan, int start, int count) {
    const auto &even = g_blackV210Even, &odd = g_blackV210Odd;
    FillUnits(scan, start / 6, count / 6, V210Words{even[0], even[1], odd[0], odd[1]});
}

bool IpScan_Capable(int, int) { return false; }

void IpScan_Swap(int* a, int* b, int byteCount) {
    const auto swap = [](void* inA, void* inB) {
        const auto wordOfA = Load<std::uint32_t>(inA);
        Store(inA, Load<std::uint32_t>(inB));
        Store(inB, wordOfA);
    };
    ForEach(byteCount / 4, swap, UnitsOf<std::uint32_t>(a), UnitsOf<std::uint32_t>(b));
}
