#pragma once

/// Table look-ups over frames of four-channel pixels.
///
/// 8-bit frames take tables of 256 bytes, 16-bit and float frames tables of 1024
/// unsigned 16-bit cells holding 10-bit codes, 0..1023. Tables may start at any
/// address. Source and destination may be the same frame; they may not overlap
/// otherwise.

/// Form of the scan look-ups: `width` pixels of a row, memory channel i of a pixel
/// through table ti.
using IpScanLutFn = void(void* dst, void* src, int width, void* t0, void* t1, void* t2, void* t3);

/// Form of the frame look-ups that a format map can hold.
using IpFrameLutFn = void(void* dst, int dstRowBytes, void* src, int srcRowBytes, int width,
                          int height, void* tableR, void* tableG, void* tableB);

/// Byte samples through 256-byte tables.
void IpScan_Lut_8(void* dst, void* src, int width, void* t0, void* t1, void* t2, void* t3);

/// 16-bit samples, host byte order: the top ten bits are the index, the code found
/// is stored left-aligned again, so the six low bits of every channel come out 0.
void IpScan_Lut_16(void* dst, void* src, int width, void* t0, void* t1, void* t2, void* t3);

/// Float samples on the 0..1 scale: index = sample x 1023, truncated, clamped to
/// 0..1023 (NaN: 0); output = code / 1023. Channel 3 is looked up with channel 2's
/// index; its own source sample is never read. docs/quirks.md, "float alpha".
void IpScan_Lut_Float(void* dst, void* src, int width, void* t0, void* t1, void* t2, void* t3);

/// Maps rows 0 .. height - 1 with `scanFn`. Row bytes are signed and added as they
/// are; height <= 0 does nothing.
void IpFrame_Lut_Master(IpScanLutFn* scanFn, void* dst, int dstRowBytes, void* src, int srcRowBytes,
                        int width, int height, void* t0, void* t1, void* t2, void* t3);

/// One per layout: red, green and blue through the tables of their name, alpha
/// through the identity table (so 8-bit alpha passes, 16-bit alpha loses six bits,
/// float alpha is the red code).
// clang-format off
void IpFrame_Lut_RGBA8(void* dst, int dstRowBytes, void* src, int srcRowBytes, int width, int height, void* tableR, void* tableG, void* tableB);
void IpFrame_Lut_BGRA8(void* dst, int dstRowBytes, void* src, int srcRowBytes, int width, int height, void* tableR, void* tableG, void* tableB);
void IpFrame_Lut_ARGB8(void* dst, int dstRowBytes, void* src, int srcRowBytes, int width, int height, void* tableR, void* tableG, void* tableB);
void IpFrame_Lut_BGRA16(void* dst, int dstRowBytes, void* src, int srcRowBytes, int width, int height, void* tableR, void* tableG, void* tableB);
void IpFrame_Lut_ARGB16(void* dst, int dstRowBytes, void* src, int srcRowBytes, int width, int height, void* tableR, void* tableG, void* tableB);
void IpFrame_Lut_BGRAFloat(void* dst, int dstRowBytes, void* src, int srcRowBytes, int width, int height, void* tableR, void* tableG, void* tableB);
// clang-format on
