#pragma once

/// Per-pixel work on whole frames that stands between a file and a render: channel
/// order, alpha, scales. Each works in place, row by row.

#include "headless/Frame.h"

#include <array>
#include <cstdint>
#include <cstring>
#include <limits>
#include <type_traits>

namespace zel {

template <class T>
constexpr T Opaque() {
    if constexpr (std::is_floating_point_v<T>)
        return T{1};
    else
        return std::numeric_limits<T>::max();
}

/// Calls fn(T{}) with the sample type of a format.
template <class Fn>
decltype(auto) WithSampleType(SampleType type, Fn fn) {
    switch (type) {
        case SampleType::U8: return fn(std::uint8_t{});
        case SampleType::U16: return fn(std::uint16_t{});
        default: return fn(float{});
    }
}

/// Calls fn(pixel) for every pixel of a frame of samples T; pixel is a
/// std::array<T, 4>& in memory order.
template <class T, class FrameType, class Fn>
void ForEachPixel(FrameType& frame, Fn fn) {
    using Pixel = std::array<T, 4>;
    for (int y = 0; y < frame.Height(); ++y) {
        auto* row = frame.Row(y);
        for (int x = 0; x < frame.Width(); ++x) {
            Pixel pixel;
            auto* at = row + static_cast<std::size_t>(x) * sizeof(Pixel);
            std::memcpy(&pixel, at, sizeof pixel);
            fn(pixel);
            if constexpr (!std::is_const_v<FrameType>) std::memcpy(at, &pixel, sizeof pixel);
        }
    }
}

/// Moves the samples of every pixel to where the frame's format has them: colour k
/// (0 red .. 3 alpha) is taken from position from[k], opaque where that is -1.
void Rearrange(Frame& frame, const std::array<int, 4>& from);

/// A colour times alpha, integers rounded to nearest.
template <class T>
T Multiplied(T colour, T alpha) {
    if constexpr (std::is_floating_point_v<T>)
        return colour * alpha;
    else {
        constexpr std::uint64_t top = std::numeric_limits<T>::max();
        return static_cast<T>((std::uint64_t{colour} * alpha + top / 2) / top);
    }
}

/// Colours divided by alpha; left alone where alpha is 0.
void Unassociate(Frame& frame);

/// Alpha of `source` put into `frame`; both have one format and size.
void CopyAlpha(Frame& frame, const Frame& source);

/// 16-bit samples from the full scale 0..65535 to the editors' 0..32768, and back;
/// rounded to nearest.
void ToEditorScale(Frame& frame);
void FromEditorScale(Frame& frame);

/// Colour samples of a float frame that lie outside 0..1 or are NaN.
std::uint64_t CountOutsideUnit(const Frame& frame);

}  // namespace zel
