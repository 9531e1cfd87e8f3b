#pragma once

/// Renders through the effects for a long time in one process, with an eye on its memory.

#include <functional>

namespace zel::test {

struct LongRunReport {
    long settledKiB;  // largest resident memory in the first half, after a warm-up
    long largestKiB;  // in the second half
    long wrong;       // renders that were not as the first one of their kind

    /// Pages come and go; a kibibyte lost per render shows after some thousands.
    bool IsConstant() const {
        return largestKiB <= settledKiB + 1024;
    }  // the heap breathes by half that
};

/// Sizes, formats, effects and hosts alternate from render to render, and every so often
/// the modules are unloaded and loaded again. `progress` gets renders done and KiB, ten
/// times.
LongRunReport RunLong(long renders, const std::function<void(long, long)>& progress);

}  // namespace zel::test
