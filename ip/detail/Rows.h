#pragma once

/// Walking the rows of frames: the one row loop of the library.

#include <cstddef>

namespace zel::ip {

/// The rows of a frame: address of row 0 and the signed bytes to the next.
struct Rows {
    std::byte* row0;
    std::ptrdiff_t stride;

    Rows(void* base, std::ptrdiff_t rowBytes)
        : row0(static_cast<std::byte*>(base)), stride(rowBytes) {}

    std::byte* operator[](std::ptrdiff_t row) const { return row0 + row * stride; }
};

/// The same rows counted upwards in memory: with a negative stride, row 0 of the
/// result is the frame's last row.
inline Rows Upwards(Rows rows, int height) {
    if (rows.stride >= 0 || height <= 0) return rows;
    return {rows[height - 1], -rows.stride};
}

/// Calls fn(row of a, row of b, ...) for rows 0 .. height - 1, in order.
template <class Fn, class... R>
void ForEachRow(int height, Fn fn, R... rows) {
    for (int r = 0; r < height; ++r) fn(rows[r]...);
}

}  // namespace zel::ip
