#include "ip/detail/Cpu.h"
#if ZEL_X86

#include "ip/detail/LutPrepared.h"
#include "ip/detail/Memory.h"
#include "ip/x86/LutRows.h"
#include "ip/x86/Target.h"

namespace zel::ip::x86 {

namespace {

/// Sixteen samples, four pixels. Unpacking with zero and packing again work on the same
/// halves of a register, so the samples keep their order.
ZEL_AVX2 inline __m256i Look(__m256i samples, const int* cells) {
    const __m256i zero = _mm256_setzero_si256();
    const __m256i tables = _mm256_set1_epi64x(0x0C00'0800'0400'0000);  // of the four channels
    const __m256i index = _mm256_or_si256(_mm256_srli_epi16(samples, 6), tables);
    const __m256i low = _mm256_i32gather_epi32(cells, _mm256_unpacklo_epi16(index, zero), 4);
    const __m256i high = _mm256_i32gather_epi32(cells, _mm256_unpackhi_epi16(index, zero), 4);
    return _mm256_packus_epi32(low, high);
}

template <Stores kStores>
ZEL_AVX2 void Row(void* dst, void* src, int width, void* t0, void* t1, void* t2, void* t3) {
    constexpr std::ptrdiff_t kPixels = 4, kBytes = 8;
    std::ptrdiff_t x = 0;
    if constexpr (kStores == Stores::streaming) {
        x = UnitsToAlign(dst, width, kBytes, sizeof(__m256i));
        if (x < 0) return Row<Stores::cached>(dst, src, width, t0, t1, t2, t3);
        LutRow16Prepared(dst, src, static_cast<int>(x), t0, t1, t2, t3);
    }
    for (; x + kPixels <= width; x += kPixels) {
        const std::byte* const from = At<std::byte>(src, x * kBytes);
        auto* const to = reinterpret_cast<__m256i*>(At<std::byte>(dst, x * kBytes));
        const __m256i samples = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(from));
        const __m256i codes = Look(samples, static_cast<const int*>(t0));
        PrefetchAhead<kStores>(from, to);
        if constexpr (kStores == Stores::streaming)
            _mm256_stream_si256(to, codes);
        else
            _mm256_storeu_si256(to, codes);
    }
    LutRow16Prepared(At<std::byte>(dst, x * kBytes), At<std::byte>(src, x * kBytes),
                     static_cast<int>(width - x), t0, t1, t2, t3);
}

}  // namespace

void LutRow16_Avx2(void* d, void* s, int w, void* t0, void* t1, void* t2, void* t3) {
    Row<Stores::cached>(d, s, w, t0, t1, t2, t3);
}
void LutRow16Streaming_Avx2(void* d, void* s, int w, void* t0, void* t1, void* t2, void* t3) {
    Row<Stores::streaming>(d, s, w, t0, t1, t2, t3);
}

}  // namespace zel::ip::x86

#endif
