#include "lut/reference/ToneOperations.h"

#include "lut/CUtilLut.h"
#include "lut/GammaControls.h"
#include "lut/Libm.h"
#include "lut/LogControls.h"
#include "lut/Numeric.h"

namespace zel::lut::reference {

namespace {

/// Gain and offset, then the power, of one tonal range; unweighted.
float Graded(float v, const GammaControls& range, float white) {
    const float base = (range.gain * v + white * (range.offset / 100.0f)) * 0.0009765625f;
    const float exponent = 1.0f / range.gamma;
    return static_cast<float>(Pow(base, exponent) * 1024.0);
}

}  // namespace

void ApplyGamma2(float* table, float whiteLevel, const float* params) {
    const float white = Clamp(whiteLevel, 0.0f, 1023.0f);
    for (int c = 0; c < CUtilLut::kChannels; ++c) {
        const GammaRanges ranges = ResolveGamma(params, c);
        for (int i = 0; i < CUtilLut::kEntries; ++i) {
            float& entry = table[c * CUtilLut::kEntries + i];
            const float v = entry;
            const int k = WeightIndex(v);
            const float highlights =
                Graded(v, ranges.highlights, white) * CUtilLut::m_highlights[k];
            const float midtones = Graded(v, ranges.midtones, white) * CUtilLut::m_midtones[k];
            const float shadows = Graded(v, ranges.shadows, white) * CUtilLut::m_shadows[k];
            entry = Clamp((highlights + midtones) + shadows, 0.0f, white);
        }
    }
}

void ApplyLog(float* table, float whiteLevel, const float* params) {
    const float top = Clamp(whiteLevel, 0.0f, 1023.0f);
    for (int c = 0; c < CUtilLut::kChannels; ++c) {
        const LogConstants constants = DeriveLogConstants(ResolveLog(params, c, top), top);
        for (int i = 0; i < CUtilLut::kEntries; ++i) {
            float& entry = table[c * CUtilLut::kEntries + i];
            const float y = ConvertsToLinear(params) ? LogToLinear(entry, constants)
                                                     : LinearToLog(entry, constants);
            entry = Clamp(y, 0.0f, top);
        }
    }
}

}  // namespace zel::lut::reference
