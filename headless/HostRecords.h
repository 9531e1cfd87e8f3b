#pragma once

/// What a module sees of its host: callbacks, suites and the frame records. Static
/// tables without state of their own, so any number of sessions and threads can
/// share them.

#include "abi/HostTypes.h"
#include "abi/PixelFormats.h"
#include "abi/Suites.h"
#include "headless/Parameters.h"

#include <vector>

namespace zel {

enum class Personality { Premiere, AfterEffects };

/// What the module registers during set-up; `effect_ref` points to it.
struct Registration {
    Parameters parameters;
    std::vector<PrPixelFormat> formats;  // declared to Premiere
};

/// A frame record together with its pixel format, which Premiere's suite tells but
/// the record itself does not. The record comes first: the module hands its address
/// back.
struct HostWorld {
    PF_LayerDef layer;
    PrPixelFormat format;
};

/// Records for a command: everything that does not depend on parameters or frames.
PF_InData MakeInData(Personality personality, Registration& registration);

}  // namespace zel
