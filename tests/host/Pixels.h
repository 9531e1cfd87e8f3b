#pragma once

/// What a render does to pixels, written down a second time and as plainly as possible.

#include "abi/PixelFormats.h"
#include "tests/support/HostFrame.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <memory>

namespace zel::test {

/// Red, green and blue; entry i is the output for code i.
using Curve = std::array<std::array<float, 1024>, 3>;

Curve IdentityCurve();

/// Channels of a pixel, by position in memory.
struct FrameFormat {
    const char* name;
    PrPixelFormat code;
    int channelBytes;
    int red, green, blue, alpha;

    int PixelBytes() const { return 4 * channelBytes; }
};

// In the order in which they are declared to Premiere.
inline constexpr FrameFormat kFrameFormats[] = {
    {"BGRA8", PrPixelFormat_BGRA_4444_8u, 1, 2, 1, 0, 3},
    {"ARGB8", PrPixelFormat_ARGB_4444_8u, 1, 1, 2, 3, 0},
    {"BGRA16", PrPixelFormat_BGRA_4444_16u, 2, 2, 1, 0, 3},
    {"BGRAFloat", PrPixelFormat_BGRA_4444_32f, 4, 2, 1, 0, 3},
    {"ARGB16", PrPixelFormat_ARGB_4444_16u, 2, 1, 2, 3, 0},
};

/// Fills the pixels of a frame. Over 65,536 pixels every sample value of an 8- and 16-bit
/// channel occurs in every channel; float frames go from below 0 to above 1 and begin
/// with values that are no colours: NaN, infinities, negative zero.
void FillWithSamples(const FrameFormat& format, HostFrame& frame);

/// Maps the pixels of `source` through `curve` into `frame`.
void Map(const FrameFormat& format, const Curve& curve, HostFrame& source, HostFrame& frame);

/// Compares the whole memory, guards included.
testing::AssertionResult Same(const FrameFormat& format, HostFrame& expected, HostFrame& got);

}  // namespace zel::test
