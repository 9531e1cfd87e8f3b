#pragma once

/// Walking the storage units (pixels, pairs, groups, words) of a row.

#include "ip/detail/Memory.h"
#include "ip/detail/Rows.h"

namespace zel::ip {

/// Units of type Unit without gaps, from unit `start` of a row on.
template <class Unit>
Units UnitsOf(void* scan, std::ptrdiff_t start = 0) {
    return {At<Unit>(scan, start), sizeof(Unit)};
}

/// Stores `unit` `count` times, from unit `start` of the row on; count <= 0 stores
/// nothing.
template <class Unit>
void FillUnits(void* scan, std::ptrdiff_t start, std::ptrdiff_t count, const Unit& unit) {
    ForEach(
        count, [&](void* to) { Store(to, unit); }, UnitsOf<Unit>(scan, start));
}

/// Reads `count` units of type From and stores what `fn` makes of each.
template <class From, class Fn>
void MapUnits(void* dst, void* src, std::ptrdiff_t count, Fn fn) {
    using To = decltype(fn(Load<From>(src)));
    ForEach(
        count, [&](void* to, void* from) { Store(to, fn(Load<From>(from))); }, UnitsOf<To>(dst),
        UnitsOf<From>(src));
}

}  // namespace zel::ip
