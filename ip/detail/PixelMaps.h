#pragma once

/// Conversions as shifts and masks of whole pixels, which compilers turn into vectors at
/// any level. The scan copies, byte by byte, are their reference.

#include "ip/detail/Memory.h"
#include "ip/detail/Units.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace zel::ip {

// --- what a pixel becomes -----------------------------------------------------

// BGRA8 as a word: blue in bits 0-7, green in 8-15, red in 16-23, alpha in 24-31.
// RGB8 as a word: red, green and blue from bit 0 on, anything above.

constexpr std::uint32_t AbgrOfBgra(std::uint32_t bgra) { return bgra << 8 | bgra >> 24; }

/// Either way round.
constexpr std::uint32_t RgbaOfBgra(std::uint32_t bgra) {
    return (bgra & 0xFF00FF00u) | (bgra >> 16 & 0x000000FFu) | (bgra << 16 & 0x00FF0000u);
}

constexpr std::uint32_t RgbOfBgra(std::uint32_t bgra) { return ByteReversed(bgra) >> 8; }
constexpr std::uint32_t BgraOfRgb(std::uint32_t rgb) {
    return ByteReversed(rgb) >> 8 | 0xFF000000u;
}
constexpr std::uint32_t RgbaOfRgb(std::uint32_t rgb) { return rgb | 0xFF000000u; }
constexpr std::uint32_t ArgbOfRgb(std::uint32_t rgb) { return rgb << 8 | 0x000000FFu; }

/// Three 16-bit elements, high byte first: a sample in the low byte of each.
constexpr std::uint64_t Rgb16OfBgra(std::uint32_t bgra) {
    const std::uint64_t wide = bgra;
    return (wide >> 16 & 0xFFu) | (wide << 8 & 0x00FF'0000u) | (wide << 32 & 0xFF'0000'0000u);
}

// Deliberate: blue lies two bits above its field. docs/quirks.md, "RGB10 blue".
constexpr std::uint32_t RGB10OfBgra(std::uint32_t bgra) {
    return (bgra >> 14 & 0x000003FCu) | (bgra << 4 & 0x000FF000u) | bgra << 24;
}

// Deliberate: bits 30 and 31 are set. docs/quirks.md, "RGB10 top bits".
constexpr std::uint32_t RGB10OfRgb(std::uint32_t rgb) {
    return (rgb << 2 & 0x000003FCu) | (rgb << 4 & 0x000FF000u) | (rgb << 6 & 0x3FC00000u) |
           0xC0000000u;
}

constexpr std::uint32_t RGB10OfRgb16(std::uint64_t rgb16) {
    return static_cast<std::uint32_t>((rgb16 >> 6 & 0x000003FFu) | (rgb16 >> 12 & 0x000FFC00u) |
                                      (rgb16 >> 18 & 0x3FF00000u));
}

constexpr std::uint32_t BgraOfRGB10Word(std::uint32_t rgb10) {
    return (rgb10 << 14 & 0x00FF0000u) | (rgb10 >> 4 & 0x0000FF00u) | (rgb10 >> 22 & 0x000000FFu) |
           0xFF000000u;
}

constexpr std::uint32_t DpxLEOfBgra(std::uint32_t bgra) {
    return (bgra << 8 & 0xFF000000u) | (bgra << 6 & 0x003FC000u) | (bgra << 4 & 0x00000FF0u);
}

/// The same word with its bytes reversed, which parts green and blue.
constexpr std::uint32_t DpxBEOfBgra(std::uint32_t bgra) {
    return (bgra >> 16 & 0x000000FFu) | (bgra >> 2 & 0x00003F00u) | (bgra << 14 & 0x00C00000u) |
           (bgra << 12 & 0x000F0000u) | bgra << 28;
}

constexpr std::uint32_t BgraOfDpxLE(std::uint32_t dpx) {
    return (dpx >> 8 & 0x00FF0000u) | (dpx >> 6 & 0x0000FF00u) | (dpx >> 4 & 0x000000FFu) |
           0xFF000000u;
}

constexpr std::uint32_t BgraOfDpxBE(std::uint32_t dpx) {
    return (dpx << 16 & 0x00FF0000u) | (dpx << 2 & 0x0000FC00u) | (dpx >> 14 & 0x00000300u) |
           (dpx >> 12 & 0x000000F0u) | dpx >> 28 | 0xFF000000u;
}

// Deliberate: V A A Y. docs/quirks.md, "VUY8".
constexpr std::uint32_t VuyOfVuya(std::uint32_t vuya) {
    return (vuya & 0xFFu) | (vuya >> 24) * 0x010100u | (vuya << 8 & 0xFF000000u);
}

/// Of two pixels. Deliberate: U, the second Y, V, the first Y.
/// docs/quirks.md, "VUYA8 pair".
constexpr std::uint32_t YCbYCrOfVuya(std::uint64_t pair) {
    return static_cast<std::uint32_t>((pair >> 8 & 0xFFu) | (pair >> 40 & 0x0000FF00u) |
                                      (pair << 16 & 0x00FF0000u) | (pair << 8 & 0xFF000000u));
}

// --- rows of them ---------------------------------------------------------------

/// A unit of kPixels pixels takes kFromBytes bytes and is read as a From; what kMap makes
/// of it takes kToBytes bytes and is stored as a To. Either type may be the longer: then it
/// reaches into the next unit, whose bytes kMap ignores or the next store sets right.
template <class From_, class To_, To_ (*kMap)(From_), int kFromBytes_ = sizeof(From_),
          int kToBytes_ = sizeof(To_), int kPixels_ = 1>
struct PixelMap {
    using From = From_;
    using To = To_;
    static constexpr std::ptrdiff_t kFromBytes = kFromBytes_, kToBytes = kToBytes_;
    static constexpr int kPixels = kPixels_;
    /// The row's last unit has no next one.
    static constexpr bool kLastApart =
        kFromBytes_ < static_cast<int>(sizeof(From)) || kToBytes_ < static_cast<int>(sizeof(To));

    static constexpr To Convert(From unit) { return kMap(unit); }
    static To Of(const void* from) { return kMap(Load<From>(from)); }

    static void ConvertLast(void* to, const void* from) {
        From unit{};
        std::memcpy(&unit, from, kFromBytes);
        const To converted = kMap(unit);
        std::memcpy(to, &converted, kToBytes);
    }
};

template <class Map>
void PixelMapRow(void* dst, int, void* src, int, int width) {
    const std::ptrdiff_t units = width / Map::kPixels;
    const Units to{dst, Map::kToBytes}, from{src, Map::kFromBytes};
    ForEach(
        units - Map::kLastApart, [](void* t, const void* f) { Store(t, Map::Of(f)); }, to, from);
    if (Map::kLastApart && units > 0) Map::ConvertLast(to[units - 1], from[units - 1]);
}

/// Units `first` on of a row, `count` of them.
template <class Map>
void ConvertUnits(void* dst, void* src, std::ptrdiff_t first, std::ptrdiff_t count) {
    PixelMapRow<Map>(At<std::byte>(dst, first * Map::kToBytes), 0,
                     At<std::byte>(src, first * Map::kFromBytes), 0,
                     static_cast<int>(count) * Map::kPixels);
}

/// A conversion that only moves bytes, as a shuffle of 16 of them. What moves where is found
/// by asking the conversion itself.
template <class Map>
struct Shuffle {
    static constexpr std::ptrdiff_t kUnits = 16 / std::max(Map::kFromBytes, Map::kToBytes);

    alignas(16) std::array<std::uint8_t, 16> order{}, ones{};

    constexpr Shuffle() {
        using From = typename Map::From;
        const auto byteOf = [](auto unit, std::ptrdiff_t i) {
            return static_cast<std::uint8_t>(unit >> 8 * i & 0xFF);
        };
        order.fill(0x80);  // a zero
        for (std::ptrdiff_t i = 0; i < kUnits * Map::kToBytes; ++i) {
            const std::ptrdiff_t unit = i / Map::kToBytes, byte = i % Map::kToBytes;
            ones[static_cast<std::size_t>(i)] = byteOf(Map::Convert(From{0}), byte);
            if (ones[static_cast<std::size_t>(i)] != 0) continue;
            for (std::ptrdiff_t s = 0; s < Map::kFromBytes; ++s)
                if (byteOf(Map::Convert(From{0xFF} << 8 * s), byte) == 0xFF)
                    order[static_cast<std::size_t>(i)] =
                        static_cast<std::uint8_t>(unit * Map::kFromBytes + s);
        }
    }
};

}  // namespace zel::ip
