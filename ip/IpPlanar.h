#pragma once

/// 4:2:0 planes to packed 8-bit 4:2:2.
///
///   dst, srcY, srcCb, srcCr   row 0 of each; no overlap
///   row bytes                 signed, added as they are
///   width                     pixels; an odd last one is not written
///   height                    destination rows; both chroma planes have half as many,
///                             rounded up

/// Destination row r takes luma row r and chroma row r / 2; no interpolation. Bytes of
/// a pair: Cb Y Cr Y. The two names are one routine.
void IpPlanar_Copy_420_To_CbYCrY8(void* dst, int dstRowBytes, void* srcY, int srcYRowBytes,
                                  void* srcCb, int srcCbRowBytes, void* srcCr, int srcCrRowBytes,
                                  int width, int height);
void IpPlanar_Copy_420_To_CbYCrY8_2(void* dst, int dstRowBytes, void* srcY, int srcYRowBytes,
                                    void* srcCb, int srcCbRowBytes, void* srcCr, int srcCrRowBytes,
                                    int width, int height);

/// The same with bytes Y Cb Y Cr.
void IpPlanar_Copy_420_To_YCbYCr8(void* dst, int dstRowBytes, void* srcY, int srcYRowBytes,
                                  void* srcCb, int srcCbRowBytes, void* srcCr, int srcCrRowBytes,
                                  int width, int height);
