#include "ip/detail/Cpu.h"
#if ZEL_NEON

#include "ip/arm/FillRows.h"
#include "ip/detail/Memory.h"

#include <algorithm>

#include <arm_neon.h>

namespace zel::ip::arm {

/// A line at a time; stores need no alignment.
void FillRow_Neon(void* row, std::ptrdiff_t bytes, const FillPattern& pattern) {
    constexpr std::ptrdiff_t kVector = 16, kLine = 64;
    const auto vector = Load<uint8x16_t>(pattern.data());
    std::ptrdiff_t at = 0;
    for (; at + kLine <= bytes; at += kLine)
        for (std::ptrdiff_t i = 0; i < kLine; i += kVector)
            Store(At<std::byte>(row, at + i), vector);
    for (; at < bytes; at += kVector)
        std::memcpy(At<std::byte>(row, at), pattern.data(),
                    static_cast<std::size_t>(std::min(kVector, bytes - at)));
}

}  // namespace zel::ip::arm

#endif
