#pragma once

/// v210 of 8-bit RGB in chunks of groups, laid out for a compiler to make vectors of: for
/// each field of the words the pixels it takes, then its codes, then the words.

#include "ip/detail/Layouts.h"
#include "ip/detail/Units.h"
#include "ip/detail/V210Weights.h"

#include <algorithm>

namespace zel::ip {

struct V210Chunk {
    static constexpr std::size_t kGroups = 8, kPixels = 6 * kGroups, kWords = 4 * kGroups;
    using Pixels = std::array<std::uint32_t, kPixels>;
    using Words = std::array<std::uint32_t, kWords>;
    using Floats = std::array<float, kWords>;

    /// One of a field's weights for every word.
    static constexpr Floats Spread(const V210Field& field, float V210Weights::*part) {
        Floats spread{};
        for (std::size_t i = 0; i < kWords; ++i) spread[i] = field[i % 4].weights.*part;
        return spread;
    }

    /// Three-byte pixels take a byte of the next one along, where there is one.
    template <std::size_t kBytes>
    static Pixels LoadPixels(const std::byte* from, std::size_t count) {
        Pixels pixels;
        if (count < kPixels) pixels = {};
        if constexpr (kBytes == 4) {
            std::memcpy(pixels.data(), from, count * kBytes);
        } else {
            const std::size_t last = count - 1;
            for (std::size_t i = 0; i < last; ++i) std::memcpy(&pixels[i], from + i * kBytes, 4);
            pixels[last] = 0;
            std::memcpy(&pixels[last], from + last * kBytes, kBytes);
        }
        return pixels;
    }

    template <Order From, const V210Field& kField>
    static Words Codes(const Pixels& pixels) {
        static constexpr Floats red = Spread(kField, &V210Weights::r),
                                green = Spread(kField, &V210Weights::g),
                                blue = Spread(kField, &V210Weights::b),
                                bias = Spread(kField, &V210Weights::bias);
        Words picked, codes;
        for (std::size_t g = 0; g < kGroups; ++g)
            for (std::size_t k = 0; k < 4; ++k)
                picked[4 * g + k] = pixels[6 * g + static_cast<std::size_t>(kField[k].pixel)];
        for (std::size_t i = 0; i < kWords; ++i) {
            const auto r = static_cast<float>(static_cast<int>(picked[i] >> 8 * From.r & 255));
            const auto g = static_cast<float>(static_cast<int>(picked[i] >> 8 * From.g & 255));
            const auto b = static_cast<float>(static_cast<int>(picked[i] >> 8 * From.b & 255));
            const float sum = r * red[i] + g * green[i] + b * blue[i];
            // Not far outside the codes.
            const int code = static_cast<int>((sum + bias[i]) * 1023.0f);
            codes[i] = static_cast<std::uint32_t>(std::clamp(code, 0, 1023));
        }
        return codes;
    }

    template <Order From>
    static Words Pack(const Pixels& pixels) {
        const Words low = Codes<From, kV210Low>(pixels);
        const Words middle = Codes<From, kV210Middle>(pixels);
        const Words high = Codes<From, kV210High>(pixels);
        Words words;
        for (std::size_t i = 0; i < kWords; ++i) words[i] = Pack10(low[i], middle[i], high[i]);
        return words;
    }
};

template <Order From>
void PackV210Row(void* dst, int, void* src, int, int width) {
    constexpr auto kPixels = static_cast<std::ptrdiff_t>(V210Chunk::kPixels);
    const std::ptrdiff_t pixels = std::max(width, 0) / 6 * 6;
    for (std::ptrdiff_t x = 0; x < pixels; x += kPixels) {
        const auto count = static_cast<std::size_t>(std::min(kPixels, pixels - x));
        const std::byte* const from = At<std::byte>(src, x * From.elements);
        const V210Chunk::Words words =
            V210Chunk::Pack<From>(V210Chunk::LoadPixels<From.elements>(from, count));
        std::memcpy(At<V210Words>(dst, x / 6), words.data(), count / 6 * sizeof(V210Words));
    }
}

}  // namespace zel::ip
