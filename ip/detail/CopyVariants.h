#pragma once

/// The copy family's variants: one list for each conversion that has any, row 0 the
/// reference. The frame routines, the checker and `zelfx info` walk these lists.

#include "ip/IpCopy.h"
#include "ip/detail/Cpu.h"
#include "ip/detail/Rows.h"

#include <span>

namespace zel::ip {

struct CopyVariant {
    const char* name;
    Cpu needs;
    IpScanCopyFn* row;
    /// The same with stores past the caches; null where there is none.
    IpScanCopyFn* streamingRow;
};

struct CopyFamily {
    const char* name;
    int pixels, srcBytes, dstBytes;  // of a unit
    std::span<const CopyVariant> variants;
};

// clang-format off
extern const CopyFamily kPlainCopy, kEndian32;
extern const CopyFamily kBgraToRgb, kBgraToBgr, kBgraToArgb, kBgraToAbgr, kBgraToRgba, kRgbaToBgra;
extern const CopyFamily kRgbToBgra, kRgbToRgba, kRgbToArgb, kBgraToRgb16;
extern const CopyFamily kBgraToRGB10, kRgbToRGB10, kRgb16ToRGB10, kRGB10ToBgra;
extern const CopyFamily kBgraToDpxLE, kBgraToDpxBE, kDpxLEToBgra, kDpxBEToBgra;
extern const CopyFamily kVuyaToVuy, kVuyaToYCbYCr8;
extern const CopyFamily kRgbToV210, kRgbaToV210, kBgraToV210, kV210ToYCbYCr8;
// clang-format on

std::span<const CopyFamily* const> CopyFamilies();

/// Row by row in the order of their numbers, with one variant of a family.
void CopyRows(const CopyFamily& family, const CopyVariant& variant, Rows dst, Rows src, int width,
              int height);

/// IpFrame_Copy_Master with one variant of a family.
void CopyFrame(const CopyFamily& family, const CopyVariant& variant, void* dst, int dstRowBytes,
               void* src, int srcRowBytes, int width, int height);

/// The same with the variant for this processor.
void CopyFrame(const CopyFamily& family, void* dst, int dstRowBytes, void* src, int srcRowBytes,
               int width, int height);

}  // namespace zel::ip
