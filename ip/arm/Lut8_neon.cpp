#include "ip/detail/Cpu.h"
#if ZEL_NEON

#include "ip/arm/LutRows.h"
#include "ip/detail/LutPrepared.h"
#include "ip/detail/Memory.h"

#include <arm_neon.h>

namespace zel::ip::arm {

namespace {

/// Sixteen samples of one channel. A look-up beyond its 64 bytes leaves what is there, so
/// each quarter of the table fills in its own.
uint8x16_t Look(uint8x16_t samples, const std::uint8_t* table) {
    uint8x16_t codes = vqtbl4q_u8(vld1q_u8_x4(table), samples);
    for (int quarter = 1; quarter < 4; ++quarter) {
        samples = vsubq_u8(samples, vdupq_n_u8(64));
        codes = vqtbx4q_u8(codes, vld1q_u8_x4(table + 64 * quarter), samples);
    }
    return codes;
}

}  // namespace

void LutRow8_Neon(void* dst, void* src, int width, void* t0, void* t1, void* t2, void* t3) {
    constexpr std::ptrdiff_t kPixels = 16, kBytes = 4;
    void* const tables[4] = {t0, t1, t2, t3};
    std::ptrdiff_t x = 0;
    for (; x + kPixels <= width; x += kPixels) {
        uint8x16x4_t pixels =
            vld4q_u8(reinterpret_cast<const std::uint8_t*>(At<std::byte>(src, x * kBytes)));
        for (int c = 0; c < 4; ++c)
            pixels.val[c] = Look(pixels.val[c], static_cast<const std::uint8_t*>(tables[c]));
        vst4q_u8(reinterpret_cast<std::uint8_t*>(At<std::byte>(dst, x * kBytes)), pixels);
    }
    LutRow8Portable(At<std::byte>(dst, x * kBytes), At<std::byte>(src, x * kBytes),
                    static_cast<int>(width - x), t0, t1, t2, t3);
}

}  // namespace zel::ip::arm

#endif
