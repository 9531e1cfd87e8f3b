#pragma once

/// Copy rows of 64-bit ARM processors; ip/CopyVariants.cpp lists them.

#include "ip/IpCopy.h"

namespace zel::ip::arm {

IpScanCopyFn V210ToYCbYCr8_Neon;

}  // namespace zel::ip::arm
