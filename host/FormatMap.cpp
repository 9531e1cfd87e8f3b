#include "host/CAEFxLut.h"

// clang-format off
const AEFxLutFormat AEFxLutFormatMap[5] = {
    {PrPixelFormat_BGRA_4444_8u,  IpFrame_Lut_BGRA8,     0},
    {PrPixelFormat_ARGB_4444_8u,  IpFrame_Lut_ARGB8,     0},
    {PrPixelFormat_BGRA_4444_16u, IpFrame_Lut_BGRA16,    1},
    {PrPixelFormat_BGRA_4444_32f, IpFrame_Lut_BGRAFloat, 1},  // deliberate: 10-bit tables
    {PrPixelFormat_ARGB_4444_16u, IpFrame_Lut_ARGB16,    1},
};
// clang-format on
