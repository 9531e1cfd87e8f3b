#pragma once

/// Copies and conversions between layouts, row by row and frame by frame.
///
/// A frame member IpFrame_Copy_<from>_To_<to> walks its rows with the scan member
/// beside it, as IpFrame_Copy_Master describes; those that do not say so. Source
/// and destination must not overlap.
///
///   dst, src                   row 0 of a frame, or the row itself; any alignment
///   dstRowBytes, srcRowBytes   bytes from row to row; only IpScan_Copy and
///                              IpScan_Dummy, of the scan members, use them
///   width, height              pixels; <= 0 does nothing
///
/// Samples widen by shifting (8 to 10 bits: x 4, 8 to 16 bits: x 256) and narrow to
/// their top eight bits; nothing rounds. Layouts: docs/layouts.md.

// --- walk and plain copies ----------------------------------------------------

/// Form of the scan copies: one row of `width` pixels; both row byte counts are
/// the frames' and not negative.
using IpScanCopyFn = void(void* dst, int dstRowBytes, void* src, int srcRowBytes, int width);

/// Walks the rows of both frames upwards in memory, each from its lowest row, and
/// calls `scanFn` for every pair. So a copy comes out upside down when exactly one
/// of the row byte counts is negative. height <= 0 does nothing.
void IpFrame_Copy_Master(IpScanCopyFn* scanFn, void* dst, int dstRowBytes, void* src,
                         int srcRowBytes, int width, int height);

/// Copies the smaller of the two row byte counts; the width is not used.
void IpScan_Copy(void* dst, int dstRowBytes, void* src, int srcRowBytes, int width);
void IpFrame_Copy(void* dst, int dstRowBytes, void* src, int srcRowBytes, int width, int height);

/// Spare entries of the family; they copy as IpScan_Copy and IpFrame_Copy do.
void IpScan_Dummy(void* dst, int dstRowBytes, void* src, int srcRowBytes, int width);
void IpFrame_Dummy(void* dst, int dstRowBytes, void* src, int srcRowBytes, int width, int height);

/// Reverses the bytes of `width` 32-bit words in each row.
void IpScan_Copy_Endian32(void* dst, int dstRowBytes, void* src, int srcRowBytes, int width);
void IpFrame_Copy_Endian32(void* dst, int dstRowBytes, void* src, int srcRowBytes, int width,
                           int height);

/// Turns a frame upside down in place: rowBytes / 4 words of every row change places
/// with those of its mirror row. Negative row bytes do nothing.
void IpFrame_Flip(void* base, int rowBytes, int height);

// --- 8-bit RGB orders (IpCopyRGB.cpp) -----------------------------------------

/// For each pixel the bytes dst[d0] = src[s0], dst[d1] = src[s1], dst[d2] = src[s2],
/// in this order, and dst[d3] = src[s3] unless d3 or s3 is -1. Steps: bytes from
/// pixel to pixel.
void IpScan_Copy_RGBA_To_RGBA_General(void* dst, int d0, int d1, int d2, int d3, int dstStep,
                                      void* src, int s0, int s1, int s2, int s3, int srcStep,
                                      int width);

/// Reorderings; alpha goes along where both layouts have it.
// clang-format off
void IpScan_Copy_BGRA_To_RGB(void* dst, int dstRowBytes, void* src, int srcRowBytes, int width);
void IpScan_Copy_BGRA_To_BGR(void* dst, int dstRowBytes, void* src, int srcRowBytes, int width);
void IpScan_Copy_BGRA_To_ARGB(void* dst, int dstRowBytes, void* src, int srcRowBytes, int width);
void IpScan_Copy_BGRA_To_ABGR(void* dst, int dstRowBytes, void* src, int srcRowBytes, int width);
void IpScan_Copy_BGRA_To_RGBA(void* dst, int dstRowBytes, void* src, int srcRowBytes, int width);
void IpScan_Copy_RGBA8_To_BGRA8(void* dst, int dstRowBytes, void* src, int srcRowBytes, int width);
void IpFrame_Copy_BGRA8_To_RGB8(void* dst, int dstRowBytes, void* src, int srcRowBytes, int width, int height);
void IpFrame_Copy_BGRA8_To_BGR8(void* dst, int dstRowBytes, void* src, int srcRowBytes, int width, int height);
void IpFrame_Copy_BGRA8_To_ARGB8(void* dst, int dstRowBytes, void* src, int srcRowBytes, int width, int height);
void IpFrame_Copy_BGRA8_To_ABGR8(void* dst, int dstRowBytes, void* src, int srcRowBytes, int width, int height);
void IpFrame_Copy_BGRA8_To_RGBA8(void* dst, int dstRowBytes, void* src, int srcRowBytes, int width, int height);
void IpFrame_Copy_RGBA8_To_BGRA8(void* dst, int dstRowBytes, void* src, int srcRowBytes, int width, int height);

/// Alpha becomes 255.
void IpScan_Copy_RGB_To_BGRA8(void* dst, int dstRowBytes, void* src, int srcRowBytes, int width);
void IpFrame_Copy_RGB8_To_BGRA8(void* dst, int dstRowBytes, void* src, int srcRowBytes, int width, int height);

/// Alpha becomes 255. No scan member; rows correspond by number, with the signed row
/// bytes as they are, so these never flip. docs/quirks.md, "signed rows".
void IpFrame_Copy_RGB8_To_RGBA8(void* dst, int dstRowBytes, void* src, int srcRowBytes, int width, int height);
void IpFrame_Copy_RGB8_To_ARGB8(void* dst, int dstRowBytes, void* src, int srcRowBytes, int width, int height);

/// To three big-endian 16-bit elements R, G, B: each sample x 256.
void IpScan_Copy_BGRA_To_RGB16(void* dst, int dstRowBytes, void* src, int srcRowBytes, int width);
void IpFrame_Copy_BGRA8_To_RGB16(void* dst, int dstRowBytes, void* src, int srcRowBytes, int width, int height);

/// Empty: these reorderings in place do nothing. docs/quirks.md, "empty members".
void IpFrame_Swap_ARGB8_To_BGRA8(void* base, int rowBytes, int width, int height);
void IpFrame_Swap_ABGR8_To_BGRA8(void* base, int rowBytes, int width, int height);
void IpFrame_Swap_RGBA8_To_BGRA8(void* base, int rowBytes, int width, int height);
void IpFrame_Swap_BGR8_To_RGB8(void* base, int rowBytes, int width, int height);
void IpFrame_Swap_ARGB8_To_ABGR8(void* base, int rowBytes, int width, int height);

// --- RGB10 words (IpCopyRGB10.cpp) ----------------------------------------------

/// Packs src[rIndex] x 4 + (src[gIndex] << 12) + (src[bIndex] << 24) for each pixel of
/// srcStep bytes. Blue is two bits above its field; docs/quirks.md, "RGB10 blue".
void IpScan_Copy_RGBA_To_RGB10_General(void* dst, int dstRowBytes, void* src, int srcRowBytes, int width, int rIndex, int gIndex, int bIndex, int srcStep);

/// By the General routine.
void IpScan_Copy_BGRA_To_RGB10(void* dst, int dstRowBytes, void* src, int srcRowBytes, int width);
void IpFrame_Copy_BGRA8_To_RGB10(void* dst, int dstRowBytes, void* src, int srcRowBytes, int width, int height);

/// Blue in its field at bit 20, less 0x40000000, which sets bits 30 and 31;
/// docs/quirks.md, "RGB10 top bits".
void IpScan_Copy_RGB8_To_RGB10(void* dst, int dstRowBytes, void* src, int srcRowBytes, int width);
void IpFrame_Copy_RGB8_To_RGB10(void* dst, int dstRowBytes, void* src, int srcRowBytes, int width, int height);

/// From three little-endian 16-bit elements R, G, B: the top ten bits of each.
void IpScan_Copy_RGB16LE_To_RGB10(void* dst, int dstRowBytes, void* src, int srcRowBytes, int width);
void IpFrame_Copy_RGB16LE_To_RGB10(void* dst, int dstRowBytes, void* src, int srcRowBytes, int width, int height);

/// The top eight bits of each code, alpha 255.
void IpScan_Copy_RGB10_To_BGRA8(void* dst, int dstRowBytes, void* src, int srcRowBytes, int width);
void IpFrame_Copy_RGB10_To_BGRA8(void* dst, int dstRowBytes, void* src, int srcRowBytes, int width, int height);

// --- DPX words (IpCopyDpx.cpp) ----------------------------------------------------

/// Packs (src[rIndex] << 24) + (src[gIndex] << 14) + (src[bIndex] << 4) for each pixel
/// of srcStep bytes, its bytes reversed when `bigEndian`.
void IpScan_Copy_RGBA_To_Dpx_General(void* dst, int dstRowBytes, void* src, int srcRowBytes, int width, int rIndex, int gIndex, int bIndex, int srcStep, bool bigEndian);

/// By the General routine.
void IpScan_Copy_BGRA_To_DpxLE(void* dst, int dstRowBytes, void* src, int srcRowBytes, int width);
void IpScan_Copy_BGRA_To_DpxBE(void* dst, int dstRowBytes, void* src, int srcRowBytes, int width);
void IpFrame_Copy_BGRA8_To_DpxLE(void* dst, int dstRowBytes, void* src, int srcRowBytes, int width, int height);
void IpFrame_Copy_BGRA8_To_DpxBE(void* dst, int dstRowBytes, void* src, int srcRowBytes, int width, int height);

/// The top eight bits of each code, alpha 255.
void IpScan_Copy_DpxLE_To_BGRA8(void* dst, int dstRowBytes, void* src, int srcRowBytes, int width);
void IpScan_Copy_DpxBE_To_BGRA8(void* dst, int dstRowBytes, void* src, int srcRowBytes, int width);
void IpFrame_Copy_DpxLE_To_BGRA8(void* dst, int dstRowBytes, void* src, int srcRowBytes, int width, int height);
void IpFrame_Copy_DpxBE_To_BGRA8(void* dst, int dstRowBytes, void* src, int srcRowBytes, int width, int height);

// --- v210 groups (IpCopyV210.cpp) ---------------------------------------------------

/// Packs each whole group of six pixels of srcStep bytes; the last width % 6 pixels
/// are not written. Codes by IpRGBToYUV10; the three chroma samples are those of the
/// group's pixels 0, 1 and 2. docs/quirks.md, "v210 chroma".
void IpScan_Copy_RGB_To_v210_General(void* dst, int dstRowBytes, void* src, int srcRowBytes, int width, int rIndex, int gIndex, int bIndex, int srcStep);

/// By the General routine.
void IpScan_Copy_RGB_To_v210(void* dst, int dstRowBytes, void* src, int srcRowBytes, int width);
void IpScan_Copy_RGBA_To_v210(void* dst, int dstRowBytes, void* src, int srcRowBytes, int width);
void IpScan_Copy_BGRA_To_v210(void* dst, int dstRowBytes, void* src, int srcRowBytes, int width);
void IpFrame_Copy_RGB8_To_v210(void* dst, int dstRowBytes, void* src, int srcRowBytes, int width, int height);
void IpFrame_Copy_RGBA8_To_v210(void* dst, int dstRowBytes, void* src, int srcRowBytes, int width, int height);
void IpFrame_Copy_BGRA8_To_v210(void* dst, int dstRowBytes, void* src, int srcRowBytes, int width, int height);

/// Each whole group to three words Y Cb Y Cr: the top eight bits of each code.
void IpScan_Copy_v210_To_YCbYCr8(void* dst, int dstRowBytes, void* src, int srcRowBytes, int width);
void IpFrame_Copy_v210_To_YCbYCr8(void* dst, int dstRowBytes, void* src, int srcRowBytes, int width, int height);

/// Unfinished: converts into a scratch frame of width x 2 x height bytes, which is
/// dropped; the destination is not written. docs/quirks.md, "unfinished members".
void IpFrame_Copy_v210_To_BGRA8(void* dst, int dstRowBytes, void* src, int srcRowBytes, int width, int height);

// --- 8-bit YCbCr (IpCopyYCbCr8.cpp) ---------------------------------------------------

/// Four bytes per pixel: V A A Y. docs/quirks.md, "VUY8".
void IpScan_Copy_VUYA8_To_VUY8(void* dst, int dstRowBytes, void* src, int srcRowBytes, int width);
void IpFrame_Copy_VUYA8_To_VUY8(void* dst, int dstRowBytes, void* src, int srcRowBytes, int width, int height);

/// width / 2 words: U of the first pixel, Y of the second, V and Y of the first.
/// docs/quirks.md, "VUYA8 pair".
void IpScan_Copy_VUYA8_To_YCbYCr8(void* dst, int dstRowBytes, void* src, int srcRowBytes, int width);
void IpFrame_Copy_VUYA8_To_YCbYCr8(void* dst, int dstRowBytes, void* src, int srcRowBytes, int width, int height);

/// Unfinished: opaque black, by way of a zero-filled RGB8 scratch frame of
/// width x 3 x height bytes; the source is not read. Without memory for it nothing is
/// written. Rows by their signed row bytes. docs/quirks.md, "unfinished members".
void IpFrame_Copy_YCbYCr8_To_RGBA8(void* dst, int dstRowBytes, void* src, int srcRowBytes, int width, int height);
void IpFrame_Copy_CbYCrY8_To_RGBA8(void* dst, int dstRowBytes, void* src, int srcRowBytes, int width, int height);
void IpFrame_Copy_YCbCr8_To_ARGB8(void* dst, int dstRowBytes, void* src, int srcRowBytes, int width, int height);

/// Empty: nothing is read or written. docs/quirks.md, "empty members".
void IpFrame_Copy_YCbYCr8_To_BGRA8(void* dst, int dstRowBytes, void* src, int srcRowBytes, int width, int height);
void IpFrame_Copy_YCbCr8_To_RGB8(void* dst, int dstRowBytes, void* src, int srcRowBytes, int width, int height);
void IpFrame_Copy_CbYCrY8_To_RGB8(void* dst, int dstRowBytes, void* src, int srcRowBytes, int width, int height);
void IpFrame_Copy_BGRA8_To_YCbYCr8(void* dst, int dstRowBytes, void* src, int srcRowBytes, int width, int height);
void IpFrame_Copy_BGRA8_To_CbYCrY8(void* dst, int dstRowBytes, void* src, int srcRowBytes, int width, int height);
void IpFrame_Copy_RGB8_To_CbYCrY8(void* dst, int dstRowBytes, void* src, int srcRowBytes, int width, int height);
void IpFrame_Copy_CbYCrY8_To_BGRA8(void* dst, int dstRowBytes, void* src, int srcRowBytes, int width, int height);
// clang-format on
