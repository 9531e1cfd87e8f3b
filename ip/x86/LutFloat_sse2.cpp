#include "ip/detail/Cpu.h"
#if ZEL_X86

#include "ip/detail/LutPrepared.h"
#include "ip/detail/Memory.h"
#include "ip/x86/LutRows.h"
#include "ip/x86/Target.h"

namespace zel::ip::x86 {

namespace {

/// One pixel. The maximum takes its second operand when the first is NaN. Indices leave
/// the vector register two at a time, which halves the moves.
inline __m128 Look(__m128 samples, void* t0, void* t1, void* t2, void* t3) {
    const __m128 top = _mm_set1_ps(1023.0f);
    const __m128 code = _mm_mul_ps(samples, top);
    const __m128 clamped = _mm_min_ps(_mm_max_ps(code, _mm_setzero_ps()), top);
    const __m128i index = _mm_cvttps_epi32(clamped);
    const __m128i indexHigh = _mm_unpackhi_epi64(index, index);
    const auto i01 = static_cast<std::uint64_t>(_mm_cvtsi128_si64(index));
    const std::int32_t i2 = _mm_cvtsi128_si32(indexHigh);
    const auto unit = [](void* table, std::ptrdiff_t i) {
        return _mm_set_ss(LoadAt<float>(table, i));
    };
    const __m128 u0 = unit(t0, static_cast<std::uint32_t>(i01));
    const __m128 u1 = unit(t1, static_cast<std::ptrdiff_t>(i01 >> 32));
    const __m128 u01 = _mm_unpacklo_ps(u0, u1);
    const __m128 u23 = _mm_unpacklo_ps(unit(t2, i2), unit(t3, i2));
    return _mm_movelh_ps(u01, u23);
}

template <Stores kStores>
void Row(void* dst, void* src, int width, void* t0, void* t1, void* t2, void* t3) {
    constexpr std::ptrdiff_t kBytes = 16;
    if constexpr (kStores == Stores::streaming)
        if (UnitsToAlign(dst, width, kBytes, kBytes) < 0)
            return Row<Stores::cached>(dst, src, width, t0, t1, t2, t3);
    for (std::ptrdiff_t x = 0; x < width; ++x) {
        const std::byte* const from = At<std::byte>(src, x * kBytes);
        auto* const to = reinterpret_cast<float*>(At<std::byte>(dst, x * kBytes));
        const __m128 samples = _mm_loadu_ps(reinterpret_cast<const float*>(from));
        const __m128 units = Look(samples, t0, t1, t2, t3);
        PrefetchAhead<kStores>(from, to);
        if constexpr (kStores == Stores::streaming)
            _mm_stream_ps(to, units);
        else
            _mm_storeu_ps(to, units);
    }
}

}  // namespace

void LutRowFloat_Sse2(void* d, void* s, int w, void* t0, void* t1, void* t2, void* t3) {
    Row<Stores::cached>(d, s, w, t0, t1, t2, t3);
}
void LutRowFloatStreaming_Sse2(void* d, void* s, int w, void* t0, void* t1, void* t2, void* t3) {
    Row<Stores::streaming>(d, s, w, t0, t1, t2, t3);
}

}  // namespace zel::ip::x86

#endif
