#pragma once

/// What the host knows of the pixel formats that it can hand to an effect.

#include "abi/PixelFormats.h"

#include <array>
#include <cstdint>
#include <span>
#include <string_view>

namespace zel {

enum class SampleType { U8, U16, Float };

constexpr int BytesOf(SampleType type) {
    return type == SampleType::U8 ? 1 : type == SampleType::U16 ? 2 : 4;
}

/// Four interleaved channels of one sample type.
struct FormatFacts {
    PrPixelFormat code;
    std::string_view name;
    SampleType sample;
    std::array<int, 4> element;  // of the pixel: where red, green, blue and alpha stand

    int BytesPerPixel() const { return 4 * BytesOf(sample); }
};

std::span<const FormatFacts> KnownFormats();

/// Facts of a format in KnownFormats(); throws Error(Other) for another.
const FormatFacts& FactsOf(PrPixelFormat code);

/// The format of that name, upper or lower case; null when there is none.
const FormatFacts* FormatNamed(std::string_view name);

}  // namespace zel
