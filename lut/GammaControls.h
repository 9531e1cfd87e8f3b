#pragma once

/// The 36 controls, master included, that CUtilLut::ApplyGamma2() resolves from the
/// parameter array: gamma, gain and offset per channel for the master group and for
/// each tonal range, the master already carried into the ranges.

#include "lut/ToneEntries.h"

namespace zel::lut {

/// Of one channel in one group. NaN parameters give NaN controls.
struct GammaControls {
    float gamma;   // 0..10
    float gain;    // 0..10
    float offset;  // percent of white, -100..100; the red master's is not limited
};

/// The master group's own values.
GammaControls ResolveMasterGamma(const float* params, int channel);

/// A tonal range's values with the master's added.
GammaControls ResolveRangeGamma(const float* params, ToneGroup range, int channel,
                                const GammaControls& master);

/// The nine controls of a channel that reach its entries.
struct GammaRanges {
    GammaControls highlights, midtones, shadows;
};

GammaRanges ResolveGamma(const float* params, int channel);

}  // namespace zel::lut
