#include "ip/detail/Cpu.h"
#if ZEL_NEON

#include "ip/arm/LutRows.h"
#include "ip/detail/Memory.h"

#include <arm_neon.h>

namespace zel::ip::arm {

/// A pixel at a time. The conversion saturates and makes NaN 0, so that the clamps are
/// integer ones; indices leave the vector register in pairs.
void LutRowFloat_Neon(void* dst, void* src, int width, void* t0, void* t1, void* t2, void* t3) {
    constexpr std::ptrdiff_t kBytes = 16;
    const auto unit = [](void* table, std::uint64_t index) {
        return reinterpret_cast<const float*>(At<float>(table, static_cast<std::ptrdiff_t>(index)));
    };
    for (std::ptrdiff_t x = 0; x < width; ++x) {
        const auto samples = Load<float32x4_t>(At<std::byte>(src, x * kBytes));
        const int32x4_t code = vcvtq_s32_f32(vmulq_n_f32(samples, 1023.0f));
        const int32x4_t clamped = vminq_s32(vmaxq_s32(code, vdupq_n_s32(0)), vdupq_n_s32(1023));
        const uint64x2_t index = vreinterpretq_u64_s32(clamped);
        const std::uint64_t i01 = vgetq_lane_u64(index, 0);
        const std::uint64_t i2 = vgetq_lane_u64(index, 1) & 1023;
        float32x4_t units = vdupq_n_f32(0);
        units = vld1q_lane_f32(unit(t0, i01 & 1023), units, 0);
        units = vld1q_lane_f32(unit(t1, i01 >> 32), units, 1);
        units = vld1q_lane_f32(unit(t2, i2), units, 2);
        units = vld1q_lane_f32(unit(t3, i2), units, 3);
        Store(At<std::byte>(dst, x * kBytes), units);
    }
}

}  // namespace zel::ip::arm

#endif
