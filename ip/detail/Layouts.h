#pragma once

/// Pixel layouts as values. docs/layouts.md draws them.

#include <array>
#include <cstdint>

namespace zel::ip {

/// Four-channel layouts: the element of the pixel that holds each colour.
struct Order {
    int r, g, b, a;
};

inline constexpr Order kRGBA{0, 1, 2, 3};
inline constexpr Order kBGRA{2, 1, 0, 3};
inline constexpr Order kARGB{1, 2, 3, 0};

// Packed words. Fields are added, not or-ed: a code too wide for its field
// spills into the next one, and callers rely on the sum.

constexpr std::uint32_t PackBytes(std::uint32_t b0, std::uint32_t b1, std::uint32_t b2,
                                  std::uint32_t b3) {
    return b0 + (b1 << 8) + (b2 << 16) + (b3 << 24);
}

constexpr std::uint64_t PackShorts(std::uint64_t s0, std::uint64_t s1, std::uint64_t s2,
                                   std::uint64_t s3) {
    return s0 + (s1 << 16) + (s2 << 32) + (s3 << 48);
}

constexpr std::uint32_t PackRGB10(std::uint32_t r, std::uint32_t g, std::uint32_t b) {
    return r + (g << 10) + (b << 20);
}

/// DPX word as the fills and packers write it: red keeps its low eight bits only.
constexpr std::uint32_t PackDpx(std::uint32_t r, std::uint32_t g, std::uint32_t b) {
    return (r << 24) + (g << 14) + (b << 4);
}

/// Two words of a v210 group whose pixels share one luma and one chroma pair.
/// Words 0 and 1 lead with Cb, words 2 and 3 with Cr: hand the chroma in that order.
constexpr std::array<std::uint32_t, 2> PackV210Pair(std::uint64_t y, std::uint64_t leading,
                                                    std::uint64_t trailing) {
    const std::uint64_t words =
        (y << 10) + (y << 32) + (y << 52) + leading + (trailing << 20) + (leading << 42);
    return {static_cast<std::uint32_t>(words), static_cast<std::uint32_t>(words >> 32)};
}

}  // namespace zel::ip
