#pragma once

/// Clamps and float-to-integer rules of the library. Every conversion goes
/// through here, so that NaN, infinities and overflow have one stated answer.

#include <cstdint>
#include <limits>

namespace zel::ip {

/// NaN passes through: both comparisons fail.
constexpr float Clamp(float x, float lo, float hi) { return x < lo ? lo : x > hi ? hi : x; }

/// Truncates toward zero and saturates at the ends of an unsigned type; NaN and
/// everything below 1 give 0.
template <class Unsigned>
constexpr Unsigned Saturated(float x) {
    constexpr int bits = std::numeric_limits<Unsigned>::digits;
    constexpr float beyond = 2.0f * static_cast<float>(std::uint64_t{1} << (bits - 1));
    if (!(x > 0.0f)) return 0;
    if (x >= beyond) return std::numeric_limits<Unsigned>::max();
    return static_cast<Unsigned>(x);
}

/// Truncates toward zero and saturates at the ends of int; NaN gives 0.
constexpr int TruncatedToInt(float x) {
    if (x >= 2147483648.0f) return std::numeric_limits<int>::max();
    if (x <= -2147483648.0f) return std::numeric_limits<int>::min();
    return x == x ? static_cast<int>(x) : 0;
}

/// Index into a 1024-entry table from a sample on the 0..1 scale: truncated and
/// clamped to 0..1023. Compared before converting, so +infinity gives 1023 and
/// NaN gives 0.
constexpr int CodeOfUnit(float x) {
    const float code = x * 1023.0f;
    if (code >= 1023.0f) return 1023;
    return code > 0.0f ? static_cast<int>(code) : 0;
}

}  // namespace zel::ip
