#pragma once

/// The one doorway to the power and the logarithm. Always the double functions:
/// the single-precision ones differ between C libraries, while these, narrowed to
/// float, agree.

#include <cmath>

namespace zel::lut {

inline double Pow(double base, double exponent) { return std::pow(base, exponent); }

inline double Log10(double x) { return std::log10(x); }

}  // namespace zel::lut
