#pragma once

/// What the files of this folder share: functions for an instruction set, and rows whose
/// stores go past the caches.

#if defined(__GNUC__) && !defined(__clang__)
// GCC 12 takes its own undefined vectors, which the header passes where nothing is
// merged, for variables that someone forgot.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wuninitialized"
#pragma GCC diagnostic ignored "-Wmaybe-uninitialized"
#include <immintrin.h>
#pragma GCC diagnostic pop
#else
#include <immintrin.h>
#endif

#include <algorithm>
#include <cstddef>
#include <cstdint>

#define ZEL_AVX2 __attribute__((target("avx2")))
#define ZEL_AVX512 __attribute__((target("avx512f,avx512bw,avx512vl,avx512vbmi")))

/// Of what such functions call: out of line, vectors as results would depend on the flags
/// of the whole file, as GCC warns.
#define ZEL_AVX512_INLINE [[gnu::always_inline]] ZEL_AVX512 inline

namespace zel::ip::x86 {

/// How a row writes its destination. Stores past the caches need addresses that are
/// multiples of the vector.
enum class Stores { cached, streaming };

/// Units to write before `dst` is a multiple of `alignment`, at most `count`; -1 when it
/// never becomes one.
inline std::ptrdiff_t UnitsToAlign(const void* dst, std::ptrdiff_t count, std::size_t unitBytes,
                                   std::size_t alignment) {
    const std::size_t bytes = (0 - reinterpret_cast<std::uintptr_t>(dst)) % alignment;
    if (bytes % unitBytes != 0) return -1;
    return std::min(count, static_cast<std::ptrdiff_t>(bytes / unitBytes));
}

/// Asks for the line 4 KB ahead: far enough for memory, near enough for the first-level
/// cache. Past the end of a frame it asks in vain, which does no harm.
inline void PrefetchAhead(const void* at) {
    _mm_prefetch(static_cast<const char*>(at) + 4096, _MM_HINT_T0);
}

/// The same for a source and, where stores go into the caches, its destination: such a
/// store waits for the line that it overwrites.
template <Stores kStores>
void PrefetchAhead(const void* from, const void* to) {
    PrefetchAhead(from);
    if constexpr (kStores == Stores::cached) PrefetchAhead(to);
}

}  // namespace zel::ip::x86
