#pragma once

/// The curve of several effects in a row.

#include "cli/Chain.h"
#include "cli/curve/Curve.h"

namespace zel {

/// Linear interpolation between the entries of a channel; the code is limited to
/// 0..1023. NaN where the code or an entry beside it is none.
float ValueAt(const std::array<float, kCurveCodes>& table, float code);

/// What `then` makes of the codes of `first`: ValueAt(), which for exact curves, whose
/// codes are whole, is the look-up that the modules do in 16 bits.
Curve Composed(const Curve& first, const Curve& then);

/// The curve of the whole chain, in floats or in the modules' codes.
Curve CurveOf(const Chain& chain, bool exact);

}  // namespace zel
