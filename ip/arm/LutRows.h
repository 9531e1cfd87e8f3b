#pragma once

/// Look-up rows of 64-bit ARM processors; ip/LutVariants.cpp lists them.

#include "ip/IpLut.h"

namespace zel::ip::arm {

/// Table look-ups of 64 bytes, four to a table.
IpScanLutFn LutRow8_Neon;

/// ARM has no gathers: shifted and float tables, loaded into the lanes of a vector.
IpScanLutFn LutRow16_Neon, LutRowFloat_Neon;

}  // namespace zel::ip::arm
