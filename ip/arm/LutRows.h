#pragma once

/// Look-up rows of 64-bit ARM processors; ip/LutVariants.cpp lists them.

#include "ip/IpLut.h"

namespace zel::ip::arm {

/// Table look-ups of 64 bytes, four to a table. ARM has no gathers, so the other sample
/// types keep their portable rows.
IpScanLutFn LutRow8_Neon;

}  // namespace zel::ip::arm
