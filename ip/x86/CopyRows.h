#pragma once

/// Copy rows of x86 processors; ip/CopyVariants.cpp lists them.

#include "ip/IpCopy.h"

namespace zel::ip::x86 {

IpScanCopyFn CopyRowStreaming_Sse2;

/// A vector holds the sixteen words of four groups.
IpScanCopyFn BgraToV210_Avx512, BgraToV210Streaming_Avx512;
IpScanCopyFn RgbaToV210_Avx512, RgbaToV210Streaming_Avx512;
IpScanCopyFn RgbToV210_Avx512, RgbToV210Streaming_Avx512;

IpScanCopyFn V210ToYCbYCr8_Avx2;

}  // namespace zel::ip::x86
