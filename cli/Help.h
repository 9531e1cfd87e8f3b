#pragma once

/// The help texts, written from the verbs' tables for a terminal of 80 columns.

#include "cli/Options.h"

#include <span>
#include <string>

namespace zel {

/// What `zelfx --help` prints.
std::string HelpOf(std::span<const Verb> verbs);

/// What `zelfx VERB --help` prints.
std::string HelpOf(const Verb& verb);

/// "zelfx convert IN OUT --from LAYOUT [options]": what cannot be left out is named.
std::string UsageOf(const Verb& verb);

/// "-o, --output FILE", as help and manual show it.
std::string SignatureOf(const Option& option);

}  // namespace zel
