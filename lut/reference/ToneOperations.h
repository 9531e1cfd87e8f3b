#pragma once

/// Plain forms of the operations that CUtilLut carries out in a faster way. They say
/// what the result is, step by step; tests and benchmarks hold the faster ones against
/// them, bit for bit. Not for production use.
///
///   table       3 x 1024 entries, rewritten in place
///   whiteLevel  any float
///   params      the effect's parameter array
///
/// At least one CUtilLut must have been constructed before: its class holds the tonal
/// weights.

namespace zel::lut::reference {

void ApplyGamma2(float* table, float whiteLevel, const float* params);
void ApplyLog(float* table, float whiteLevel, const float* params);

}  // namespace zel::lut::reference
