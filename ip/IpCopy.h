#pragma once

/// Copies of rows and frames.

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

/// Placeholders of the family; they copy as IpScan_Copy and IpFrame_Copy do.
void IpScan_Dummy(void* dst, int dstRowBytes, void* src, int srcRowBytes, int width);
void IpFrame_Dummy(void* dst, int dstRowBytes, void* src, int srcRowBytes, int width, int height);
