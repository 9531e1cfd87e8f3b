#include "lut/CUtilLut.h"
#include "lut/Libm.h"
#include "lut/Numeric.h"

using zel::lut::Clamp;
using zel::lut::Pow;
using zel::lut::WeightIndex;

namespace {

constexpr float kPerScale = 0.0009765625f;  // 1/1024
constexpr double kScale = 1024.0;

struct GammaControls {
    float gamma, gain, offset;
};

/// Entry of a group that holds channel c's gamma; gain and offset follow.
constexpr int OwnControls(int group, int channel) { return group + 5 + 5 * channel; }

GammaControls ResolveMaster(const float* params, int channel) {
    const int own = OwnControls(0, channel);
    const float offset = params[3] + params[own + 2];
    return {
        .gamma = Clamp(params[1] + (params[own] - 1.0f), 0.0f, 10.0f),
        .gain = Clamp(params[2] + (params[own + 1] - 1.0f), 0.0f, 10.0f),
        // Deliberate: red is not clamped. docs/quirks.md, "red master offset".
        .offset = channel == 0 ? offset : Clamp(offset, -100.0f, 100.0f),
    };
}

/// `group` is the tonal range's first entry: 20 highlights, 40 midtones, 60 shadows.
GammaControls ResolveRange(const float* params, int group, int channel,
                           const GammaControls& master) {
    const int own = OwnControls(group, channel);
    return {
        .gamma =
            Clamp((params[group + 1] - 1.0f) + (params[own] - 1.0f) + master.gamma, 0.0f, 10.0f),
        .gain =
            Clamp((params[group + 2] - 1.0f) + (params[own + 1] - 1.0f) + master.gain, 0.0f, 10.0f),
        .offset = Clamp(params[group + 3] + params[own + 2] + master.offset, -100.0f, 100.0f),
    };
}

/// Gain and offset, then the power, of one tonal range; unweighted.
float Graded(float v, const GammaControls& range, float white) {
    const float base = (range.gain * v + white * (range.offset / 100.0f)) * kPerScale;
    const float exponent = 1.0f / range.gamma;
    return static_cast<float>(Pow(base, exponent) * kScale);
}

}  // namespace

void CUtilLut::ApplyGamma(float* params) {
    const float white = Clamp(m_fWhiteLevel, 0.0f, 1023.0f);
    const float exponent = 1.0f / (1.0f / (params[0] / 10.0f));
    for (int i = 0; i < kEntries; ++i) {
        for (int c = 0; c < kChannels; ++c) {
            float& entry = m_pLut[c * kEntries + i];
            // Deliberate: the scale is 1024 both ways, the top is the white level.
            const double y = Pow(entry * kPerScale, exponent) * kScale;
            entry = y > white ? white : y < 0.0 ? 0.0f : static_cast<float>(y);
        }
    }
}

void CUtilLut::ApplyGamma2(float* params) {
    const float white = Clamp(m_fWhiteLevel, 0.0f, 1023.0f);
    for (int c = 0; c < kChannels; ++c) {
        const GammaControls master = ResolveMaster(params, c);
        const GammaControls highlights = ResolveRange(params, 20, c, master);
        const GammaControls midtones = ResolveRange(params, 40, c, master);
        const GammaControls shadows = ResolveRange(params, 60, c, master);
        float* const channel = m_pLut + c * kEntries;
        for (int i = 0; i < kEntries; ++i) {
            const float v = channel[i];
            const int k = WeightIndex(v);
            const float sum = Graded(v, highlights, white) * m_highlights[k] +
                              Graded(v, midtones, white) * m_midtones[k] +
                              Graded(v, shadows, white) * m_shadows[k];
            channel[i] = Clamp(sum, 0.0f, white);
        }
    }
}
