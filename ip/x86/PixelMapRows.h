#pragma once

/// Conversions of pixels with what x86 processors have beside plain loops: stores past the
/// caches, and byte shuffles.

#include "ip/detail/PixelMaps.h"
#include "ip/x86/Target.h"

#include <array>

namespace zel::ip::x86 {

/// Units `first` on of a row, `count` of them.
template <class Map>
void ConvertUnits(void* dst, void* src, std::ptrdiff_t first, std::ptrdiff_t count) {
    PixelMapRow<Map>(At<std::byte>(dst, first * Map::kToBytes), 0,
                     At<std::byte>(src, first * Map::kFromBytes), 0,
                     static_cast<int>(count) * Map::kPixels);
}

/// A line of words at a time.
template <class Map, Stores kStores>
void LineRow(void* dst, void* src, int width) {
    static_assert(sizeof(typename Map::To) == 4 && Map::kToBytes == 4);
    constexpr std::ptrdiff_t kWords = 16, kVector = 4, kBytes = 4;
    const std::ptrdiff_t units = width / Map::kPixels;
    std::ptrdiff_t at = 0;
    if constexpr (kStores == Stores::streaming) {
        at = UnitsToAlign(dst, units, kBytes, kWords * kBytes);
        if (at < 0) return LineRow<Map, Stores::cached>(dst, src, width);
        ConvertUnits<Map>(dst, src, 0, at);
    }
    for (; at + kWords + Map::kLastApart <= units; at += kWords) {
        const std::byte* const from = At<std::byte>(src, at * Map::kFromBytes);
        std::byte* const to = At<std::byte>(dst, at * kBytes);
        PrefetchAhead<kStores>(from, to);
        std::uint32_t words[kWords];
        for (std::ptrdiff_t i = 0; i < kWords; ++i) words[i] = Map::Of(from + i * Map::kFromBytes);
        for (std::ptrdiff_t i = 0; i < kWords; i += kVector) {
            auto* const vectorAt = reinterpret_cast<__m128i*>(to + i * kBytes);
            if constexpr (kStores == Stores::streaming)
                _mm_stream_si128(vectorAt, Load<__m128i>(&words[i]));
            else
                _mm_storeu_si128(vectorAt, Load<__m128i>(&words[i]));
        }
    }
    ConvertUnits<Map>(dst, src, at, units - at);
}

template <class Map>
void LineRow_Sse2(void* dst, int, void* src, int, int width) {
    LineRow<Map, Stores::cached>(dst, src, width);
}
template <class Map>
void LineRowStreaming_Sse2(void* dst, int, void* src, int, int width) {
    LineRow<Map, Stores::streaming>(dst, src, width);
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

/// Four vectors at a time; past the caches, where they are a line.
template <class Map, Stores kStores>
ZEL_AVX2 void ShuffleRow(void* dst, void* src, int width) {
    static constexpr Shuffle<Map> kShuffle;
    constexpr std::ptrdiff_t kVectors = 4, kUnits = Shuffle<Map>::kUnits;
    const std::ptrdiff_t units = width / Map::kPixels;
    std::ptrdiff_t at = 0;
    if constexpr (kStores == Stores::streaming) {
        static_assert(kUnits * Map::kToBytes == 16);
        at = UnitsToAlign(dst, units, Map::kToBytes, kVectors * 16);
        if (at < 0) return ShuffleRow<Map, Stores::cached>(dst, src, width);
        ConvertUnits<Map>(dst, src, 0, at);
    }
    const __m128i order = Load<__m128i>(kShuffle.order.data());
    const __m128i ones = Load<__m128i>(kShuffle.ones.data());
    // Whole vectors are read and written, so a row's last units are left over.
    constexpr std::ptrdiff_t kReach =
        (kVectors - 1) * kUnits + 16 / std::min(Map::kFromBytes, Map::kToBytes) + 1;
    for (; at + kReach <= units; at += kVectors * kUnits) {
        const std::byte* const from = At<std::byte>(src, at * Map::kFromBytes);
        std::byte* const to = At<std::byte>(dst, at * Map::kToBytes);
        PrefetchAhead<kStores>(from, to);
        for (std::ptrdiff_t i = 0; i < kVectors; ++i) {
            const __m128i bytes = Load<__m128i>(from + i * kUnits * Map::kFromBytes);
            const __m128i shuffled = _mm_or_si128(_mm_shuffle_epi8(bytes, order), ones);
            std::byte* const vectorAt = to + i * kUnits * Map::kToBytes;
            if constexpr (kStores == Stores::streaming)
                _mm_stream_si128(reinterpret_cast<__m128i*>(vectorAt), shuffled);
            else
                Store(vectorAt, shuffled);
        }
    }
    ConvertUnits<Map>(dst, src, at, units - at);
}

template <class Map>
void ShuffleRow_Avx2(void* dst, int, void* src, int, int width) {
    ShuffleRow<Map, Stores::cached>(dst, src, width);
}
template <class Map>
void ShuffleRowStreaming_Avx2(void* dst, int, void* src, int, int width) {
    ShuffleRow<Map, Stores::streaming>(dst, src, width);
}

}  // namespace zel::ip::x86
