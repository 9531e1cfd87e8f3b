#include "lut/CUtilLut.h"
#include "lut/Numeric.h"

using zel::lut::Clamp;
using zel::lut::Selector;
using zel::lut::Truncated;

namespace {

/// The share `keep` of an entry, the rest its inverse.
float BlendedWithInverse(float t, float keep) { return (1.0f - keep) * (1023.0f - t) + t * keep; }

/// One operator on an entry t, with the operand o and its whole part n.
float Operate(int op, float t, float o, std::int32_t n) {
    const auto whole = [](std::int64_t v) { return static_cast<float>(v); };
    switch (op) {
        case 0: return whole(Truncated(t) & n);
        case 1: return whole(Truncated(t) | n);
        case 2: return whole(Truncated(t) ^ n);
        case 3: return whole(std::int64_t{Truncated(t)} + n);
        case 4: return whole(std::int64_t{Truncated(t)} - n);
        case 5: return BlendedWithInverse(t, (1023.0f - o) / 1023.0f);
        case 6: return o < t ? o : t;  // these two keep t when either is NaN
        case 7: return o > t ? o : t;
        case 8: return o > t ? 0.0f : t;
        case 9: return t > o ? 0.0f : t;
        case 11: return (o / 1023.0f) * t;
        // Every other code only clamps. Deliberate: so does 10, in the middle of them.
        // docs/quirks.md, "arithmetic gap".
        default: return t;
    }
}

}  // namespace

void CUtilLut::ApplyArithmetic(float* params) {
    const int op = Selector(params[0]);
    const float white = m_fWhiteLevel;
    for (int c = 0; c < kChannels; ++c) {
        const float operand = Clamp((params[c + 1] / 255.0f) * 1023.0f, 0.0f, 1023.0f);
        const std::int32_t whole = Truncated(operand);
        float* const channel = m_pLut + c * kEntries;
        for (int i = 0; i < kEntries; ++i)
            channel[i] = Clamp(Operate(op, channel[i], operand, whole), 0.0f, white);
    }
}

void CUtilLut::ApplyInvert(float* params) {
    const int selected = Selector(params[0]);
    const float keep = Clamp(params[1] / 100.0f, 0.0f, 1.0f);
    const float invert = 1.0f - keep;
    const float white = m_fWhiteLevel;
    for (int c = 0; c < kChannels; ++c) {
        // Deliberate: 0 means every channel, so no value picks channel 0 alone.
        // docs/quirks.md, "invert selector".
        if (selected != 0 && selected != c) continue;
        float* const channel = m_pLut + c * kEntries;
        for (int i = 0; i < kEntries; ++i) {
            const float t = channel[i];
            // Deliberate: mirrored about 1023, not the white level.
            // docs/quirks.md, "constant 1023".
            channel[i] = Clamp((1023.0f - t) * invert + t * keep, 0.0f, white);
        }
    }
}
