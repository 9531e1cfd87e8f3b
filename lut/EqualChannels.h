#pragma once

/// Builds a curve only once for channels that would come out the same.

#include "lut/CUtilLut.h"

#include <cstddef>
#include <cstring>
#include <type_traits>

namespace zel::lut {

/// Records of floats, compared by their bits: NaN equals itself and -0 is not 0, so
/// equal records give equal results.
template <class Record>
bool SameBits(const Record& a, const Record& b) {
    static_assert(std::is_trivially_copyable_v<Record> && sizeof(Record) % sizeof(float) == 0);
    return std::memcmp(&a, &b, sizeof(Record)) == 0;
}

/// Calls shape(entries, controls) for each channel of `table` (3 x 1024 entries, shaped
/// in place), but copies the result where an earlier channel has the same controls and
/// the same entries. `shape` depends on nothing else.
template <class Controls, class Shape>
void ShapeChannels(float* table, const Controls (&controls)[CUtilLut::kChannels], Shape shape) {
    constexpr std::size_t kChannelBytes = CUtilLut::kEntries * sizeof(float);
    const auto entries = [table](int c) { return table + c * CUtilLut::kEntries; };

    const auto same = [&](int a, int b) {
        return SameBits(controls[a], controls[b]) &&
               std::memcmp(entries(a), entries(b), kChannelBytes) == 0;
    };

    // The first channel like each one, decided before any of them changes.
    const int model[] = {0, same(0, 1) ? 0 : 1, same(0, 2) ? 0 : same(1, 2) ? 1 : 2};
    for (int c = 0; c < CUtilLut::kChannels; ++c) {
        if (model[c] == c)
            shape(entries(c), controls[c]);
        else
            std::memcpy(entries(c), entries(model[c]), kChannelBytes);
    }
}

}  // namespace zel::lut
