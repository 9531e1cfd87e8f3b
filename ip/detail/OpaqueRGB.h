#pragma once

/// RGB8 rows and frames into four-channel layouts, with alpha 255.

#include "ip/detail/Layouts.h"
#include "ip/detail/Rows.h"

namespace zel::ip {

template <Order To>
void OpaqueRow(void* dst, void* src, int width) {
    const auto copy = [](std::byte* to, const std::byte* from) {
        to[To.r] = from[kRGB.r];
        to[To.g] = from[kRGB.g];
        to[To.b] = from[kRGB.b];
        to[To.a] = std::byte{255};
    };
    ForEach(width, copy, Units{dst, To.elements}, Units{src, kRGB.elements});
}

/// Rows correspond by number, whatever the signs of their steps.
template <Order To>
void OpaqueFrame(Rows dst, Rows src, int width, int height) {
    ForEach(
        height, [=](void* to, void* from) { OpaqueRow<To>(to, from, width); }, dst, src);
}

}  // namespace zel::ip
