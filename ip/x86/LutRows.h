#pragma once

/// Look-up rows of x86 processors; ip/LutVariants.cpp lists them. Two of each: stores
/// into the caches, and past them.

#include "ip/IpLut.h"

namespace zel::ip::x86 {

/// 256-byte tables held in registers.
IpScanLutFn LutRow8_Avx512, LutRow8Streaming_Avx512;

/// Gathers from shifted tables that follow each other.
IpScanLutFn LutRow16_Avx2, LutRow16Streaming_Avx2;

/// Float tables, indices moved two at a time; or gathered.
IpScanLutFn LutRowFloat_Sse2, LutRowFloatStreaming_Sse2;
IpScanLutFn LutRowFloat_Avx2, LutRowFloatStreaming_Avx2;

}  // namespace zel::ip::x86
