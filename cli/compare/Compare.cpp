#include "cli/compare/Compare.h"

#include "cli/picture/Pixels.h"

#include <cmath>
#include <cstring>
#include <limits>

namespace zel {

namespace {

using Pixel = std::array<float, 4>;

/// On the scale 0..1: samples that are equal in the frame are equal here.
Pixel Load(const Frame& frame, int x, int y) {
    const auto bytes = static_cast<std::size_t>(frame.Format().BytesPerPixel());
    const std::byte* at = frame.Row(y) + bytes * static_cast<std::size_t>(x);
    Pixel pixel;
    if (frame.Format().sample == SampleType::Float) {
        std::memcpy(&pixel, at, sizeof pixel);
        return pixel;
    }
    std::array<std::uint16_t, 4> samples;
    std::memcpy(&samples, at, sizeof samples);
    for (std::size_t e = 0; e < 4; ++e) pixel[e] = static_cast<float>(samples[e]) / 65535.0f;
    return pixel;
}

bool Differ(float a, float b) { return a != b && !(std::isnan(a) && std::isnan(b)); }

}  // namespace

double Difference::Mean() const { return samples ? sum / static_cast<double>(samples) : 0.0; }

double Difference::Psnr() const {
    if (squares == 0.0) return std::numeric_limits<double>::infinity();
    return -10.0 * std::log10(squares / static_cast<double>(samples));
}

void Difference::Add(float a, float b) {
    if (!Differ(a, b)) {
        ++samples;
        return;
    }
    const double off = std::abs(static_cast<double>(a) - static_cast<double>(b));
    if (!std::isfinite(off)) {
        ++unmeasured;
        return;
    }
    ++samples;
    largest = std::max(largest, off);
    sum += off;
    squares += off * off;
}

void Difference::Add(const Difference& other) {
    largest = std::max(largest, other.largest);
    sum += other.sum;
    squares += other.squares;
    samples += other.samples;
    unmeasured += other.unmeasured;
}

Comparison Compare(const Frame& a, const Frame& b, bool alpha) {
    const auto element = a.Format().element;
    const std::size_t channels = alpha ? 4 : 3;
    Comparison comparison;
    for (int y = 0; y < a.Height(); ++y)
        for (int x = 0; x < a.Width(); ++x) {
            const Pixel ours = Load(a, x, y), theirs = Load(b, x, y);
            bool differs = false;
            for (std::size_t c = 0; c < channels; ++c) {
                const auto e = static_cast<std::size_t>(element[c]);
                comparison.channel[c].Add(ours[e], theirs[e]);
                differs |= Differ(ours[e], theirs[e]);
            }
            ++comparison.pixels;
            comparison.differing += differs;
        }
    for (const Difference& channel : comparison.channel) comparison.all.Add(channel);
    return comparison;
}

Frame PictureOf(const Frame& a, const Frame& b, CompareMode mode, float gain) {
    const int width = a.Width(), seam = width / 2;
    const auto alpha = static_cast<std::size_t>(a.Format().element[3]);
    const Pixel white{1.0f, 1.0f, 1.0f, 1.0f};
    const auto pixelAt = [&](int x, int y) -> Pixel {
        if (mode == CompareMode::Side) return x < width ? Load(a, x, y) : Load(b, x - width, y);
        if (mode == CompareMode::Split)
            return x < seam ? Load(a, x, y) : x == seam ? white : Load(b, x, y);
        Pixel pixel = Load(a, x, y);
        const Pixel other = Load(b, x, y);
        for (std::size_t e = 0; e < 4; ++e)
            pixel[e] = Differ(pixel[e], other[e]) ? std::abs(pixel[e] - other[e]) * gain : 0.0f;
        pixel[alpha] = 1.0f;
        return pixel;
    };
    Frame picture(PrPixelFormat_BGRA_4444_32f, mode == CompareMode::Side ? 2 * width : width,
                  a.Height());
    for (int y = 0; y < picture.Height(); ++y)
        for (int x = 0; x < picture.Width(); ++x) {
            const Pixel pixel = pixelAt(x, y);
            std::memcpy(picture.Row(y) + sizeof pixel * static_cast<std::size_t>(x), &pixel,
                        sizeof pixel);
        }
    return picture;
}

}  // namespace zel
