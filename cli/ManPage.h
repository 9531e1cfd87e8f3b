#pragma once

/// The manual page zelfx(1), written from the verbs' tables.

#include "cli/Options.h"

#include <span>
#include <string>

namespace zel {

std::string ManPage(std::span<const Verb> verbs);

}  // namespace zel
