#include "lut/CUtilLut.h"
#include "lut/EqualChannels.h"
#include "lut/GammaControls.h"
#include "lut/Libm.h"
#include "lut/Numeric.h"

using zel::lut::Clamp;
using zel::lut::GammaControls;
using zel::lut::GammaRanges;
using zel::lut::Pow;
using zel::lut::ResolveGamma;
using zel::lut::SameBits;
using zel::lut::ShapeChannels;
using zel::lut::WeightIndex;

namespace {

constexpr float kPerScale = 0.0009765625f;  // 1/1024
constexpr double kScale = 1024.0;

/// What one tonal range does to an entry, apart from its weight.
struct Grade {
    float gain, lift, exponent;
};

struct Grades {
    Grade highlights, midtones, shadows;
};

Grade GradeOf(const GammaControls& range, float white) {
    return {
        .gain = range.gain,
        .lift = white * (range.offset / 100.0f),
        .exponent = 1.0f / range.gamma,
    };
}

float Graded(float v, const Grade& grade) {
    const float base = (grade.gain * v + grade.lift) * kPerScale;
    // The first power of any base, NaN and -0 included, is the base itself.
    const double power = grade.exponent == 1.0f ? base : Pow(base, grade.exponent);
    return static_cast<float>(power * kScale);
}

/// The same values as zel::lut::reference::ApplyGamma2(), but a power of 1 is skipped
/// and ranges with the same grade share theirs.
void GradeChannel(float* entries, const Grades& grades, float white) {
    const auto& [highlights, midtones, shadows] = grades;
    const bool midtonesAsHighlights = SameBits(midtones, highlights);
    const bool shadowsAsHighlights = SameBits(shadows, highlights);
    const bool shadowsAsMidtones = SameBits(shadows, midtones);
    for (int i = 0; i < CUtilLut::kEntries; ++i) {
        const float v = entries[i];
        const int k = WeightIndex(v);
        const float h = Graded(v, highlights);
        const float m = midtonesAsHighlights ? h : Graded(v, midtones);
        const float s = shadowsAsHighlights ? h : shadowsAsMidtones ? m : Graded(v, shadows);
        const float sum = h * CUtilLut::m_highlights[k] + m * CUtilLut::m_midtones[k] +
                          s * CUtilLut::m_shadows[k];
        entries[i] = Clamp(sum, 0.0f, white);
    }
}

}  // namespace

void CUtilLut::ApplyGamma(float* params) {
    const float white = Clamp(m_fWhiteLevel, 0.0f, 1023.0f);
    const float exponent = 1.0f / (1.0f / (params[0] / 10.0f));
    for (int i = 0; i < kEntries; ++i) {
        for (int c = 0; c < kChannels; ++c) {
            float& entry = m_pLut[c * kEntries + i];
            // Deliberate: the scale is 1024 both ways, the top is the white level.
            // docs/quirks.md, "gamma scale".
            const double y = Pow(entry * kPerScale, exponent) * kScale;
            // Clamped before it is narrowed: between 0.0f and a narrowed double, clang
            // chooses by "at most 0", which would take the sign off -0.
            entry = static_cast<float>(Clamp(y, 0.0, double{white}));
        }
    }
}

void CUtilLut::ApplyGamma2(float* params) {
    const float white = Clamp(m_fWhiteLevel, 0.0f, 1023.0f);
    Grades grades[kChannels];
    for (int c = 0; c < kChannels; ++c) {
        const GammaRanges ranges = ResolveGamma(params, c);
        grades[c] = {GradeOf(ranges.highlights, white), GradeOf(ranges.midtones, white),
                     GradeOf(ranges.shadows, white)};
    }
    ShapeChannels(m_pLut, grades, [white](float* entries, const Grades& channel) {
        GradeChannel(entries, channel, white);
    });
}
