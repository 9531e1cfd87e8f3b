#include "ip/detail/Cpu.h"
#if ZEL_X86

#include "ip/detail/Memory.h"
#include "ip/x86/LutRows.h"
#include "ip/x86/Target.h"

namespace zel::ip::x86 {

namespace {

constexpr int kVector = 64, kBlock = 4 * kVector;  // bytes

/// A table of 256 bytes in registers.
struct Table {
    __m512i quarter[4];
};

ZEL_AVX512 inline Table LoadTable(void* table) {
    const auto quarter = [=](int i) ZEL_AVX512 {
        return _mm512_loadu_si512(At<std::byte>(table, i * kVector));
    };
    return {{quarter(0), quarter(1), quarter(2), quarter(3)}};
}

/// 64 samples of one channel. A permute reaches 128 entries; the top bit of the sample
/// says in which half of the table it counts.
ZEL_AVX512 inline __m512i Look(__m512i samples, const Table& t) {
    const __m512i low = _mm512_permutex2var_epi8(t.quarter[0], samples, t.quarter[1]);
    const __m512i high = _mm512_permutex2var_epi8(t.quarter[2], samples, t.quarter[3]);
    return _mm512_mask_blend_epi8(_mm512_movepi8_mask(samples), low, high);
}

struct Block {
    __m512i v[4];
};

/// Turns 64 pixels into their four channels, one per vector, and back: bytes (i, j) of
/// the four vectors' pixels change places with bytes (j, i).
ZEL_AVX512 inline Block Turned(const Block& b) {
    constexpr __mmask64 kOddBytes = 0xAAAAAAAAAAAAAAAA;
    constexpr __mmask32 kOddWords = 0xAAAAAAAA;
    const auto& v = b.v;
    const __m512i even01 = _mm512_mask_blend_epi8(kOddBytes, v[0], _mm512_slli_epi16(v[1], 8));
    const __m512i odd01 = _mm512_mask_blend_epi8(kOddBytes, _mm512_srli_epi16(v[0], 8), v[1]);
    const __m512i even23 = _mm512_mask_blend_epi8(kOddBytes, v[2], _mm512_slli_epi16(v[3], 8));
    const __m512i odd23 = _mm512_mask_blend_epi8(kOddBytes, _mm512_srli_epi16(v[2], 8), v[3]);
    return {{_mm512_mask_blend_epi16(kOddWords, even01, _mm512_slli_epi32(even23, 16)),
             _mm512_mask_blend_epi16(kOddWords, odd01, _mm512_slli_epi32(odd23, 16)),
             _mm512_mask_blend_epi16(kOddWords, _mm512_srli_epi32(even01, 16), even23),
             _mm512_mask_blend_epi16(kOddWords, _mm512_srli_epi32(odd01, 16), odd23)}};
}

ZEL_AVX512 inline Block Look(const Block& pixels, const Table (&t)[4]) {
    const auto& [b, g, r, a] = Turned(pixels).v;
    return Turned({{Look(b, t[0]), Look(g, t[1]), Look(r, t[2]), Look(a, t[3])}});
}

/// `bytes` bytes, fewer than a block's; no others are touched.
ZEL_AVX512 inline void LookPart(std::byte* to, const std::byte* from, std::ptrdiff_t bytes,
                                const Table (&t)[4]) {
    Block block;
    __mmask64 part[4];
    for (int i = 0; i < 4; ++i) {
        const std::ptrdiff_t left = bytes - i * kVector;
        part[i] = left >= kVector ? ~__mmask64{0} : left <= 0 ? 0 : (__mmask64{1} << left) - 1;
        block.v[i] = _mm512_maskz_loadu_epi8(part[i], from + i * kVector);
    }
    block = Look(block, t);
    for (int i = 0; i < 4; ++i) _mm512_mask_storeu_epi8(to + i * kVector, part[i], block.v[i]);
}

template <Stores kStores>
ZEL_AVX512 void Row(void* dst, void* src, int width, void* t0, void* t1, void* t2, void* t3) {
    const Table t[4] = {LoadTable(t0), LoadTable(t1), LoadTable(t2), LoadTable(t3)};
    auto* const to = static_cast<std::byte*>(dst);
    const auto* const from = static_cast<const std::byte*>(src);
    const std::ptrdiff_t bytes = std::ptrdiff_t{4} * width;
    std::ptrdiff_t at = 0;
    if constexpr (kStores == Stores::streaming) {
        at = 4 * UnitsToAlign(dst, width, 4, kVector);
        if (at < 0) return Row<Stores::cached>(dst, src, width, t0, t1, t2, t3);
        LookPart(to, from, at, t);
    }
    for (; at + kBlock <= bytes; at += kBlock) {
        Block block;
        for (int i = 0; i < 4; ++i) {
            const std::byte* const vector = from + at + i * kVector;
            PrefetchAhead<kStores>(vector, to + at + i * kVector);
            block.v[i] = _mm512_loadu_si512(vector);
        }
        block = Look(block, t);
        for (int i = 0; i < 4; ++i) {
            std::byte* const vector = to + at + i * kVector;
            if constexpr (kStores == Stores::streaming)
                _mm512_stream_si512(reinterpret_cast<__m512i*>(vector), block.v[i]);
            else
                _mm512_storeu_si512(vector, block.v[i]);
        }
    }
    LookPart(to + at, from + at, bytes - at, t);
}

}  // namespace

void LutRow8_Avx512(void* d, void* s, int w, void* t0, void* t1, void* t2, void* t3) {
    Row<Stores::cached>(d, s, w, t0, t1, t2, t3);
}
void LutRow8Streaming_Avx512(void* d, void* s, int w, void* t0, void* t1, void* t2, void* t3) {
    Row<Stores::streaming>(d, s, w, t0, t1, t2, t3);
}

}  // namespace zel::ip::x86

#endif
