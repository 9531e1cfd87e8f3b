#pragma once

/// Words, codes and colour conversion restated slowly: sums of products instead of
/// shifts, and single precision by rounding exact double results.

#include "tests/support/GuardedBuffer.h"

#include <array>
#include <cmath>
#include <cstdint>

namespace zel::test {

inline std::uint32_t WordOf(const std::uint8_t* bytes) {
    return bytes[0] + 256u * bytes[1] + 65536u * bytes[2] + 16777216u * bytes[3];
}

inline Bytes BytesOf(std::uint64_t value, int count) {
    Bytes bytes(static_cast<std::size_t>(count));
    for (std::uint8_t& byte : bytes) {
        byte = static_cast<std::uint8_t>(value % 256);
        value /= 256;
    }
    return bytes;
}

inline Bytes operator+(Bytes a, const Bytes& b) {
    a.insert(a.end(), b.begin(), b.end());
    return a;
}

inline Bytes Reversed(const Bytes& bytes) { return {bytes.rbegin(), bytes.rend()}; }

/// `bits` bits of a word from bit `low` on.
inline std::uint32_t Field(std::uint32_t word, int low, int bits) {
    return static_cast<std::uint32_t>(word / (std::uint64_t{1} << low) %
                                      (std::uint64_t{1} << bits));
}

/// One rounding to single precision. Sums, differences and products of two singles
/// are rounded the same whether from the double result or the exact one.
inline double Single(double exact) { return static_cast<float>(exact); }

inline double Clamped(double x, double lo, double hi) {
    if (x < lo) return lo;
    if (x > hi) return hi;
    return x;
}

struct SlowYuv {
    double y, u, v;
};

inline SlowYuv YuvOf(float r, float g, float b, bool normalised) {
    const auto scaled = [=](float c) {
        return normalised ? double{c} : Clamped(Single(double{c} / 256), 0, 1);
    };
    const double in[3] = {scaled(r), scaled(g), scaled(b)};
    const auto sum = [&](float wr, float wg, float wb) {
        const double red = Single(double{wr} * in[0]), green = Single(double{wg} * in[1]);
        return Single(Single(red + green) + Single(double{wb} * in[2]));
    };
    return {sum(0.299f, 0.587f, 0.114f), sum(-0.147f, -0.289f, 0.436f),
            sum(0.615f, -0.515f, -0.100f)};
}

/// Truncated, with everything at or below 0 and NaN as 0.
inline std::uint32_t CodeOf(double x) {
    if (!(x > 0)) return 0;
    return x >= 4294967296.0 ? 0xFFFFFFFFu : static_cast<std::uint32_t>(std::floor(x));
}

using Ycc = std::array<std::uint32_t, 3>;

inline Ycc SlowYuv8(float r, float g, float b, bool normalised) {
    const SlowYuv yuv = YuvOf(r, g, b, normalised);
    const auto code = [](double x) { return CodeOf(Clamped(x, 0, 255)); };
    return {code(Single(yuv.y * 255)), code(Single(Single(yuv.u * 255) + 128)),
            code(Single(Single(yuv.v * 255) + 128))};
}

inline Ycc SlowYuv10(float r, float g, float b, bool normalised) {
    const SlowYuv yuv = YuvOf(r, g, b, normalised);
    const auto chroma = [](double x) {
        return CodeOf(Single(Single(0.5 + Clamped(x, -5, 0.5)) * 1023));
    };
    return {CodeOf(Single(Clamped(yuv.y, 0, 1) * 1023)), chroma(yuv.u), chroma(yuv.v)};
}

/// Six pixels R G B to the 16 bytes of a v210 group; chroma of the first three.
inline Bytes SlowV210(const std::array<std::array<std::uint8_t, 3>, 6>& rgb) {
    std::array<Ycc, 6> p;
    for (std::size_t k = 0; k < 6; ++k) p[k] = SlowYuv10(rgb[k][0], rgb[k][1], rgb[k][2], false);
    enum { Y, Cb, Cr };
    const std::uint32_t fields[4][3] = {
        {p[0][Cb], p[0][Y], p[0][Cr]},
        {p[1][Y], p[1][Cb], p[2][Y]},
        {p[1][Cr], p[3][Y], p[2][Cb]},
        {p[4][Y], p[2][Cr], p[5][Y]},
    };
    Bytes group;
    for (const auto& f : fields) group = group + BytesOf(f[0] + 1024 * f[1] + 1048576 * f[2], 4);
    return group;
}

}  // namespace zel::test
