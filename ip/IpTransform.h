#pragma once

/// Placing a cropped source frame in a destination frame of the same layout; what
/// the source does not cover becomes black.

#include "ip/IpTables.h"

#include <cstdint>

struct IpTransformArg {
    void* dstBase;             // row 0
    std::int32_t dstRowBytes;  // negative: the next row lies lower in memory
    std::int32_t dstWidth;     // pixels
    std::int32_t dstHeight;    // rows to produce
    void* srcBase;             // row 0
    std::int32_t srcRowBytes;  // as dstRowBytes
    std::int32_t srcWidth;     // pixels
    std::int32_t srcHeight;    // rows
    float offsetX;             // moves the source right
    float offsetY;             // moves the source up: source row = destination row + offsetY
    float cropLeft, cropTop;   // removed from the source
    float cropRight, cropBottom;
    bool flipVertical;  // reads the source's rows bottom-up
    bool inPixels;      // the six floats are pixels; else percentages of the source's
                        // width (offsetX, left, right) or height (the others)
};

/// Form of the scan transforms: pixels [0, startX) and [endX, width) of the
/// destination row become black, [startX, endX) come from source pixels srcX,
/// srcX + 1, ... No overlap.
using IpScanTransformFn = void(void* dstRow, void* srcRow, int width, int startX, int endX,
                               int srcX);

/// Four-channel pixels of 4, 8 and 16 bytes; black is all zeros.
void IpScan_Transform_Char4(void* dstRow, void* srcRow, int width, int startX, int endX, int srcX);
void IpScan_Transform_Short4(void* dstRow, void* srcRow, int width, int startX, int endX, int srcX);
void IpScan_Transform_Float4(void* dstRow, void* srcRow, int width, int startX, int endX, int srcX);

/// Pairs of pixels: every position is halved, truncating. Black is `blackPair`; the
/// two members take g_blackYUYV8 and g_blackUYVY8.
void IpScan_Transform_422_8(void* dst, void* src, int width, int startX, int endX, int srcX,
                            unsigned blackPair);
void IpScan_Transform_YUYV8(void* dstRow, void* srcRow, int width, int startX, int endX, int srcX);
void IpScan_Transform_UYVY8(void* dstRow, void* srcRow, int width, int startX, int endX, int srcX);

/// Whole words: position p is word 4 x p / 6, truncated. Word i of the destination
/// that becomes black takes word i of the black line, whose group goes on without end.
void IpScan_Transform_v210(void* dstRow, void* srcRow, int width, int startX, int endX, int srcX);

/// Finds the rows and columns that `arg` asks for and calls `scanFn` for the rows the
/// source covers and blackFn(row, 0, dstWidth) for the others. `arg` is only read.
///
///   order   rows upwards in memory in both frames: exactly one negative row byte
///           count turns the picture over
///   floats  truncated toward zero once each is in pixels; NaN is 0, values outside
///           the int range are its ends. offsetY drops to the even number nearer zero
///   left + right beyond srcWidth   nothing is left of the source
///   columns                        startX, endX and srcX are each rounded down to a
///           multiple of six, in every layout, so that v210 groups stay whole. The
///           last dstWidth % 6 columns are therefore always black
///
/// Caller's duty: as the three are rounded separately, up to five pixels past a source
/// row's end are read (never past srcWidth rounded up to a multiple of six). Those
/// bytes must be readable, in the last row too, and appear in the destination.
/// docs/quirks.md, "columns by six".
void IpFrame_Transform_Master(IpScanTransformFn* scanFn, IpScanBlackFn* blackFn,
                              IpTransformArg* arg);

/// One per storage class, with the scan member of the same name and, for uncovered
/// rows, the range blacker of BGRA8, BGRA16, BGRA32Float, YUYV8, UYVY8 or v210.
void IpFrame_Transform_Char4(IpTransformArg* arg);
void IpFrame_Transform_Short4(IpTransformArg* arg);
void IpFrame_Transform_Float4(IpTransformArg* arg);
void IpFrame_Transform_YUYV8(IpTransformArg* arg);
void IpFrame_Transform_UYVY8(IpTransformArg* arg);
void IpFrame_Transform_v210(IpTransformArg* arg);

/// Empty.
void IpFrame_Transform_Dummy(IpTransformArg* arg);
