#pragma once

/// Test patterns drawn over a frame: a border and a line across the middle.
///
///   base        row 0; any alignment
///   rowBytes    signed bytes from row to row; dropped to the multiple of four nearer zero
///   width       pixels; the 4:2:2 members draw on width / 2 pairs
///   height      rows; <= 0 does nothing
///   reserved    not used

/// On words of 32 bits: `onValue` in rows 0, 1, height / 2, height - 2 and height - 1
/// and in columns 0 and width - 1; elsewhere `offValue` when `fillOff`, else nothing.
/// The border is two rows thick but one column: docs/quirks.md, "pattern border".
void IpFrame_Test_Long_Mono(void* base, int rowBytes, int width, int height, int reserved,
                            unsigned int onValue, unsigned int offValue, bool fillOff);

/// All bits set, nothing between the lines.
void IpFrame_Test_BGRA8(void* base, int rowBytes, int width, int height, int reserved);
void IpFrame_Test_RGB10(void* base, int rowBytes, int width, int height, int reserved);
void IpFrame_Test_DpxLe(void* base, int rowBytes, int width, int height, int reserved);
void IpFrame_Test_DpxBe(void* base, int rowBytes, int width, int height, int reserved);

/// White pairs, nothing between the lines. Each writes its pairs in the other's byte
/// order: YUYV8 as Cb Y Cr Y, UYVY8 as Y Cb Y Cr. docs/quirks.md, "pattern pairs".
void IpFrame_Test_YUYV8(void* base, int rowBytes, int width, int height, int reserved);
void IpFrame_Test_UYVY8(void* base, int rowBytes, int width, int height, int reserved);

/// Empty. docs/quirks.md, "empty members".
void IpFrame_Test_v210(void* base, int rowBytes, int width, int height, int reserved);
void IpFrame_Test_BGRA16(void* base, int rowBytes, int width, int height, int reserved);
