#include "lut/BrightnessControls.h"
#include "lut/CUtilLut.h"
#include "lut/Numeric.h"

#include <algorithm>

using zel::lut::Clamp;
using zel::lut::ResolveTone;
using zel::lut::ToneControls;
using zel::lut::ToneRanges;
using zel::lut::Truncated;
using zel::lut::WeightIndex;

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
    const float white = m_fWhiteLevel;
    const float contrast = params[1] / 100.0f;
    const float lift = (((params[0] / 100.0f) / 2.5f) * 0.01f) * white;
    const float pivot = std::min(white, 511.5f);
    // Deliberate: a steepening curve is entered with the brightness already added, a
    // flattening one gets it afterwards. docs/quirks.md, "brightness and contrast order".
    const bool brightnessFirst = contrast > 0.0f;
    for (int i = 0; i < kChannels * kEntries; ++i) {
        const float t = m_pLut[i];
        const float v = brightnessFirst ? ContrastFunction(t + lift, contrast, pivot)
                                        : ContrastFunction(t, contrast, pivot) + lift;
        // Deliberate: the top is 1023, not the white level. docs/quirks.md, "constant 1023".
        m_pLut[i] = Clamp(v, 0.0f, 1023.0f);
    }
}

void CUtilLut::ApplyBrightness2(float* params) {
    const float white = m_fWhiteLevel;
    const float top = Clamp(white, 0.0f, 1023.0f);
    for (int c = 0; c < kChannels; ++c) {
        const ToneRanges ranges = ResolveTone(params, c);
        const auto& [highlights, midtones, shadows] = ranges;
        float* const channel = m_pLut + c * kEntries;
        for (int i = 0; i < kEntries; ++i) {
            const float t = channel[i];
            const int k = WeightIndex(t);
            const auto brightened = [&](const ToneControls& range) {
                return t + 0.01f * range.brightness * white;
            };
            const float sum = brightened(highlights) * m_highlights[k] +
                              brightened(midtones) * m_midtones[k] +
                              brightened(shadows) * m_shadows[k];

            // Deliberate: whole codes between the two passes, so that a NaN entry ends
            // here as 0, and the contrast weights are those of the brightened value.
            // docs/quirks.md, "whole codes in brightness".
            const float v = std::min(static_cast<float>(std::max(Truncated(sum), 0)), top);
            const int j = WeightIndex(v);
            // Deliberate: the pivot is the fraction 0..1 itself, a code near black.
            // docs/quirks.md, "pivot near black".
            const auto contrasted = [&](const ToneControls& range) {
                return ContrastFunction(v, range.contrast, range.pivot);
            };
            const float result = contrasted(highlights) * m_highlights[j] +
                                 contrasted(midtones) * m_midtones[j] +
                                 contrasted(shadows) * m_shadows[j];
            channel[i] = Clamp(result, 0.0f, top);
        }
    }
}
