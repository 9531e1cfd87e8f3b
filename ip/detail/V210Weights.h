#pragma once

/// 10-bit codes of 8-bit RGB samples for packing v210: IpRGBToYUV10 with its division by
/// 256, a power of two, moved into the weights, where it changes no bit. A code is
/// ((r x red + g x green + b x blue) + bias) x 1023, each step rounded to single,
/// truncated and then clamped to 0..1023. The clamps of IpRGBToYUV10 come to the same:
/// they lie where the code would leave that range.

namespace zel::ip {

struct V210Weights {
    float r, g, b, bias;
};

// clang-format off
inline constexpr V210Weights kV210Y {0.299f / 256,  0.587f / 256,  0.114f / 256, 0.0f};
inline constexpr V210Weights kV210Cb{-0.147f / 256, -0.289f / 256, 0.436f / 256, 0.5f};
inline constexpr V210Weights kV210Cr{0.615f / 256,  -0.515f / 256, -0.100f / 256, 0.5f};
// clang-format on

}  // namespace zel::ip
