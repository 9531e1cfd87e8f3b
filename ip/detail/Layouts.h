#pragma once

/// Pixel layouts as values, and packed words. docs/layouts.md draws them.

#include <array>
#include <cstdint>

namespace zel::ip {

/// Interleaved layouts: the element of the pixel that holds each colour, and the
/// elements of a pixel. Without alpha, `a` is -1.
struct Order {
    int r, g, b, a, elements;
};

inline constexpr Order kRGBA{0, 1, 2, 3, 4};
inline constexpr Order kBGRA{2, 1, 0, 3, 4};
inline constexpr Order kARGB{1, 2, 3, 0, 4};
inline constexpr Order kABGR{3, 2, 1, 0, 4};
inline constexpr Order kRGB{0, 1, 2, -1, 3};
inline constexpr Order kBGR{2, 1, 0, -1, 3};

// Fields are added, not or-ed: a code too wide for its field spills into the next
// one, and callers rely on the sum. docs/quirks.md, "wide codes".

constexpr std::uint32_t PackBytes(std::uint32_t b0, std::uint32_t b1, std::uint32_t b2,
                                  std::uint32_t b3) {
    return b0 + (b1 << 8) + (b2 << 16) + (b3 << 24);
}

constexpr std::uint64_t PackShorts(std::uint64_t s0, std::uint64_t s1, std::uint64_t s2,
                                   std::uint64_t s3) {
    return s0 + (s1 << 16) + (s2 << 32) + (s3 << 48);
}

/// Three 10-bit codes at bits 0, 10 and 20: an RGB10 pixel, a word of v210.
constexpr std::uint32_t Pack10(std::uint32_t low, std::uint32_t middle, std::uint32_t high) {
    return low + (middle << 10) + (high << 20);
}

/// DPX word of three 8-bit codes. Deliberate: the fill hands in 10-bit codes, of
/// which red then keeps its low eight bits only. docs/quirks.md, "DPX fill".
constexpr std::uint32_t PackDpx(std::uint32_t r, std::uint32_t g, std::uint32_t b) {
    return (r << 24) + (g << 14) + (b << 4);
}

/// The eight bits of a word from `bit` on: the top of a 10-bit code that starts two
/// bits lower.
constexpr std::uint32_t ByteAt(std::uint32_t word, int bit) { return word >> bit & 0xFFu; }

// Opaque BGRA8 pixels from packed words: eight bits of each code, no rounding.

constexpr std::uint32_t BgraOfRGB10(std::uint32_t word) {
    return PackBytes(ByteAt(word, 22), ByteAt(word, 12), ByteAt(word, 2), 255);
}

constexpr std::uint32_t BgraOfDpx(std::uint32_t word) {
    return PackBytes(ByteAt(word, 4), ByteAt(word, 14), ByteAt(word, 24), 255);
}

/// The four words of a v210 group.
using V210Words = std::array<std::uint32_t, 4>;

/// The codes of a v210 group: six pixels, one chroma sample for each pair of them.
struct V210Codes {
    std::array<std::uint32_t, 6> y;
    std::array<std::uint32_t, 3> cb, cr;
};

constexpr V210Words PackV210(const V210Codes& codes) {
    const auto& [y, cb, cr] = codes;
    // clang-format off
    return {Pack10(cb[0],  y[0], cr[0]),
            Pack10( y[1], cb[1],  y[2]),
            Pack10(cr[1],  y[3], cb[2]),
            Pack10( y[4], cr[2],  y[5])};
    // clang-format on
}

/// A group of one colour.
constexpr V210Words PackV210(std::uint32_t y, std::uint32_t cb, std::uint32_t cr) {
    return PackV210({{y, y, y, y, y, y}, {cb, cb, cb}, {cr, cr, cr}});
}

/// The group as three words of bytes Y Cb Y Cr: the top eight bits of each code.
constexpr std::array<std::uint32_t, 3> YCbYCrOfV210(const V210Words& w) {
    // clang-format off
    return {PackBytes(ByteAt(w[0], 12), ByteAt(w[0],  2), ByteAt(w[1],  2), ByteAt(w[0], 22)),
            PackBytes(ByteAt(w[1], 22), ByteAt(w[1], 12), ByteAt(w[2], 12), ByteAt(w[2],  2)),
            PackBytes(ByteAt(w[3],  2), ByteAt(w[2], 22), ByteAt(w[3], 22), ByteAt(w[3], 12))};
    // clang-format on
}

}  // namespace zel::ip
