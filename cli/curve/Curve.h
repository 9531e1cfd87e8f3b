#pragma once

/// The transfer curve of an effect's setting: what every input code becomes.

#include "headless/EffectSession.h"

#include <array>
#include <optional>
#include <string>
#include <vector>

namespace zel {

inline constexpr int kCurveCodes = 1024;
inline constexpr std::array<const char*, 3> kChannelNames{"red", "green", "blue"};

struct Curve {
    /// Output code of every input code, 0..1023; NaN where the effect has none.
    std::array<std::array<float, kCurveCodes>, 3> channel;
    bool exact = false;  // whole codes, as the module renders them
};

/// The float tables, before any export: the effect's own class builds them. Throws
/// Error(Module) for an effect that is none of ours.
Curve FloatCurve(const EffectSession& session, const ParameterValues& values);

/// The codes that the module produces: a ramp of all codes, rendered in 16 bits.
Curve ExactCurve(const EffectSession& session, const ParameterValues& values);

/// One of the engine's tone operations, by its name in CUtilLut ("ApplyInvert"), some
/// of which no effect calls.
using OperationParams = std::array<float, 128>;
bool IsOperation(const std::string& name);
Curve OperationCurve(const std::string& name, OperationParams params);

/// A run of input codes, both ends included.
struct CodeRun {
    int first, last;
};

/// Input codes that come out at one end of the scale although they are not that end
/// themselves: what the curve throws away. A single code at an end is no clipping.
std::vector<CodeRun> ClippedRuns(const Curve& curve, int channel, float end);

/// Input codes without a result.
std::vector<CodeRun> NaNRuns(const Curve& curve, int channel);

/// "red 0-94; green 0-94" for the channels that have such runs; empty for none.
std::string Describe(const Curve& curve, std::vector<CodeRun> (*runs)(const Curve&, int));
std::vector<CodeRun> ClippedLow(const Curve& curve, int channel);
std::vector<CodeRun> ClippedHigh(const Curve& curve, int channel);

/// Black and white reference code of each channel, for an effect that converts
/// between film log codes and linear light.
struct LogReferences {
    std::array<float, 3> black, white;
    bool onOutput;  // the codes are those of the output: linear to log
};

std::optional<LogReferences> ReferencesOf(const EffectSession& session,
                                          const ParameterValues& values);

}  // namespace zel
