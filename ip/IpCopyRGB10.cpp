// RGB10 words, to and from.

#include "ip/IpCopy.h"

#include "ip/detail/CopyVariants.h"
#include "ip/detail/Layouts.h"
#include "ip/detail/Units.h"

using namespace zel::ip;

// --- rows ---------------------------------------------------------------------

void IpScan_Copy_RGBA_To_RGB10_General(void* dst, int, void* src, int, int width, int rIndex,
                                       int gIndex, int bIndex, int srcStep) {
    // Deliberate: blue goes to bit 24, two above its field.
    // docs/quirks.md, "RGB10 blue".
    const auto pack = [=](void* to, void* from) {
        const auto sample = [=](int i) { return std::uint32_t{LoadAt<std::uint8_t>(from, i)}; };
        Store(to, sample(rIndex) * 4 + (sample(gIndex) << 12) + (sample(bIndex) << 24));
    };
    ForEach(width, pack, UnitsOf<std::uint32_t>(dst), Units{src, srcStep});
}

void IpScan_Copy_BGRA_To_RGB10(void* dst, int dstRowBytes, void* src, int srcRowBytes, int width) {
    IpScan_Copy_RGBA_To_RGB10_General(dst, dstRowBytes, src, srcRowBytes, width, kBGRA.r, kBGRA.g,
                                      kBGRA.b, kBGRA.elements);
}

void IpScan_Copy_RGB8_To_RGB10(void* dst, int, void* src, int, int width) {
    using Pixel = std::array<std::uint8_t, 3>;
    MapUnits<Pixel>(dst, src, width, [](const Pixel& rgb) {
        const auto code = [&](int i) { return rgb[static_cast<std::size_t>(i)] * 4u; };
        // Deliberate: bits 30 and 31 come out set. docs/quirks.md, "RGB10 top bits".
        return Pack10(code(kRGB.r), code(kRGB.g), code(kRGB.b)) - 0x40000000u;
    });
}

void IpScan_Copy_RGB16LE_To_RGB10(void* dst, int, void* src, int, int width) {
    using Pixel = std::array<std::uint16_t, 3>;
    MapUnits<Pixel>(dst, src, width, [](const Pixel& rgb) {
        const auto code = [&](int i) {
            return std::uint32_t{rgb[static_cast<std::size_t>(i)]} >> 6;
        };
        return Pack10(code(kRGB.r), code(kRGB.g), code(kRGB.b));
    });
}

void IpScan_Copy_RGB10_To_BGRA8(void* dst, int, void* src, int, int width) {
    MapUnits<std::uint32_t>(dst, src, width, BgraOfRGB10);
}

// --- frames -------------------------------------------------------------------

// clang-format off
void IpFrame_Copy_BGRA8_To_RGB10(void* dst, int dstRowBytes, void* src, int srcRowBytes, int width, int height) {
    CopyFrame(kBgraToRGB10, dst, dstRowBytes, src, srcRowBytes, width, height);
}
void IpFrame_Copy_RGB8_To_RGB10(void* dst, int dstRowBytes, void* src, int srcRowBytes, int width, int height) {
    CopyFrame(kRgbToRGB10, dst, dstRowBytes, src, srcRowBytes, width, height);
}
void IpFrame_Copy_RGB16LE_To_RGB10(void* dst, int dstRowBytes, void* src, int srcRowBytes, int width, int height) {
    CopyFrame(kRgb16ToRGB10, dst, dstRowBytes, src, srcRowBytes, width, height);
}
void IpFrame_Copy_RGB10_To_BGRA8(void* dst, int dstRowBytes, void* src, int srcRowBytes, int width, int height) {
    CopyFrame(kRGB10ToBgra, dst, dstRowBytes, src, srcRowBytes, width, height);
}
// clang-format on
