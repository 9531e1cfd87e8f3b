#pragma once

/// The instruction sets that routines may use.

#include "cli/Options.h"
#include "cli/Words.h"

namespace zel {

// clang-format off
inline constexpr Option kCpuOption =
    {"--cpu", "LEVEL", "highest instruction set: see 'zelfx info'", Option::Optional, CpuWords};
// clang-format on

/// Chooses the level for this program and for the modules that it sets up: --cpu, else
/// ZELFX_CPU, else all that there is. Throws Error(Usage) for a level that this processor
/// or this build does not have.
void ChooseCpuLevel(const Arguments& arguments);

}  // namespace zel
