#pragma once

/// A module with its parameters set, and the curve that they ask for.

#include "tests/host/Modules.h"
#include "tests/host/Pixels.h"

#include <random>
#include <vector>

namespace zel::test {

/// The host formats that a personality can hand over.
std::vector<FrameFormat> FormatsOf(bool premiere);

class GradedModule : public EachModule {
protected:
    ParamList params{Start()};

    PF_WorldFlags FlagsFor(const FrameFormat& format) const {
        // Reserved bits are set: only bit 0 may count.
        return static_cast<PF_WorldFlags>(0x7F000000) | PF_WorldFlag_WRITEABLE |
               (format.channelBytes == 2 ? PF_WorldFlag_DEEP : 0);
    }

    /// Sets every slider to a value of its range and every check box to 0 or 1.
    void Grade(std::mt19937& random);

    /// The curve of the present parameters, by the engine linked into this program.
    Curve EngineCurve();
};

}  // namespace zel::test
