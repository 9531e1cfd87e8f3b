#include "lut/CUtilLut.h"
#include "lut/Numeric.h"

using zel::lut::Clamp;
using zel::lut::WeightIndex;

namespace {

float Percent(float x) { return Clamp(x, -100.0f, 100.0f); }

/// Percentages of one channel, master already carried into each range.
struct BalanceControls {
    float highlights, midtones, shadows;
};

BalanceControls ResolveBalance(const float* params, int channel) {
    const auto group = [=](int rgb) { return params[rgb] + params[rgb + 1 + channel]; };
    const float master = Percent(group(1));
    return {
        // Deliberate: only the highlights are not limited to +-100.
        // docs/quirks.md, "unclamped highlights".
        .highlights = master + group(7),
        .midtones = Percent(group(13) + master),
        .shadows = Percent(group(19) + master),
    };
}

}  // namespace

void CUtilLut::ApplyBalance(float* params) {
    for (int c = 0; c < kChannels; ++c) {
        const float gain = params[c] / 255.0f;
        float* const channel = m_pLut + c * kEntries;
        for (int i = 0; i < kEntries; ++i) channel[i] = Clamp(gain * channel[i], 0.0f, 1023.0f);
    }
}

void CUtilLut::ApplyBalance2(float* params) {
    const float white = m_fWhiteLevel;
    for (int c = 0; c < kChannels; ++c) {
        const BalanceControls controls = ResolveBalance(params, c);
        const float h = controls.highlights * 0.01f;
        const float m = controls.midtones * 0.01f;
        const float s = controls.shadows * 0.01f;
        float* const channel = m_pLut + c * kEntries;
        for (int i = 0; i < kEntries; ++i) {
            const float t = channel[i];
            const int k = WeightIndex(t);
            const float highlights = (t * h + t) * m_highlights[k];
            const float midtones = (t * m + t) * m_midtones[k];
            const float shadows = (t + t * s) * m_shadows[k];
            channel[i] = Clamp((highlights + midtones) + shadows, 0.0f, white);
        }
    }
}
