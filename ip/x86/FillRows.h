#pragma once

/// Fill rows of x86 processors; ip/FillVariants.cpp lists them.

#include "ip/detail/FillVariants.h"

namespace zel::ip::x86 {

IpFillRowFn FillRow_Sse2, FillRowStreaming_Sse2;

}  // namespace zel::ip::x86
