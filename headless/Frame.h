#pragma once

/// Pixel memory of one picture.

#include "headless/Formats.h"

#include <cstddef>
#include <memory>

namespace zel {

class Frame {
public:
    /// Bytes behind the last row that may be read, since row copies of the image
    /// library may look up to five pixels past a row.
    static constexpr std::size_t kSlack = 5 * 16;

    /// Pixels uninitialised, padding and slack zero; rows run downwards and start at
    /// multiples of 64 bytes. Throws
    /// Error(Other) when a side is not positive, the size is beyond what the host
    /// interface can express, or there is no memory.
    Frame(PrPixelFormat format, int width, int height);

    /// A frame of that size and layout over memory that somebody else owns.
    Frame(PrPixelFormat format, int width, int height, std::byte* pixels);

    /// Bytes from the first row to behind the last. Throws Error(Other) as above.
    static std::size_t PixelBytes(PrPixelFormat format, int width, int height);

    const FormatFacts& Format() const { return *m_facts; }
    int Width() const { return m_width; }
    int Height() const { return m_height; }
    int RowBytes() const { return m_rowBytes; }

    std::byte* Row(int y) { return m_pixels.get() + std::ptrdiff_t{y} * m_rowBytes; }
    const std::byte* Row(int y) const { return m_pixels.get() + std::ptrdiff_t{y} * m_rowBytes; }

private:
    struct Free {
        bool owned;
        void operator()(std::byte* p) const;
    };

    const FormatFacts* m_facts;
    int m_width, m_height, m_rowBytes;
    std::unique_ptr<std::byte, Free> m_pixels;
};

}  // namespace zel
