#pragma once

/// A curve at the points of a 3D table, where every edge is the same axis.

#include "cli/curve/Curve.h"

namespace zel {

/// What the curve gives at point `point` of `size` along channel `channel`, on the scale
/// 0..1: float curves interpolated, exact ones at the code that the module would look up.
double CubePoint(const Curve& curve, int channel, int point, int size);

/// An entry on the scale 0..1, 0 when it is no number.
double UnitOf(float code);

}  // namespace zel
