#pragma once

/// 10-bit codes of 8-bit RGB samples for packing v210: IpRGBToYUV10 with its division by
/// 256, a power of two, moved into the weights, where it changes no bit. A code is
/// ((r x red + g x green + b x blue) + bias) x 1023, each step rounded to single,
/// clamped to 0..1023 and truncated. The clamps of IpRGBToYUV10 come to the same: they lie
/// where the code would leave that range.

#include <array>

namespace zel::ip {

struct V210Weights {
    float r, g, b, bias;
};

// clang-format off
inline constexpr V210Weights kV210Y {0.299f / 256,  0.587f / 256,  0.114f / 256, 0.0f};
inline constexpr V210Weights kV210Cb{-0.147f / 256, -0.289f / 256, 0.436f / 256, 0.5f};
inline constexpr V210Weights kV210Cr{0.615f / 256,  -0.515f / 256, -0.100f / 256, 0.5f};
// clang-format on

/// What a word of a group holds in one of its fields: one code of one pixel.
struct V210Source {
    int pixel;
    const V210Weights& weights;
};

using V210Field = std::array<V210Source, 4>;

// Chroma is that of pixels 0, 1 and 2. docs/quirks.md, "v210 chroma".
// clang-format off
inline constexpr V210Field kV210Low   {{{0, kV210Cb}, {1, kV210Y},  {1, kV210Cr}, {4, kV210Y}}};
inline constexpr V210Field kV210Middle{{{0, kV210Y},  {1, kV210Cb}, {3, kV210Y},  {2, kV210Cr}}};
inline constexpr V210Field kV210High  {{{0, kV210Cr}, {2, kV210Y},  {2, kV210Cb}, {5, kV210Y}}};
// clang-format on

}  // namespace zel::ip
