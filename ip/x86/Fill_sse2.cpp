#include "ip/detail/Cpu.h"
#if ZEL_X86

#include "ip/detail/Memory.h"
#include "ip/x86/FillRows.h"
#include "ip/x86/Target.h"

namespace zel::ip::x86 {

namespace {

/// The pattern as it reads from its byte `first` on.
FillPattern Turned(const FillPattern& pattern, std::ptrdiff_t first) {
    FillPattern turned;
    std::ranges::rotate_copy(pattern, pattern.begin() + first % 16, turned.begin());
    return turned;
}

/// From the start of a line on every store is aligned, whatever the unit: the pattern
/// turns instead.
template <Stores kStores>
void Row(void* row, std::ptrdiff_t bytes, const FillPattern& pattern) {
    constexpr std::ptrdiff_t kVector = 16, kLine = 64;
    auto* const to = static_cast<std::byte*>(row);
    std::ptrdiff_t at = std::max<std::ptrdiff_t>(UnitsToAlign(row, bytes, 1, kLine), 0);
    for (std::ptrdiff_t i = 0; i < at; ++i) to[i] = pattern[static_cast<std::size_t>(i % 16)];
    const FillPattern turned = Turned(pattern, at);
    const auto vector = Load<__m128i>(turned.data());
    for (; at + kLine <= bytes; at += kLine) {
        if constexpr (kStores == Stores::cached) PrefetchAhead(to + at);
        for (std::ptrdiff_t i = 0; i < kLine; i += kVector) {
            auto* const vectorAt = reinterpret_cast<__m128i*>(to + at + i);
            if constexpr (kStores == Stores::streaming)
                _mm_stream_si128(vectorAt, vector);
            else
                _mm_store_si128(vectorAt, vector);
        }
    }
    for (std::ptrdiff_t i = 0; at + i < bytes; ++i)
        to[at + i] = turned[static_cast<std::size_t>(i % 16)];
}

}  // namespace

void FillRow_Sse2(void* row, std::ptrdiff_t bytes, const FillPattern& pattern) {
    Row<Stores::cached>(row, bytes, pattern);
}
void FillRowStreaming_Sse2(void* row, std::ptrdiff_t bytes, const FillPattern& pattern) {
    Row<Stores::streaming>(row, bytes, pattern);
}

}  // namespace zel::ip::x86

#endif
