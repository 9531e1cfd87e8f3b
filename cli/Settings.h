#pragma once

/// Options that set parameters, and what the program knows about parameters beyond
/// what a module registers.

#include "cli/Options.h"
#include "headless/Parameters.h"

#include <optional>
#include <string>

namespace zel {

/// Puts --set, --log-to-linear and --linear-to-log into `values`. Throws Error(Usage).
void ApplySettings(const Arguments& arguments, ParameterValues& values);

/// True when the effect would be handed its default.
bool IsDefault(const ParameterValues& values, const Parameter& parameter);

/// What a parameter's states do, where its label does not say so; empty otherwise.
std::string PlainWords(const Parameter& parameter);

/// "log to linear (the check box is off)": for an effect that converts in one of two
/// directions; null for another.
std::optional<std::string> DirectionOf(const ParameterValues& values);

}  // namespace zel
