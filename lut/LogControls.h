#pragma once

/// What CUtilLut::ApplyLog() resolves from the parameter array, per channel: the four
/// film controls, and from them the constants of the conversion.

namespace zel::lut {

/// Of one channel. NaN parameters give NaN controls.
struct LogControls {
    float black, white;  // reference codes, 0..white level
    float display;       // gamma, 0..5
    float film;          // gamma, 0..5
};

/// True for log to linear. Deliberate: that is the check box "Convert to Linear" off;
/// on, or NaN, converts to log. docs/quirks.md, "log direction".
constexpr bool ConvertsToLinear(const float* params) { return params[0] < 1.0f; }

/// `top` is the white level limited to 0..1023.
LogControls ResolveLog(const float* params, int channel, float top);

/// Constants that map the black reference to 0 and the white reference to `top`.
/// Nothing guards a gamma of 0: a film gamma of 0 makes the density infinite, a
/// display gamma of 0 the gain, and the arithmetic goes on with that.
struct LogConstants {
    float white;         // white reference code
    float density;       // density per code
    double toLinear;     // exponent, log to linear
    float toLog;         // exponent, linear to log
    float gain, offset;  // of linear light
};

LogConstants DeriveLogConstants(const LogControls& controls, float top);

/// One entry, not yet clamped.
float LogToLinear(float v, const LogConstants& k);
float LinearToLog(float v, const LogConstants& k);

}  // namespace zel::lut
