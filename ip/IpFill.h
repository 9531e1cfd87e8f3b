#pragma once

/// Fills: one colour over a run of a row, or over a whole frame; and the colour
/// conversion that the YCbCr layouts need.
///
/// Colour arguments are always r, g, b, a in this order. With `normalised` set
/// they are on a 0..1 scale, scaled to the layout's codes and clamped; clear,
/// they are codes already (0..255, 0..65535 or 0..1023), raised to 0 and not
/// clamped from above. Codes are truncated, never rounded, NaN gives 0. A code too
/// wide for its field spills into the next one; docs/quirks.md, "wide codes".
///
/// layout       unit                  scale     packed as
/// RGBA8        pixel, 4 bytes        x 256     bytes R G B A (BGRA8, ARGB8: as named)
/// RGBA16       pixel, 8 bytes        x 65536   elements R G B A (BGRA16, ARGB16: as named)
/// BGRA32Float  pixel, 16 bytes       none      floats B G R A, clamped to 0..1; NaN stays
/// RGB10        pixel, 4 bytes        x 1023    R bits 0-9, G 10-19, B 20-29
/// DpxLe        pixel, 4 bytes        x 1024    (R << 24) + (G << 14) + (B << 4)
/// DpxBe        pixel, 4 bytes        x 1024    the DpxLe word, bytes reversed
/// YUYV8        2 pixels, 4 bytes     YUV8      bytes Y Cb Y Cr
/// UYVY8        2 pixels, 4 bytes     YUV8      bytes Cb Y Cr Y
/// v210         6 pixels, 16 bytes    -         always black, whatever the colour

#include <cstdint>

/// Full-range 8-bit Y, Cb, Cr of a colour, with the analogue YUV weights (0.299,
/// 0.587, 0.114 for Y). With `normalised` clear r, g, b are divided by 256 and
/// clamped to 0..1 first; set, they are taken as they are.
void IpRGBToYUV8(unsigned char* y, unsigned char* cb, unsigned char* cr, float r, float g, float b,
                 bool normalised);

/// The same in 10-bit codes, 0..1023; the chroma middle is 511.
void IpRGBToYUV10(unsigned int* y, unsigned int* cb, unsigned int* cr, float r, float g, float b,
                  bool normalised);

/// Form of the scan fills: `count` pixels from pixel `start` of a row. The 4:2:2
/// layouts write count / 2 pairs from pair start / 2, v210 count / 6 groups from
/// group start / 6.
using IpScanFillFn = void(void* scan, int start, int count, float r, float g, float b, float a,
                          bool normalised);

// clang-format off
void IpScan_Fill_RGBA8(void* scan, int start, int count, float r, float g, float b, float a, bool normalised);
void IpScan_Fill_BGRA8(void* scan, int start, int count, float r, float g, float b, float a, bool normalised);
void IpScan_Fill_ARGB8(void* scan, int start, int count, float r, float g, float b, float a, bool normalised);
void IpScan_Fill_RGBA16(void* scan, int start, int count, float r, float g, float b, float a, bool normalised);
void IpScan_Fill_BGRA16(void* scan, int start, int count, float r, float g, float b, float a, bool normalised);
void IpScan_Fill_ARGB16(void* scan, int start, int count, float r, float g, float b, float a, bool normalised);
void IpScan_Fill_BGRA32Float(void* scan, int start, int count, float r, float g, float b, float a, bool normalised);
void IpScan_Fill_RGB10(void* scan, int start, int count, float r, float g, float b, float a, bool normalised);
void IpScan_Fill_DpxLe(void* scan, int start, int count, float r, float g, float b, float a, bool normalised);
void IpScan_Fill_DpxBe(void* scan, int start, int count, float r, float g, float b, float a, bool normalised);
void IpScan_Fill_YUYV8(void* scan, int start, int count, float r, float g, float b, float a, bool normalised);
void IpScan_Fill_UYVY8(void* scan, int start, int count, float r, float g, float b, float a, bool normalised);
void IpScan_Fill_v210(void* scan, int start, int count, float r, float g, float b, float a, bool normalised);
// clang-format on

/// Fills the first `width` pixels of every row with `scanFn`. Negative row bytes
/// fill the same rows, starting at the lowest in memory; height <= 0 does nothing.
void IpFrame_Fill_Master(IpScanFillFn* scanFn, void* base, int rowBytes, int width, int height,
                         float r, float g, float b, float a, bool normalised);

// clang-format off
void IpFrame_Fill_RGBA8(void* base, int rowBytes, int width, int height, float r, float g, float b, float a, bool normalised);
void IpFrame_Fill_BGRA8(void* base, int rowBytes, int width, int height, float r, float g, float b, float a, bool normalised);
void IpFrame_Fill_ARGB8(void* base, int rowBytes, int width, int height, float r, float g, float b, float a, bool normalised);
void IpFrame_Fill_RGBA16(void* base, int rowBytes, int width, int height, float r, float g, float b, float a, bool normalised);
void IpFrame_Fill_BGRA16(void* base, int rowBytes, int width, int height, float r, float g, float b, float a, bool normalised);
void IpFrame_Fill_ARGB16(void* base, int rowBytes, int width, int height, float r, float g, float b, float a, bool normalised);
void IpFrame_Fill_BGRA32Float(void* base, int rowBytes, int width, int height, float r, float g, float b, float a, bool normalised);
void IpFrame_Fill_RGB10(void* base, int rowBytes, int width, int height, float r, float g, float b, float a, bool normalised);
void IpFrame_Fill_DpxLe(void* base, int rowBytes, int width, int height, float r, float g, float b, float a, bool normalised);
void IpFrame_Fill_DpxBe(void* base, int rowBytes, int width, int height, float r, float g, float b, float a, bool normalised);
void IpFrame_Fill_YUYV8(void* base, int rowBytes, int width, int height, float r, float g, float b, float a, bool normalised);
void IpFrame_Fill_UYVY8(void* base, int rowBytes, int width, int height, float r, float g, float b, float a, bool normalised);
void IpFrame_Fill_v210(void* base, int rowBytes, int width, int height, float r, float g, float b, float a, bool normalised);
// clang-format on
