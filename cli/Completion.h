#pragma once

/// Completion scripts for shells, written from the verbs' tables. They ask the program
/// itself for the names of effects and parameters.

#include "cli/Options.h"

#include <span>
#include <string>

namespace zel {

std::string BashCompletion(std::span<const Verb> verbs);
std::string ZshCompletion(std::span<const Verb> verbs);

}  // namespace zel
