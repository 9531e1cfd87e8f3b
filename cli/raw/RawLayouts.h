#pragma once

/// The image library's layouts for raw frames, and its conversions between them.

#include "cli/Options.h"

#include <span>
#include <string_view>

namespace zel {

/// A layout of raw frames: name and the bytes of a row of `width` pixels without
/// padding. Groups that a row only begins count as whole.
struct RawLayout {
    std::string_view name;
    std::int64_t (*rowBytes)(std::int64_t width);
    /// Draws the library's test pattern; null where it has none.
    void (*pattern)(void* base, int rowBytes, int width, int height, int reserved);
    /// Fills with black; null where the library has no fill for the layout.
    void (*fill)(void* base, int rowBytes, int width, int height, float r, float g, float b,
                 float a, bool normalised);
};

struct RawConversion {
    std::string_view from, to;
    void (*frame)(void* dst, int dstRowBytes, void* src, int srcRowBytes, int width, int height);
};

std::span<const RawLayout> RawLayouts();
std::span<const RawConversion> RawConversions();

/// The layout of that name, upper or lower case. Throws Error(Usage) with the names.
const RawLayout& RawLayoutNamed(std::string_view name);

/// Throws Error(Usage) with what there is when the library does not convert so.
const RawConversion& FindConversion(const RawLayout& from, const RawLayout& to);

struct FrameSize {
    int width, height;
};

/// "1920x1080". Throws Error(Usage).
FrameSize ParseSize(const std::string& text);

/// The option's whole number from `low` to `high`, or the default. Throws Error(Usage).
int NumberOption(const Arguments& arguments, const std::string& key, int otherwise, int low,
                 int high);

/// Row bytes given by option `key`, else those of the layout, which are the least.
/// Throws Error(Usage).
int RowBytesOption(const Arguments& arguments, const std::string& key, const RawLayout& layout,
                   int width);

}  // namespace zel
