#include "cli/picture/Pixels.h"

#include <algorithm>
#include <cmath>

namespace zel {

namespace {

std::size_t Index(int element) { return static_cast<std::size_t>(element); }

/// Applies `fn` to every sample of a 16-bit frame.
template <class Fn>
void MapShorts(Frame& frame, Fn fn) {
    ForEachPixel<std::uint16_t>(
        frame, [&](auto& pixel) { std::ranges::transform(pixel, pixel.begin(), fn); });
}

template <class T>
T Divided(T colour, T alpha) {
    if constexpr (std::is_floating_point_v<T>)
        return colour / alpha;
    else {
        const std::uint64_t top = std::numeric_limits<T>::max();
        return static_cast<T>(std::min((colour * top + alpha / 2u) / alpha, top));
    }
}

}  // namespace

void Rearrange(Frame& frame, const std::array<int, 4>& from) {
    const auto to = frame.Format().element;
    WithSampleType(frame.Format().sample, [&](auto type) {
        using T = decltype(type);
        ForEachPixel<T>(frame, [&](auto& pixel) {
            const auto read = pixel;
            for (std::size_t k = 0; k < 4; ++k)
                pixel[Index(to[k])] = from[k] < 0 ? Opaque<T>() : read[Index(from[k])];
        });
    });
}

void Unassociate(Frame& frame) {
    const auto element = frame.Format().element;
    WithSampleType(frame.Format().sample, [&](auto type) {
        using T = decltype(type);
        ForEachPixel<T>(frame, [&](auto& pixel) {
            const T alpha = pixel[Index(element[3])];
            if (!(alpha > 0)) return;
            for (std::size_t k = 0; k < 3; ++k) {
                T& colour = pixel[Index(element[k])];
                colour = Divided(colour, alpha);
            }
        });
    });
}

void CopyAlpha(Frame& frame, const Frame& source) {
    const std::size_t bytes = static_cast<std::size_t>(BytesOf(frame.Format().sample));
    const std::size_t pixel = 4 * bytes;
    const std::size_t alpha = bytes * Index(frame.Format().element[3]);
    for (int y = 0; y < frame.Height(); ++y)
        for (std::size_t x = 0; x < Index(frame.Width()); ++x)
            std::memcpy(frame.Row(y) + x * pixel + alpha, source.Row(y) + x * pixel + alpha, bytes);
}

void ToEditorScale(Frame& frame) {
    MapShorts(frame, [](std::uint32_t v) {
        return static_cast<std::uint16_t>((v * 32768u + 32767u) / 65535u);
    });
}

void FromEditorScale(Frame& frame) {
    MapShorts(frame, [](std::uint32_t v) {
        return static_cast<std::uint16_t>(std::min((v * 65535u + 16384u) / 32768u, 65535u));
    });
}

std::uint64_t CountOutsideUnit(const Frame& frame) {
    const auto element = frame.Format().element;
    std::uint64_t count = 0;
    ForEachPixel<float>(frame, [&](const auto& pixel) {
        for (std::size_t k = 0; k < 3; ++k) {
            const float v = pixel[Index(element[k])];
            count += !(v >= 0.0f && v <= 1.0f);
        }
    });
    return count;
}

}  // namespace zel
