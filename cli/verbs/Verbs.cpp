#include "cli/verbs/Verbs.h"

namespace zel {

std::span<const Verb> AllVerbs() {
    // clang-format off
    static const Verb verbs[] = {
        ListVerb(),
        DescribeVerb(),
        RenderVerb(),
        CurveVerb(),
        ExportVerb(),
        CompareVerb(),
        VerifyVerb(),
        ScopeVerb(),
        ProbeVerb(),
        ConvertVerb(),
        PatternVerb(),
        PlaceVerb(),
        InfoVerb(),
        CompletionVerb(),
        ManVerb(),
    };
    // clang-format on
    return verbs;
}

}  // namespace zel
