#include "lut/CUtilLut.h"
#include "lut/Libm.h"
#include "lut/Numeric.h"

using zel::lut::Clamp;
using zel::lut::Log10;
using zel::lut::Pow;

namespace {

constexpr float kDensityPerCode = 0.002f;
constexpr float kDisplayDivisor = 1.7f;

/// Everything the conversion of one channel needs, per entry constant.
struct LogConstants {
    float white;         // white reference code
    float density;       // density step per code
    double toLinear;     // exponent, log to linear
    float toLog;         // exponent, linear to log
    float gain, offset;  // map the black reference to 0, the white one to white
};

LogConstants ResolveLog(const float* p, int channel, float top) {
    const int own = 6 + 6 * channel;
    const float black = Clamp(p[own] - 95.0f + p[1], 0.0f, top);
    const float white = Clamp(p[own + 1] - 685.0f + p[2], 0.0f, top);
    const float display = Clamp(p[own + 2] - 1.0f + p[3], 0.0f, 5.0f);
    const float film = Clamp(p[own + 3] - 0.6f + p[4], 0.0f, 5.0f);

    LogConstants k;
    k.white = white;
    k.density = kDensityPerCode / film;
    k.toLinear = display / kDisplayDivisor;
    k.toLog = kDisplayDivisor / display;
    const double range = 1.0 - Pow(Pow(10.0, (black - white) * k.density), k.toLinear);
    k.gain = static_cast<float>(top / range);
    k.offset = k.gain - top;
    return k;
}

float LogToLinear(float v, const LogConstants& k) {
    return static_cast<float>(Pow(Pow(10.0, (v - k.white) * k.density), k.toLinear) * k.gain -
                              k.offset);
}

float LinearToLog(float v, const LogConstants& k) {
    return static_cast<float>(Log10(Pow((k.offset + v) / k.gain, k.toLog)) / k.density + k.white);
}

}  // namespace

void CUtilLut::ApplyLog(float* params) {
    const float top = Clamp(m_fWhiteLevel, 0.0f, 1023.0f);
    // Deliberate: the check box "Convert to Linear" off converts to linear, on (or
    // NaN) to log. docs/quirks.md, "log direction".
    const bool toLinear = params[0] < 1.0f;
    for (int c = 0; c < kChannels; ++c) {
        const LogConstants constants = ResolveLog(params, c, top);
        float* const channel = m_pLut + c * kEntries;
        for (int i = 0; i < kEntries; ++i) {
            const float v = channel[i];
            const float y = toLinear ? LogToLinear(v, constants) : LinearToLog(v, constants);
            channel[i] = Clamp(y, 0.0f, top);
        }
    }
}
