#pragma once

/// An open curve and what tests of tone operations say about curves.

#include "lut/CUtilLut.h"
#include "tests/support/Bits.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstddef>
#include <initializer_list>
#include <limits>

namespace zel::test {

inline constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();
inline constexpr float kInf = std::numeric_limits<float>::infinity();

/// The effect's parameter array.
using Params = std::array<float, 128>;

struct Change {
    int entry;
    float value;
};

inline Params With(Params params, std::initializer_list<Change> changes) {
    for (const auto& [entry, value] : changes) params[static_cast<std::size_t>(entry)] = value;
    return params;
}

/// An open curve, the identity to begin with.
struct OpenLut : CUtilLut {
    OpenLut() {
        Open();
        Reset();
    }
    float At(int channel, int i) const { return m_pLut[channel * kEntries + i]; }
};

/// Bits with every NaN counted as the same one: which operand's payload and sign a NaN
/// result carries is left to the compiler, which may swap the operands.
inline Bits AnyNaN(float v) { return {std::isnan(v) ? kNaN : v}; }

/// Every entry of both curves has the same bits, or both are NaN.
inline testing::AssertionResult SameCurve(const CUtilLut& got, const CUtilLut& expected) {
    for (int c = 0; c < CUtilLut::kChannels; ++c)
        for (int i = 0; i < CUtilLut::kEntries; ++i) {
            const Bits a = AnyNaN(got.m_pLut[c * CUtilLut::kEntries + i]);
            const Bits b = AnyNaN(expected.m_pLut[c * CUtilLut::kEntries + i]);
            if (!(a == b))
                return testing::AssertionFailure()
                       << "channel " << c << " entry " << i << ": got " << a << ", expected " << b;
        }
    return testing::AssertionSuccess();
}

/// Puts values that no operation should meet among the entries of `lut`, at places of
/// its own in each channel.
inline void MakeHostile(CUtilLut& lut) {
    constexpr float kHostile[] = {kNaN,     -kNaN,  kInf,   -kInf,   -0.0f, -1.0f,   -1e-30f,
                                  -1023.0f, 1e-40f, 0.999f, 511.75f, 1e10f, 1023.5f, 1024.0f,
                                  2048.0f,  -3e9f,  3e9f,   3e38f,   1.0f,  682.0f};
    int place = 0;
    for (int c = 0; c < CUtilLut::kChannels; ++c)
        for (const float value : kHostile)
            lut.m_pLut[c * CUtilLut::kEntries + (place++ * 37) % CUtilLut::kEntries] = value;
}

}  // namespace zel::test
