#pragma once

/// Conversions of pixels with the byte shuffles of 64-bit ARM processors.

#include "ip/detail/Cpu.h"
#if ZEL_NEON

#include "ip/detail/PixelMaps.h"

#include <arm_neon.h>

namespace zel::ip::arm {

template <class Map>
void ShuffleRow_Neon(void* dst, int, void* src, int, int width) {
    static constexpr Shuffle<Map> kShuffle;
    constexpr std::ptrdiff_t kUnits = Shuffle<Map>::kUnits;
    const std::ptrdiff_t units = width / Map::kPixels;
    const auto order = Load<uint8x16_t>(kShuffle.order.data());
    const auto ones = Load<uint8x16_t>(kShuffle.ones.data());
    // Whole vectors are read and written, so a row's last units are left over.
    constexpr std::ptrdiff_t kReach = 16 / std::min(Map::kFromBytes, Map::kToBytes) + 1;
    std::ptrdiff_t at = 0;
    for (; at + kReach <= units; at += kUnits) {
        const auto bytes = Load<uint8x16_t>(At<std::byte>(src, at * Map::kFromBytes));
        Store(At<std::byte>(dst, at * Map::kToBytes), vorrq_u8(vqtbl1q_u8(bytes, order), ones));
    }
    ConvertUnits<Map>(dst, src, at, units - at);
}

}  // namespace zel::ip::arm

#endif
