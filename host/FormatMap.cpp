#include "host/CAEFxLut.h"
#include "host/HostPolicy.h"
#include "host/Lut16Host.h"

namespace {

using zel::policy::kLeftAligned16;

constexpr IpFrameLutFn* kBGRA16 = kLeftAligned16 ? IpFrame_Lut_BGRA16 : zel::LutBGRA16Host;
constexpr IpFrameLutFn* kARGB16 = kLeftAligned16 ? IpFrame_Lut_ARGB16 : zel::LutARGB16Host;

}  // namespace

// clang-format off
const AEFxLutFormat AEFxLutFormatMap[5] = {
    {PrPixelFormat_BGRA_4444_8u,  IpFrame_Lut_BGRA8,     0},
    {PrPixelFormat_ARGB_4444_8u,  IpFrame_Lut_ARGB8,     0},
    {PrPixelFormat_BGRA_4444_16u, kBGRA16,               1},
    {PrPixelFormat_BGRA_4444_32f, IpFrame_Lut_BGRAFloat, 1},  // deliberate: 10-bit tables
    {PrPixelFormat_ARGB_4444_16u, kARGB16,               1},
};
// clang-format on
