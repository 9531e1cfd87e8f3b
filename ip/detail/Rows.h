#pragma once

/// Walking memory in equal steps: the rows of a frame, the units of a row. Every
/// routine of the library walks through the one loop here.

#include <cstddef>

namespace zel::ip {

/// Equally spaced places in memory; `step` is in bytes and signed.
struct Steps {
    std::byte* first;
    std::ptrdiff_t step;

    Steps(void* place0, std::ptrdiff_t bytes)
        : first(static_cast<std::byte*>(place0)), step(bytes) {}

    std::byte* operator[](std::ptrdiff_t i) const { return first + i * step; }
};

using Rows = Steps;   // of a frame: address of row 0, bytes to the next row
using Units = Steps;  // of a row: pixels, pairs, groups or words

/// Beside Steps, hands a walk the number of the row or unit.
struct Numbers {
    std::ptrdiff_t operator[](std::ptrdiff_t i) const { return i; }
};

/// Calls fn(place of a, place of b, ...) for places 0 .. count - 1, in order.
template <class Fn, class... S>
void ForEach(std::ptrdiff_t count, Fn fn, S... steps) {
    for (std::ptrdiff_t i = 0; i < count; ++i) fn(steps[i]...);
}

/// The same rows counted upwards in memory: with a negative step, row 0 of the
/// result is the frame's last row.
inline Rows Upwards(Rows rows, int height) {
    if (rows.step >= 0 || height <= 0) return rows;
    return {rows[height - 1], -rows.step};
}

}  // namespace zel::ip
