#include "ip/detail/Cpu.h"
#if ZEL_X86

#include "ip/detail/Memory.h"
#include "ip/x86/CopyRows.h"
#include "ip/x86/Target.h"

namespace zel::ip::x86 {

void CopyRowStreaming_Sse2(void* dst, int dstRowBytes, void* src, int srcRowBytes, int width) {
    constexpr std::ptrdiff_t kVector = 16, kLine = 64;
    const std::ptrdiff_t bytes = std::min(dstRowBytes, srcRowBytes);
    if (bytes < kLine) return IpScan_Copy(dst, dstRowBytes, src, srcRowBytes, width);
    std::ptrdiff_t at = UnitsToAlign(dst, bytes, 1, kLine);
    std::memcpy(dst, src, static_cast<std::size_t>(at));
    for (; at + kLine <= bytes; at += kLine) {
        const std::byte* const from = At<std::byte>(src, at);
        std::byte* const to = At<std::byte>(dst, at);
        PrefetchAhead(from);
        for (std::ptrdiff_t i = 0; i < kLine; i += kVector)
            _mm_stream_si128(reinterpret_cast<__m128i*>(to + i),
                             _mm_loadu_si128(reinterpret_cast<const __m128i*>(from + i)));
    }
    std::memcpy(At<std::byte>(dst, at), At<std::byte>(src, at),
                static_cast<std::size_t>(bytes - at));
}

}  // namespace zel::ip::x86

#endif
