#pragma once

/// The nine controls per channel that CUtilLut::ApplyBrightness2() works with,
/// resolved from the parameter array: brightness, contrast and pivot of each tonal
/// range, the master group already carried into them.

#include "lut/ToneEntries.h"

namespace zel::lut {

/// Of one channel in one group. NaN parameters give NaN controls.
struct ToneControls {
    float brightness;  // percent, -100..100
    float contrast;    // percent, -100..100
    float pivot;       // 0..1
};

/// The master group's own values.
ToneControls ResolveMasterTone(const float* params, int channel);

/// A tonal range's values with the master's added.
ToneControls ResolveRangeTone(const float* params, ToneGroup range, int channel,
                              const ToneControls& master);

/// All nine controls of a channel.
struct ToneRanges {
    ToneControls highlights, midtones, shadows;
};

ToneRanges ResolveTone(const float* params, int channel);

}  // namespace zel::lut
