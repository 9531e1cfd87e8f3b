#pragma once

/// The host's binary interface: pixel-format codes. A code is four characters,
/// the first one in the lowest byte, so the bytes in memory read as the text.

#include "abi/HostTypes.h"

#if defined(ZEL_USE_VENDOR_HEADERS)

#include "PrSDKPixelFormat.h"

#else

#if defined(_WIN32)
enum PrPixelFormat : std::int32_t {
#else
enum PrPixelFormat : std::uint32_t {
#endif
    PrPixelFormat_Any = 0,
    PrPixelFormat_BGRA_4444_8u = 0x61726762,      // bgra
    PrPixelFormat_ARGB_4444_8u = 0x62677261,      // argb
    PrPixelFormat_BGRA_4444_16u = 0x61726742,     // Bgra
    PrPixelFormat_ARGB_4444_16u = 0x62677241,     // Argb
    PrPixelFormat_BGRA_4444_32f = 0x61724742,     // BGra
    PrPixelFormat_ARGB_4444_32f = 0x62675241,     // ARgb
    PrPixelFormat_BGRX_4444_8u = 0x78726762,      // bgrx
    PrPixelFormat_VUYA_4444_8u = 0x61797576,      // vuya
    PrPixelFormat_V210_422_10u_601 = 0x30313276,  // v210
    PrPixelFormat_UYVY_422_8u_601 = 0x79767975,   // uyvy
    PrPixelFormat_Invalid = 0x66646162,           // badf
};

#endif
