#include "ip/detail/Cpu.h"
#if ZEL_X86

#include "ip/detail/Memory.h"
#include "ip/x86/CopyRows.h"
#include "ip/x86/Target.h"

namespace zel::ip::x86 {

/// Two groups at a time: the top eight bits of a word's three codes become its low three
/// bytes, and those of a group its first twelve.
ZEL_AVX2 void V210ToYCbYCr8_Avx2(void* dst, int dstRowBytes, void* src, int srcRowBytes,
                                 int width) {
    constexpr std::ptrdiff_t kSrcGroup = 16, kDstGroup = 12;
    const std::ptrdiff_t groups = width / 6;
    // Y0 Cb0 Y1 Cr0, Y2 Cb1 Y3 Cr1, Y4 Cb2 Y5 Cr2; byte 4 x w + f is field f of word w.
    const __m256i order = _mm256_broadcastsi128_si256(
        _mm_setr_epi8(1, 0, 4, 2, 6, 5, 9, 8, 12, 10, 14, 13, -1, -1, -1, -1));
    const __m256i together = _mm256_setr_epi32(0, 1, 2, 4, 5, 6, 7, 7);
    std::ptrdiff_t at = 0;
    for (; at + 2 <= groups; at += 2) {
        const auto* const from =
            reinterpret_cast<const __m256i*>(At<std::byte>(src, at * kSrcGroup));
        std::byte* const to = At<std::byte>(dst, at * kDstGroup);
        PrefetchAhead<Stores::cached>(from, to);
        const __m256i words = _mm256_loadu_si256(from);
        const auto field = [=](int shift, int bytes) ZEL_AVX2 {
            return _mm256_and_si256(_mm256_srli_epi32(words, shift), _mm256_set1_epi32(bytes));
        };
        const __m256i bytes =
            _mm256_or_si256(_mm256_or_si256(field(2, 0xFF), field(4, 0xFF00)), field(6, 0xFF0000));
        const __m256i ordered =
            _mm256_permutevar8x32_epi32(_mm256_shuffle_epi8(bytes, order), together);
        _mm_storeu_si128(reinterpret_cast<__m128i*>(to), _mm256_castsi256_si128(ordered));
        _mm_storel_epi64(reinterpret_cast<__m128i*>(to + 16), _mm256_extracti128_si256(ordered, 1));
    }
    IpScan_Copy_v210_To_YCbYCr8(At<std::byte>(dst, at * kDstGroup), dstRowBytes,
                                At<std::byte>(src, at * kSrcGroup), srcRowBytes,
                                static_cast<int>(width - at * 6));
}

}  // namespace zel::ip::x86

#endif
