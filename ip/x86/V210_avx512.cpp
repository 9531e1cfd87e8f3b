#include "ip/detail/Cpu.h"
#if ZEL_X86

#include "ip/detail/Layouts.h"
#include "ip/detail/Memory.h"
#include "ip/detail/V210Weights.h"
#include "ip/x86/CopyRows.h"
#include "ip/x86/Target.h"

#include <array>

namespace zel::ip::x86 {

namespace {

constexpr std::ptrdiff_t kGroups = 4, kGroupPixels = 6, kWords = 4, kVector = 64;

/// The 24 pixels of four groups: 0 to 15, and 8 to 23.
struct Pixels {
    __m512i first, last;
};

/// One of a field's weights, word by word.
template <const V210Field& kField>
ZEL_AVX512_INLINE __m512 Weights(float V210Weights::*part) {
    const auto of = [=](std::size_t i) { return kField[i].weights.*part; };
    return _mm512_setr4_ps(of(0), of(1), of(2), of(3));
}

/// An element of each of sixteen pixels.
template <int kElement>
ZEL_AVX512_INLINE __m512 Samples(__m512i pixels) {
    const __m512i shifted = _mm512_srli_epi32(pixels, 8 * kElement);
    return _mm512_cvtepi32_ps(_mm512_and_si512(shifted, _mm512_set1_epi32(0xFF)));
}

/// A field of sixteen words.
template <Order From, const V210Field& kField>
ZEL_AVX512_INLINE __m512i Codes(const Pixels& pixels) {
    alignas(64) static constexpr auto kIndex = [] {
        std::array<std::int32_t, 16> index{};
        for (std::size_t i = 0; i < 16; ++i) {
            const int pixel = static_cast<int>(i / 4) * 6 + kField[i % 4].pixel;
            index[i] = pixel < 16 ? pixel : pixel + 8;
        }
        return index;
    }();
    const __m512i pixel =
        _mm512_permutex2var_epi32(pixels.first, _mm512_load_si512(kIndex.data()), pixels.last);
    const __m512 r = _mm512_mul_ps(Samples<From.r>(pixel), Weights<kField>(&V210Weights::r));
    const __m512 g = _mm512_mul_ps(Samples<From.g>(pixel), Weights<kField>(&V210Weights::g));
    const __m512 b = _mm512_mul_ps(Samples<From.b>(pixel), Weights<kField>(&V210Weights::b));
    const __m512 sum = _mm512_add_ps(_mm512_add_ps(r, g), b);
    const __m512 unit = _mm512_add_ps(sum, Weights<kField>(&V210Weights::bias));
    const __m512i code = _mm512_cvttps_epi32(_mm512_mul_ps(unit, _mm512_set1_ps(1023.0f)));
    const __m512i raised = _mm512_max_epi32(code, _mm512_setzero_si512());
    return _mm512_min_epi32(raised, _mm512_set1_epi32(1023));
}

template <Order From>
ZEL_AVX512_INLINE __m512i Words(const Pixels& pixels) {
    const __m512i low = Codes<From, kV210Low>(pixels);
    const __m512i middle = Codes<From, kV210Middle>(pixels);
    const __m512i high = Codes<From, kV210High>(pixels);
    const __m512i lower = _mm512_or_si512(low, _mm512_slli_epi32(middle, 10));
    return _mm512_or_si512(lower, _mm512_slli_epi32(high, 20));
}

/// Sixteen pixels as words, of which `count` are there; no byte beyond them is read.
template <Order From>
ZEL_AVX512_INLINE __m512i LoadPixels(const std::byte* from, std::ptrdiff_t count = 16) {
    const std::ptrdiff_t there = std::clamp<std::ptrdiff_t>(count, 0, 16) * From.elements;
    const __mmask64 mask = there == 64 ? ~__mmask64{0} : (__mmask64{1} << there) - 1;
    const __m512i bytes = _mm512_maskz_loadu_epi8(mask, from);
    if constexpr (From.elements == 4) return bytes;
    alignas(64) static constexpr auto kApart = [] {
        std::array<std::uint8_t, 64> index{};
        for (std::size_t i = 0; i < 64; ++i)
            index[i] = static_cast<std::uint8_t>(i / 4 * 3 + i % 4);
        return index;
    }();
    return _mm512_permutexvar_epi8(_mm512_load_si512(kApart.data()), bytes);
}

/// Fewer than four groups; nothing else is touched.
template <Order From>
ZEL_AVX512_INLINE void PackPart(std::byte* to, const std::byte* from, std::ptrdiff_t groups) {
    const std::ptrdiff_t pixels = groups * kGroupPixels;
    const auto words = static_cast<__mmask16>((1u << groups * kWords) - 1);
    _mm512_mask_storeu_epi32(to, words,
                             Words<From>({LoadPixels<From>(from, pixels),
                                          LoadPixels<From>(from + 8 * From.elements, pixels - 8)}));
}

template <Order From, Stores kStores>
ZEL_AVX512 void Row(void* dst, void* src, int width) {
    constexpr std::ptrdiff_t kDstGroup = 16, kSrcGroup = kGroupPixels * From.elements;
    const std::ptrdiff_t groups = width / kGroupPixels;
    std::ptrdiff_t at = 0;
    if constexpr (kStores == Stores::streaming) {
        at = UnitsToAlign(dst, groups, kDstGroup, kVector);
        if (at < 0) return Row<From, Stores::cached>(dst, src, width);
        if (at > 0) PackPart<From>(At<std::byte>(dst, 0), At<std::byte>(src, 0), at);
    }
    for (; at + kGroups <= groups; at += kGroups) {
        const std::byte* const from = At<std::byte>(src, at * kSrcGroup);
        std::byte* const to = At<std::byte>(dst, at * kDstGroup);
        const __m512i words =
            Words<From>({LoadPixels<From>(from), LoadPixels<From>(from + 8 * From.elements)});
        PrefetchAhead<kStores>(from, to);
        PrefetchAhead(from + 64);
        if constexpr (kStores == Stores::streaming)
            _mm512_stream_si512(reinterpret_cast<__m512i*>(to), words);
        else
            _mm512_storeu_si512(to, words);
    }
    if (at < groups)
        PackPart<From>(At<std::byte>(dst, at * kDstGroup), At<std::byte>(src, at * kSrcGroup),
                       groups - at);
}

}  // namespace

void RgbToV210_Avx512(void* dst, int, void* src, int, int width) {
    Row<kRGB, Stores::cached>(dst, src, width);
}
void RgbToV210Streaming_Avx512(void* dst, int, void* src, int, int width) {
    Row<kRGB, Stores::streaming>(dst, src, width);
}
void BgraToV210_Avx512(void* dst, int, void* src, int, int width) {
    Row<kBGRA, Stores::cached>(dst, src, width);
}
void BgraToV210Streaming_Avx512(void* dst, int, void* src, int, int width) {
    Row<kBGRA, Stores::streaming>(dst, src, width);
}
void RgbaToV210_Avx512(void* dst, int, void* src, int, int width) {
    Row<kRGBA, Stores::cached>(dst, src, width);
}
void RgbaToV210Streaming_Avx512(void* dst, int, void* src, int, int width) {
    Row<kRGBA, Stores::streaming>(dst, src, width);
}

}  // namespace zel::ip::x86

#endif
