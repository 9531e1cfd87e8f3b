#pragma once

/// Options that keep a failing effect from taking the program with it.

#include "cli/Options.h"
#include "headless/Isolation.h"

#include <optional>

namespace zel {

// clang-format off
inline constexpr Option kIsolateOption     {"--isolate",         nullptr,   "run effects in processes of their own"};
inline constexpr Option kIsolateLimitOption{"--isolate-timeout", "S",       "seconds that a command may take then (default: 60)"};
// clang-format on

/// Null unless --isolate was given. Throws Error(Usage).
std::optional<Isolation> IsolationFrom(const Arguments& arguments);

}  // namespace zel
