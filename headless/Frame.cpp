#include "headless/Frame.h"

#include "headless/Error.h"

#include <cstdint>
#include <cstring>
#include <limits>
#include <new>
#include <string>

namespace zel {

namespace {

constexpr std::size_t kAlignment = 64;

std::string Size(int width, int height) {
    return std::to_string(width) + " x " + std::to_string(height);
}

int RowBytesFor(const FormatFacts& facts, int width, int height) {
    if (width <= 0 || height <= 0)
        throw Error(ErrorKind::Other, "a frame of " + Size(width, height) + " has no pixels");
    const std::int64_t packed = std::int64_t{width} * facts.BytesPerPixel();
    constexpr std::int64_t step = kAlignment;
    const std::int64_t padded = (packed + step - 1) / step * step;
    if (padded > std::numeric_limits<std::int32_t>::max())
        throw Error(ErrorKind::Other,
                    "a frame of " + Size(width, height) + " is too wide: a row would need " +
                        std::to_string(padded) + " bytes, the host interface has 2147483647");
    return static_cast<int>(padded);
}

}  // namespace

void Frame::Free::operator()(std::byte* p) const {
    if (owned) ::operator delete[](p, std::align_val_t{kAlignment});
}

std::size_t Frame::PixelBytes(PrPixelFormat format, int width, int height) {
    return static_cast<std::size_t>(RowBytesFor(FactsOf(format), width, height)) *
           static_cast<std::size_t>(height);
}

Frame::Frame(PrPixelFormat format, int width, int height, std::byte* pixels)
    : m_facts(&FactsOf(format)),
      m_width(width),
      m_height(height),
      m_rowBytes(RowBytesFor(*m_facts, width, height)),
      m_pixels(pixels, Free{.owned = false}) {}

Frame::Frame(PrPixelFormat format, int width, int height)
    : m_facts(&FactsOf(format)),
      m_width(width),
      m_height(height),
      m_rowBytes(RowBytesFor(*m_facts, width, height)),
      m_pixels(nullptr, Free{.owned = true}) {
    const std::size_t bytes = PixelBytes(format, width, height) + kSlack;
    m_pixels.reset(static_cast<std::byte*>(
        ::operator new[](bytes, std::align_val_t{kAlignment}, std::nothrow)));
    if (!m_pixels)
        throw Error(ErrorKind::Other, "no memory for a frame of " + Size(width, height) + " (" +
                                          std::to_string(bytes) + " bytes)");
    const std::size_t pixels =
        static_cast<std::size_t>(width) * static_cast<std::size_t>(m_facts->BytesPerPixel());
    for (int y = 0; y < height; ++y)
        std::memset(Row(y) + pixels, 0, static_cast<std::size_t>(m_rowBytes) - pixels);
    std::memset(Row(height), 0, kSlack);
}

}  // namespace zel
