#pragma once

/// The verbs of the program; each is defined in the file of its name.

#include "cli/Options.h"

namespace zel {

Verb ListVerb();
Verb DescribeVerb();
Verb RenderVerb();
Verb CurveVerb();
Verb ExportVerb();
Verb CompareVerb();
Verb ScopeVerb();
Verb VerifyVerb();
Verb ProbeVerb();
Verb ConvertVerb();
Verb PatternVerb();
Verb PlaceVerb();
Verb InfoVerb();
Verb CompletionVerb();
Verb ManVerb();

/// All of them, in the order in which help lists them.
std::span<const Verb> AllVerbs();

}  // namespace zel
