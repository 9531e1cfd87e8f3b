#pragma once

/// Fill rows of 64-bit ARM processors; ip/FillVariants.cpp lists them.

#include "ip/detail/FillVariants.h"

namespace zel::ip::arm {

IpFillRowFn FillRow_Neon;

}  // namespace zel::ip::arm
