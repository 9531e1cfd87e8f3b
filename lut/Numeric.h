#pragma once

/// Clamps and float-to-integer rules of the engine. Every conversion goes through
/// here, so that NaN, infinities and overflow have one stated answer.

#include <cfloat>
#include <cstdint>

static_assert(FLT_EVAL_METHOD == 0, "single precision must mean single precision");

namespace zel::lut {

/// NaN passes through: both comparisons fail.
template <class Float>
constexpr Float Clamp(Float x, Float lo, Float hi) {
    return x < lo ? lo : x > hi ? hi : x;
}

/// Truncated toward zero; NaN and values outside the int32 range give 0.
constexpr std::int32_t Truncated(float x) {
    constexpr float kBeyond = 2147483648.0f;
    return x >= -kBeyond && x < kBeyond ? static_cast<std::int32_t>(x) : 0;
}

/// Operator codes and channel selectors: truncated; NaN and values outside the
/// int32 range are no code at all, told by -1.
constexpr std::int32_t Selector(float x) {
    constexpr float kBeyond = 2147483648.0f;
    return x >= -kBeyond && x < kBeyond ? static_cast<std::int32_t>(x) : -1;
}

/// Truncated and saturated at 0 and 0xFFFFFFFF; NaN gives 0.
constexpr std::uint32_t SaturatedUnsigned(float x) {
    if (!(x > 0.0f)) return 0;
    return x < 4294967296.0f ? static_cast<std::uint32_t>(x) : 0xFFFFFFFFu;
}

/// Index into a tonal weight table: truncated and clamped to 0..1023; NaN gives 0.
/// Only a white level above 1023 or a NaN entry can make the clamp act.
constexpr int WeightIndex(float x) {
    if (x >= 1023.0f) return 1023;
    return x > 0.0f ? static_cast<int>(x) : 0;
}

}  // namespace zel::lut
