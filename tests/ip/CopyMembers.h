#pragma once

/// The converting members of the copy family beside what each makes of one unit,
/// restated with byte numbers and arithmetic.

#include "ip/IpCopy.h"
#include "tests/ip/SlowPixels.h"

#include <array>
#include <cstdint>
#include <ostream>
#include <vector>

namespace zel::test {

using FrameCopyFn = decltype(&IpFrame_Copy);

struct CopyMember {
    const char* name;
    FrameCopyFn frame;
    IpScanCopyFn* scan;  // null: the frame member has its own rows
    int pixels;          // of a unit
    std::size_t srcUnit, dstUnit;
    Bytes (*unit)(const std::uint8_t* s);

    friend std::ostream& operator<<(std::ostream& out, const CopyMember& m) {
        return out << m.name;
    }
};

namespace slow {

inline Bytes Rgb10(unsigned r, unsigned g, unsigned b, unsigned blueStep) {
    return BytesOf(4ull * r + 4096ull * g + std::uint64_t{blueStep} * b, 4);
}

inline Bytes Dpx(unsigned r, unsigned g, unsigned b) {
    return BytesOf(16777216ull * r + 16384ull * g + 16ull * b, 4);
}

inline Bytes FromRgb10(std::uint32_t word) {
    const auto top = [=](int low) { return static_cast<std::uint8_t>(Field(word, low, 10) / 4); };
    return {top(20), top(10), top(0), 255};
}

inline Bytes FromDpx(std::uint32_t word) {
    const auto top = [=](int low) { return static_cast<std::uint8_t>(Field(word, low, 10) / 4); };
    return {top(2), top(12), top(22), 255};
}

template <int R, int G, int B, int Step>
Bytes V210(const std::uint8_t* s) {
    std::array<std::array<std::uint8_t, 3>, 6> rgb;
    for (std::size_t k = 0; k < 6; ++k)
        rgb[k] = {s[k * Step + R], s[k * Step + G], s[k * Step + B]};
    return SlowV210(rgb);
}

/// Codes in the order in which a v210 group stores them, three to a word.
inline Bytes FromV210(const std::uint8_t* s) {
    std::array<std::uint8_t, 12> top;  // Cb0 Y0 Cr0 Y1 Cb1 Y2 Cr1 Y3 Cb2 Y4 Cr2 Y5
    for (std::size_t i = 0; i < 12; ++i)
        top[i] = static_cast<std::uint8_t>(
            Field(WordOf(s + i / 3 * 4), static_cast<int>(i % 3) * 10, 10) / 4);
    return {top[1], top[0], top[3], top[2], top[5],  top[4],
            top[7], top[6], top[9], top[8], top[11], top[10]};
}

}  // namespace slow

inline std::vector<CopyMember> CopyMembers() {
    using S = const std::uint8_t*;
    using namespace slow;
    // clang-format off
    return {
        {"BGRA8_To_RGB8",      IpFrame_Copy_BGRA8_To_RGB8,      IpScan_Copy_BGRA_To_RGB,         1,  4,  3, [](S s) { return Bytes{s[2], s[1], s[0]}; }},
        {"BGRA8_To_BGR8",      IpFrame_Copy_BGRA8_To_BGR8,      IpScan_Copy_BGRA_To_BGR,         1,  4,  3, [](S s) { return Bytes{s[0], s[1], s[2]}; }},
        {"BGRA8_To_ARGB8",     IpFrame_Copy_BGRA8_To_ARGB8,     IpScan_Copy_BGRA_To_ARGB,        1,  4,  4, [](S s) { return Bytes{s[3], s[2], s[1], s[0]}; }},
        {"BGRA8_To_ABGR8",     IpFrame_Copy_BGRA8_To_ABGR8,     IpScan_Copy_BGRA_To_ABGR,        1,  4,  4, [](S s) { return Bytes{s[3], s[0], s[1], s[2]}; }},
        {"BGRA8_To_RGBA8",     IpFrame_Copy_BGRA8_To_RGBA8,     IpScan_Copy_BGRA_To_RGBA,        1,  4,  4, [](S s) { return Bytes{s[2], s[1], s[0], s[3]}; }},
        {"RGBA8_To_BGRA8",     IpFrame_Copy_RGBA8_To_BGRA8,     IpScan_Copy_RGBA8_To_BGRA8,      1,  4,  4, [](S s) { return Bytes{s[2], s[1], s[0], s[3]}; }},
        {"RGB8_To_BGRA8",      IpFrame_Copy_RGB8_To_BGRA8,      IpScan_Copy_RGB_To_BGRA8,        1,  3,  4, [](S s) { return Bytes{s[2], s[1], s[0], 255}; }},
        {"RGB8_To_RGBA8",      IpFrame_Copy_RGB8_To_RGBA8,      nullptr,                         1,  3,  4, [](S s) { return Bytes{s[0], s[1], s[2], 255}; }},
        {"RGB8_To_ARGB8",      IpFrame_Copy_RGB8_To_ARGB8,      nullptr,                         1,  3,  4, [](S s) { return Bytes{255, s[0], s[1], s[2]}; }},
        {"BGRA8_To_RGB16",     IpFrame_Copy_BGRA8_To_RGB16,     IpScan_Copy_BGRA_To_RGB16,       1,  4,  6, [](S s) { return Bytes{s[2], 0, s[1], 0, s[0], 0}; }},
        {"BGRA8_To_RGB10",     IpFrame_Copy_BGRA8_To_RGB10,     IpScan_Copy_BGRA_To_RGB10,       1,  4,  4, [](S s) { return Rgb10(s[2], s[1], s[0], 1 << 24); }},
        {"RGB8_To_RGB10",      IpFrame_Copy_RGB8_To_RGB10,      IpScan_Copy_RGB8_To_RGB10,       1,  3,  4, [](S s) { return BytesOf(0xC0000000ull + 4ull * s[0] + 4096ull * s[1] + 4194304ull * s[2], 4); }},
        {"RGB16LE_To_RGB10",   IpFrame_Copy_RGB16LE_To_RGB10,   IpScan_Copy_RGB16LE_To_RGB10,    1,  6,  4, [](S s) { return BytesOf((s[0] + 256u * s[1]) / 64 + (s[2] + 256u * s[3]) / 64 * 1024ull + (s[4] + 256u * s[5]) / 64 * 1048576ull, 4); }},
        {"BGRA8_To_DpxLE",     IpFrame_Copy_BGRA8_To_DpxLE,     IpScan_Copy_BGRA_To_DpxLE,       1,  4,  4, [](S s) { return Dpx(s[2], s[1], s[0]); }},
        {"BGRA8_To_DpxBE",     IpFrame_Copy_BGRA8_To_DpxBE,     IpScan_Copy_BGRA_To_DpxBE,       1,  4,  4, [](S s) { return Reversed(Dpx(s[2], s[1], s[0])); }},
        {"RGB10_To_BGRA8",     IpFrame_Copy_RGB10_To_BGRA8,     IpScan_Copy_RGB10_To_BGRA8,      1,  4,  4, [](S s) { return FromRgb10(WordOf(s)); }},
        {"DpxLE_To_BGRA8",     IpFrame_Copy_DpxLE_To_BGRA8,     IpScan_Copy_DpxLE_To_BGRA8,      1,  4,  4, [](S s) { return FromDpx(WordOf(s)); }},
        {"DpxBE_To_BGRA8",     IpFrame_Copy_DpxBE_To_BGRA8,     IpScan_Copy_DpxBE_To_BGRA8,      1,  4,  4, [](S s) { return FromDpx(WordOf(Reversed({s, s + 4}).data())); }},
        {"Endian32",           IpFrame_Copy_Endian32,           IpScan_Copy_Endian32,            1,  4,  4, [](S s) { return Bytes{s[3], s[2], s[1], s[0]}; }},
        {"RGB8_To_v210",       IpFrame_Copy_RGB8_To_v210,       IpScan_Copy_RGB_To_v210,         6, 18, 16, V210<0, 1, 2, 3>},
        {"RGBA8_To_v210",      IpFrame_Copy_RGBA8_To_v210,      IpScan_Copy_RGBA_To_v210,        6, 24, 16, V210<0, 1, 2, 4>},
        {"BGRA8_To_v210",      IpFrame_Copy_BGRA8_To_v210,      IpScan_Copy_BGRA_To_v210,        6, 24, 16, V210<2, 1, 0, 4>},
        {"v210_To_YCbYCr8",    IpFrame_Copy_v210_To_YCbYCr8,    IpScan_Copy_v210_To_YCbYCr8,     6, 16, 12, FromV210},
        {"VUYA8_To_VUY8",      IpFrame_Copy_VUYA8_To_VUY8,      IpScan_Copy_VUYA8_To_VUY8,       1,  4,  4, [](S s) { return Bytes{s[0], s[3], s[3], s[2]}; }},
        {"VUYA8_To_YCbYCr8",   IpFrame_Copy_VUYA8_To_YCbYCr8,   IpScan_Copy_VUYA8_To_YCbYCr8,    2,  8,  4, [](S s) { return Bytes{s[1], s[6], s[0], s[2]}; }},
    };
    // clang-format on
}

}  // namespace zel::test
