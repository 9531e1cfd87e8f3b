#include "lut/CUtilLut.h"
#include "lut/Numeric.h"

#include <algorithm>

using zel::lut::Clamp;
using zel::lut::Truncated;
using zel::lut::WeightIndex;

namespace {

float Percent(float x) { return Clamp(x, -100.0f, 100.0f); }
float Fraction(float x) { return Clamp(x, 0.0f, 1.0f); }

/// Brightness and contrast in percent, pivot as a fraction, of one channel.
struct ToneControls {
    float brightness, contrast, pivot;
};

/// Entries of a group that hold channel c's own controls, counted from the
/// group's first all-channel control.
constexpr int OwnControls(int group, int channel) { return group + 4 + 5 * channel; }

ToneControls ResolveMaster(const float* params, int channel) {
    const int own = OwnControls(1, channel);
    return {
        .brightness = Percent(params[1] + params[own]),
        .contrast = Percent(params[2] + params[own + 1]),
        // Deliberate: the all-channel pivot counts as it stands, the channel's own as
        // an offset from 0.5.
        .pivot = Fraction((params[own + 2] - 0.5f) + params[3]),
    };
}

/// `group` is the entry of the tonal range's all-channel brightness.
ToneControls ResolveRange(const float* params, int group, int channel, const ToneControls& master) {
    const int own = OwnControls(group, channel);
    return {
        .brightness = Percent((params[group] + params[own]) + master.brightness),
        .contrast = Percent((params[group + 1] + params[own + 1]) + master.contrast),
        .pivot = Fraction(((params[own + 2] - 0.5f) + (params[group + 2] - 0.5f)) + master.pivot),
    };
}

/// Deliberate: clamps to the constant 1023, not to the white level.
float ClampToCodes(float v) { return v < 0.0f ? 0.0f : v > 1023.0f ? 1023.0f : v; }

}  // namespace

float CUtilLut::ContrastFunction(float x, float contrast, float pivot) {
    const float white = m_fWhiteLevel;
    const float c = 0.01f * contrast;

    if (c == 0.0f) return x;
    if (c > 0.0f && c < 1.0f) {
        // With pivot 0 the slope below is 0 / 0; the curve is a threshold at white.
        if (pivot == 0.0f) return x > white ? white : 0.0f;
        const float lo = c * pivot;
        const float slope = pivot / (pivot - lo);
        const float hi = white / slope + lo;
        if (x <= lo) return 0.0f;
        if (x < hi) return (x - lo) * slope;
        return white;
    }
    if (c == 1.0f) return x < pivot ? 0.0f : white;
    if (c > 1.0f) return 0.0f;
    if (c > -1.0f) {
        const float k = -c;
        return ((pivot - k * pivot) / pivot) * x + k * pivot;
    }
    if (c == -1.0f) return pivot;
    return 0.0f;
}

void CUtilLut::ApplyBrightness(float* params) {
    const float contrast = params[1] / 100.0f;
    const float offset = ((params[0] / 100.0f) / 2.5f) * 0.01f;
    const float pivot = std::min(m_fWhiteLevel, 511.5f);
    for (int i = 0; i < kEntries; ++i) {
        for (int c = 0; c < kChannels; ++c) {
            float& entry = m_pLut[c * kEntries + i];
            const float lift = offset * m_fWhiteLevel;
            // A steepening curve is entered with the brightness already added.
            entry = contrast > 0.0f ? ClampToCodes(ContrastFunction(entry + lift, contrast, pivot))
                                    : ClampToCodes(ContrastFunction(entry, contrast, pivot) + lift);
        }
    }
}

void CUtilLut::ApplyBrightness2(float* params) {
    const float white = m_fWhiteLevel;
    const float top = Clamp(m_fWhiteLevel, 0.0f, 1023.0f);
    for (int c = 0; c < kChannels; ++c) {
        const ToneControls master = ResolveMaster(params, c);
        const ToneControls highlights = ResolveRange(params, 21, c, master);
        const ToneControls midtones = ResolveRange(params, 41, c, master);
        const ToneControls shadows = ResolveRange(params, 61, c, master);
        float* const channel = m_pLut + c * kEntries;
        for (int i = 0; i < kEntries; ++i) {
            const float t = channel[i];
            const int k = WeightIndex(t);
            const auto brightened = [=](const ToneControls& range) {
                return t + 0.01f * range.brightness * white;
            };
            const float sum = brightened(highlights) * m_highlights[k] +
                              brightened(midtones) * m_midtones[k] +
                              brightened(shadows) * m_shadows[k];
            // Deliberate: truncated to whole codes between the passes, and the
            // contrast weights are looked up at the brightened value.
            const float v = std::min(static_cast<float>(std::max(Truncated(sum), 0)), top);
            const int j = WeightIndex(v);
            const auto contrasted = [=, this](const ToneControls& range) {
                return ContrastFunction(v, range.contrast, range.pivot);
            };
            const float result = contrasted(highlights) * m_highlights[j] +
                                 contrasted(midtones) * m_midtones[j] +
                                 contrasted(shadows) * m_shadows[j];
            channel[i] = Clamp(result, 0.0f, top);
        }
    }
}
