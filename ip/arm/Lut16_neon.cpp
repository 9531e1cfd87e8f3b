#include "ip/detail/Cpu.h"
#if ZEL_NEON

#include "ip/arm/LutRows.h"
#include "ip/detail/LutPrepared.h"
#include "ip/detail/Memory.h"

#include <arm_neon.h>

namespace zel::ip::arm {

/// Two pixels: their indices leave the vector register a pixel at a time, their codes enter
/// it lane by lane.
void LutRow16_Neon(void* dst, void* src, int width, void* t0, void* t1, void* t2, void* t3) {
    constexpr std::ptrdiff_t kPixels = 2, kBytes = 8;
    const auto cell = [](void* table, std::uint64_t indices, int bit) {
        return reinterpret_cast<const std::uint16_t*>(
            At<std::uint32_t>(table, static_cast<std::ptrdiff_t>(indices >> bit & 1023)));
    };
    std::ptrdiff_t x = 0;
    for (; x + kPixels <= width; x += kPixels) {
        const uint16x8_t samples = Load<uint16x8_t>(At<std::byte>(src, x * kBytes));
        const uint64x2_t indices = vreinterpretq_u64_u16(vshrq_n_u16(samples, 6));
        const std::uint64_t first = vgetq_lane_u64(indices, 0), last = vgetq_lane_u64(indices, 1);
        uint16x8_t codes = vdupq_n_u16(0);
        codes = vld1q_lane_u16(cell(t0, first, 0), codes, 0);
        codes = vld1q_lane_u16(cell(t1, first, 16), codes, 1);
        codes = vld1q_lane_u16(cell(t2, first, 32), codes, 2);
        codes = vld1q_lane_u16(cell(t3, first, 48), codes, 3);
        codes = vld1q_lane_u16(cell(t0, last, 0), codes, 4);
        codes = vld1q_lane_u16(cell(t1, last, 16), codes, 5);
        codes = vld1q_lane_u16(cell(t2, last, 32), codes, 6);
        codes = vld1q_lane_u16(cell(t3, last, 48), codes, 7);
        Store(At<std::byte>(dst, x * kBytes), codes);
    }
    LutRow16Prepared(At<std::byte>(dst, x * kBytes), At<std::byte>(src, x * kBytes),
                     static_cast<int>(width - x), t0, t1, t2, t3);
}

}  // namespace zel::ip::arm

#endif
