#pragma once

/// The heap as the engine sees it: a count of the curve tables alive, and allocations
/// that fail on request. The program is linked with --wrap=malloc and --wrap=free.

namespace zel::test {

/// Tables that have been allocated and not yet released.
int LiveCurves();

/// While one of these exists, no table can be allocated.
struct NoMemoryForCurves {
    NoMemoryForCurves();
    ~NoMemoryForCurves();
};

}  // namespace zel::test
