#include "lut/GammaControls.h"

#include "lut/Numeric.h"

namespace zel::lut {

namespace {

/// Gamma or gain.
float Factor(float x) { return Clamp(x, 0.0f, 10.0f); }
float Percent(float x) { return Clamp(x, -100.0f, 100.0f); }

}  // namespace

GammaControls ResolveMasterGamma(const float* params, int channel) {
    const float* const all = params + ForAllChannels(kMaster);
    const float* const own = params + ForChannel(kMaster, channel);
    const float offset = all[2] + own[2];
    return {
        .gamma = Factor(all[0] + (own[0] - 1.0f)),
        .gain = Factor(all[1] + (own[1] - 1.0f)),
        // Deliberate: red may reach +-200 where green and blue stop at +-100.
        // docs/quirks.md, "red master offset".
        .offset = channel == 0 ? offset : Percent(offset),
    };
}

GammaControls ResolveRangeGamma(const float* params, ToneGroup range, int channel,
                                const GammaControls& master) {
    const float* const all = params + ForAllChannels(range);
    const float* const own = params + ForChannel(range, channel);
    return {
        .gamma = Factor((all[0] - 1.0f) + (own[0] - 1.0f) + master.gamma),
        .gain = Factor((all[1] - 1.0f) + (own[1] - 1.0f) + master.gain),
        .offset = Percent(all[2] + own[2] + master.offset),
    };
}

GammaRanges ResolveGamma(const float* params, int channel) {
    const GammaControls master = ResolveMasterGamma(params, channel);
    return {
        .highlights = ResolveRangeGamma(params, kHighlights, channel, master),
        .midtones = ResolveRangeGamma(params, kMidtones, channel, master),
        .shadows = ResolveRangeGamma(params, kShadows, channel, master),
    };
}

}  // namespace zel::lut
