#pragma once

/// Scaling. Most members are reserved names without effect.
///
///   dst, src                   row 0; the frames do not overlap
///   dstRowBytes, srcRowBytes   bytes from row to row
///   widths, heights            pixels; <= 0 in either frame does nothing

/// Packed words to opaque BGRA8, by the nearest source pixel: source index =
/// destination index x source extent / destination extent, truncated. A pixel becomes
/// what the IpScan_Copy member of the same layouts makes of it, and rows are walked as
/// IpFrame_Copy_Master walks them; so between equal extents this is that copy.
// clang-format off
void IpFrame_Scale_RGB10_To_BGRA8(void* dst, int dstRowBytes, int dstWidth, int dstHeight, void* src, int srcRowBytes, int srcWidth, int srcHeight);
void IpFrame_Scale_DpxBE_To_BGRA8(void* dst, int dstRowBytes, int dstWidth, int dstHeight, void* src, int srcRowBytes, int srcWidth, int srcHeight);
void IpFrame_Scale_DpxLE_To_BGRA8(void* dst, int dstRowBytes, int dstWidth, int dstHeight, void* src, int srcRowBytes, int srcWidth, int srcHeight);

/// Empty: nothing is read or written. docs/quirks.md, "empty members".
void IpFrame_Scale_YCbYCr8_To_BGRA8(void* dst, int dstRowBytes, int dstWidth, int dstHeight, void* src, int srcRowBytes, int srcWidth, int srcHeight);
void IpFrame_Scale_CbYCrY8_To_BGRA8(void* dst, int dstRowBytes, int dstWidth, int dstHeight, void* src, int srcRowBytes, int srcWidth, int srcHeight);
void IpFrame_Scale_v210_To_BGRA8(void* dst, int dstRowBytes, int dstWidth, int dstHeight, void* src, int srcRowBytes, int srcWidth, int srcHeight);
void IpFrame_Scale_8888_To_8888Master(void* dst, int dstRowBytes, int dstWidth, int dstHeight, void* src, int srcRowBytes, int srcWidth, int srcHeight);
void IpFrame_Scale_RGB8_To_RGB8(void* dst, int dstRowBytes, int dstWidth, int dstHeight, void* src, int srcRowBytes, int srcWidth, int srcHeight);
void IpFrame_Scale_YCbCr8_To_YCbCr8(void* dst, int dstRowBytes, int dstWidth, int dstHeight, void* src, int srcRowBytes, int srcWidth, int srcHeight);
void IpFrame_Scale_RGBA8_To_RGBA8(void* dst, int dstRowBytes, int dstWidth, int dstHeight, void* src, int srcRowBytes, int srcWidth, int srcHeight);
void IpFrame_Scale_BGRA8_To_BGRA8(void* dst, int dstRowBytes, int dstWidth, int dstHeight, void* src, int srcRowBytes, int srcWidth, int srcHeight);
void IpFrame_Scale_BGRX8_To_BGRX8(void* dst, int dstRowBytes, int dstWidth, int dstHeight, void* src, int srcRowBytes, int srcWidth, int srcHeight);
void IpFrame_Resize_BGRA8_To_BGRA8(void* dst, int dstRowBytes, int dstWidth, int dstHeight, void* src, int srcRowBytes, int srcWidth, int srcHeight);
// clang-format on
