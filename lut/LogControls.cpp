#include "lut/LogControls.h"

#include "lut/Libm.h"
#include "lut/Numeric.h"

namespace zel::lut {

namespace {

constexpr float kDensityPerCode = 0.002f;
constexpr float kDisplayDivisor = 1.7f;

}  // namespace

LogControls ResolveLog(const float* params, int channel, float top) {
    const float* const all = params + 1;
    const float* const own = params + 6 + 6 * channel;
    // A channel's own control counts by its departure from its default.
    return {
        .black = Clamp(own[0] - 95.0f + all[0], 0.0f, top),
        .white = Clamp(own[1] - 685.0f + all[1], 0.0f, top),
        .display = Clamp(own[2] - 1.0f + all[2], 0.0f, 5.0f),
        .film = Clamp(own[3] - 0.6f + all[3], 0.0f, 5.0f),
    };
}

LogConstants DeriveLogConstants(const LogControls& controls, float top) {
    const float density = kDensityPerCode / controls.film;
    const float toLinear = controls.display / kDisplayDivisor;
    const float blackDensity = (controls.black - controls.white) * density;
    const double span = 1.0 - Pow(Pow(10.0, blackDensity), toLinear);
    const float gain = static_cast<float>(top / span);
    return {
        .white = controls.white,
        .density = density,
        .toLinear = toLinear,
        .toLog = kDisplayDivisor / controls.display,
        .gain = gain,
        .offset = gain - top,
    };
}

float LogToLinear(float v, const LogConstants& k) {
    const float density = (v - k.white) * k.density;
    const double light = Pow(Pow(10.0, density), k.toLinear);
    return static_cast<float>(light * k.gain - k.offset);
}

float LinearToLog(float v, const LogConstants& k) {
    const float light = (k.offset + v) / k.gain;
    const double density = Log10(Pow(light, k.toLog));
    return static_cast<float>(density / k.density + k.white);
}

}  // namespace zel::lut
