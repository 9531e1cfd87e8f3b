#include "lut/BrightnessControls.h"

#include "lut/Numeric.h"

namespace zel::lut {

namespace {

float Percent(float x) { return Clamp(x, -100.0f, 100.0f); }
float Fraction(float x) { return Clamp(x, 0.0f, 1.0f); }

}  // namespace

ToneControls ResolveMasterTone(const float* params, int channel) {
    const float* const all = params + ForAllChannels(kMaster);
    const float* const own = params + ForChannel(kMaster, channel);
    return {
        .brightness = Percent(all[0] + own[0]),
        .contrast = Percent(all[1] + own[1]),
        // The one pivot that counts as it stands; every other is a departure from 0.5.
        .pivot = Fraction((own[2] - 0.5f) + all[2]),
    };
}

ToneControls ResolveRangeTone(const float* params, ToneGroup range, int channel,
                              const ToneControls& master) {
    const float* const all = params + ForAllChannels(range);
    const float* const own = params + ForChannel(range, channel);
    return {
        .brightness = Percent((all[0] + own[0]) + master.brightness),
        .contrast = Percent((all[1] + own[1]) + master.contrast),
        .pivot = Fraction(((own[2] - 0.5f) + (all[2] - 0.5f)) + master.pivot),
    };
}

ToneRanges ResolveTone(const float* params, int channel) {
    const ToneControls master = ResolveMasterTone(params, channel);
    return {
        .highlights = ResolveRangeTone(params, kHighlights, channel, master),
        .midtones = ResolveRangeTone(params, kMidtones, channel, master),
        .shadows = ResolveRangeTone(params, kShadows, channel, master),
    };
}

}  // namespace zel::lut
