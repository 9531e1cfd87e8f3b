#pragma once

/// Repeating one storage unit (a pixel, a pair, a group) along a row.

#include "ip/detail/Memory.h"

namespace zel::ip {

/// Stores `unit` `count` times, from unit `start` of the row on; count <= 0 stores
/// nothing.
template <class Unit>
void FillUnits(void* scan, std::ptrdiff_t start, std::ptrdiff_t count, const Unit& unit) {
    for (std::ptrdiff_t i = 0; i < count; ++i) StoreAt(scan, start + i, unit);
}

}  // namespace zel::ip
