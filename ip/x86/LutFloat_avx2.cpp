#include "ip/detail/Cpu.h"
#if ZEL_X86

#include "ip/detail/LutPrepared.h"
#include "ip/detail/Memory.h"
#include "ip/x86/LutRows.h"
#include "ip/x86/Target.h"

namespace zel::ip::x86 {

namespace {

/// Two pixels. The maximum takes its second operand when the first is NaN.
ZEL_AVX2 inline __m256 Look(__m256 samples, const float* cells) {
    const __m256 top = _mm256_set1_ps(1023.0f);
    const __m256 code = _mm256_mul_ps(samples, top);
    const __m256 clamped = _mm256_min_ps(_mm256_max_ps(code, _mm256_setzero_ps()), top);
    // Channel 3 is looked up with channel 2's index.
    const __m256i index = _mm256_shuffle_epi32(_mm256_cvttps_epi32(clamped), 0xA4);
    const __m256i tables = _mm256_setr_epi32(0, 1024, 2048, 3072, 0, 1024, 2048, 3072);
    return _mm256_i32gather_ps(cells, _mm256_or_si256(index, tables), 4);
}

template <Stores kStores>
ZEL_AVX2 void Row(void* dst, void* src, int width, void* t0, void* t1, void* t2, void* t3) {
    constexpr std::ptrdiff_t kPixels = 2, kBytes = 16;
    std::ptrdiff_t x = 0;
    if constexpr (kStores == Stores::streaming) {
        x = UnitsToAlign(dst, width, kBytes, sizeof(__m256));
        if (x < 0) return Row<Stores::cached>(dst, src, width, t0, t1, t2, t3);
        LutRowFloatPrepared(dst, src, static_cast<int>(x), t0, t1, t2, t3);
    }
    for (; x + kPixels <= width; x += kPixels) {
        const std::byte* const from = At<std::byte>(src, x * kBytes);
        auto* const to = reinterpret_cast<float*>(At<std::byte>(dst, x * kBytes));
        const __m256 samples = _mm256_loadu_ps(reinterpret_cast<const float*>(from));
        const __m256 units = Look(samples, static_cast<const float*>(t0));
        PrefetchAhead<kStores>(from, to);
        if constexpr (kStores == Stores::streaming)
            _mm256_stream_ps(to, units);
        else
            _mm256_storeu_ps(to, units);
    }
    LutRowFloatPrepared(At<std::byte>(dst, x * kBytes), At<std::byte>(src, x * kBytes),
                        static_cast<int>(width - x), t0, t1, t2, t3);
}

}  // namespace

void LutRowFloat_Avx2(void* d, void* s, int w, void* t0, void* t1, void* t2, void* t3) {
    Row<Stores::cached>(d, s, w, t0, t1, t2, t3);
}
void LutRowFloatStreaming_Avx2(void* d, void* s, int w, void* t0, void* t1, void* t2, void* t3) {
    Row<Stores::streaming>(d, s, w, t0, t1, t2, t3);
}

}  // namespace zel::ip::x86

#endif
