#pragma once

/// Conversions of pixels with what x86 processors have beside plain loops: stores past the
/// caches, and byte shuffles.

#include "ip/detail/Cpu.h"
#if ZEL_X86

#include "ip/detail/PixelMaps.h"
#include "ip/x86/Target.h"

namespace zel::ip::x86 {

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

#endif
