#include "ip/detail/Cpu.h"
#if ZEL_NEON

#include "ip/arm/CopyRows.h"
#include "ip/detail/Memory.h"

#include <arm_neon.h>

namespace zel::ip::arm {

/// A group at a time: the top eight bits of a word's three codes become its low three
/// bytes, and those of a group its first twelve.
void V210ToYCbYCr8_Neon(void* dst, int, void* src, int, int width) {
    constexpr std::ptrdiff_t kSrcGroup = 16, kDstGroup = 12;
    // Y0 Cb0 Y1 Cr0, Y2 Cb1 Y3 Cr1, Y4 Cb2 Y5 Cr2; byte 4 x w + f is field f of word w.
    const uint8x16_t order = {1, 0, 4, 2, 6, 5, 9, 8, 12, 10, 14, 13, 0, 0, 0, 0};
    for (std::ptrdiff_t at = 0; at < width / 6; ++at) {
        const auto words = Load<uint32x4_t>(At<std::byte>(src, at * kSrcGroup));
        const uint32x4_t low = vandq_u32(vshrq_n_u32(words, 2), vdupq_n_u32(0xFF));
        const uint32x4_t middle = vandq_u32(vshrq_n_u32(words, 4), vdupq_n_u32(0xFF00));
        const uint32x4_t high = vandq_u32(vshrq_n_u32(words, 6), vdupq_n_u32(0xFF0000));
        const uint8x16_t bytes = vreinterpretq_u8_u32(vorrq_u32(vorrq_u32(low, middle), high));
        const uint8x16_t ordered = vqtbl1q_u8(bytes, order);
        std::memcpy(At<std::byte>(dst, at * kDstGroup), &ordered, kDstGroup);
    }
}

}  // namespace zel::ip::arm

#endif
