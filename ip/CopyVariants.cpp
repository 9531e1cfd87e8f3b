#include "ip/detail/CopyVariants.h"

#include "ip/arm/CopyRows.h"
#include "ip/arm/PixelMapRows.h"
#include "ip/detail/Layouts.h"
#include "ip/detail/OpaqueRGB.h"
#include "ip/detail/PixelMaps.h"
#include "ip/detail/V210Pack.h"
#include "ip/detail/Variants.h"
#include "ip/x86/CopyRows.h"
#include "ip/x86/PixelMapRows.h"

namespace zel::ip {

namespace {

/// References of the members that have no scan routine.
template <Order To>
void OpaqueScan(void* dst, int, void* src, int, int width) {
    OpaqueRow<To>(dst, src, width);
}

// --- conversions of pixels --------------------------------------------------------------

using Word = std::uint32_t;
using Wide = std::uint64_t;

constexpr Word Same(Word word) { return word; }

// clang-format off
using BgraToArgb   = PixelMap<Word, Word, ByteReversed>;
using BgraToAbgr   = PixelMap<Word, Word, AbgrOfBgra>;
using BgraToRgba   = PixelMap<Word, Word, RgbaOfBgra>;
using BgraToRgb    = PixelMap<Word, Word, RgbOfBgra,  4, 3>;
using BgraToBgr    = PixelMap<Word, Word, Same,       4, 3>;
using RgbToBgra    = PixelMap<Word, Word, BgraOfRgb,  3>;
using RgbToRgba    = PixelMap<Word, Word, RgbaOfRgb,  3>;
using RgbToArgb    = PixelMap<Word, Word, ArgbOfRgb,  3>;
using BgraToRgb16  = PixelMap<Word, Wide, Rgb16OfBgra, 4, 6>;
using BgraToRGB10  = PixelMap<Word, Word, RGB10OfBgra>;
using RgbToRGB10   = PixelMap<Word, Word, RGB10OfRgb, 3>;
using Rgb16ToRGB10 = PixelMap<Wide, Word, RGB10OfRgb16, 6>;
using RGB10ToBgra  = PixelMap<Word, Word, BgraOfRGB10Word>;
using BgraToDpxLE  = PixelMap<Word, Word, DpxLEOfBgra>;
using BgraToDpxBE  = PixelMap<Word, Word, DpxBEOfBgra>;
using DpxLEToBgra  = PixelMap<Word, Word, BgraOfDpxLE>;
using DpxBEToBgra  = PixelMap<Word, Word, BgraOfDpxBE>;
using Reverse      = PixelMap<Word, Word, ByteReversed>;
using VuyaToVuy    = PixelMap<Word, Word, VuyOfVuya>;
using VuyaToYCbYCr = PixelMap<Wide, Word, YCbYCrOfVuya, 8, 4, 2>;

// --- the lists ------------------------------------------------------------------------

/// Fields of bits.
template <IpScanCopyFn* kScan, class Map>
constexpr CopyVariant kFields[] = {
    {"scalar",   Cpu::scalar,   kScan,                      nullptr},
    {"portable", Cpu::portable, PixelMapRow<Map>,           nullptr},
#if ZEL_X86
    {"sse2",     Cpu::sse2,     x86::LineRow_Sse2<Map>,     x86::LineRowStreaming_Sse2<Map>},
#endif
};

/// Fields of bits from three bytes: loading those apart is as good as loading a word.
template <IpScanCopyFn* kScan, class Map>
constexpr CopyVariant kOddFields[] = {
    {"scalar",   Cpu::scalar,   kScan,                      nullptr},
#if ZEL_X86
    {"sse2",     Cpu::sse2,     x86::LineRow_Sse2<Map>,     x86::LineRowStreaming_Sse2<Map>},
#endif
};

/// Whole bytes.
template <IpScanCopyFn* kScan, class Map>
constexpr CopyVariant kBytes[] = {
    {"scalar",   Cpu::scalar,   kScan,                      nullptr},
    {"portable", Cpu::portable, PixelMapRow<Map>,           nullptr},
#if ZEL_X86
    {"avx2",     Cpu::avx2,     x86::ShuffleRow_Avx2<Map>,  x86::ShuffleRowStreaming_Avx2<Map>},
#endif
#if ZEL_NEON
    {"neon",     Cpu::neon,     arm::ShuffleRow_Neon<Map>,  nullptr},
#endif
};

/// The same where the byte-by-byte loop is as good as any other without shuffles.
template <IpScanCopyFn* kScan, class Map>
constexpr CopyVariant kReordered[] = {
    {"scalar",   Cpu::scalar,   kScan,                      nullptr},
#if ZEL_X86
    {"avx2",     Cpu::avx2,     x86::ShuffleRow_Avx2<Map>,  x86::ShuffleRowStreaming_Avx2<Map>},
#endif
#if ZEL_NEON
    {"neon",     Cpu::neon,     arm::ShuffleRow_Neon<Map>,  nullptr},
#endif
};

/// Whole bytes, with no whole number of units in a vector.
template <IpScanCopyFn* kScan, class Map>
constexpr CopyVariant kOddBytes[] = {
    {"scalar",   Cpu::scalar,   kScan,                      nullptr},
    {"portable", Cpu::portable, PixelMapRow<Map>,           nullptr},
#if ZEL_X86
    {"avx2",     Cpu::avx2,     x86::ShuffleRow_Avx2<Map>,  nullptr},
#endif
#if ZEL_NEON
    {"neon",     Cpu::neon,     arm::ShuffleRow_Neon<Map>,  nullptr},
#endif
};

constexpr CopyVariant kPlainVariants[] = {
    {"scalar",   Cpu::scalar,   IpScan_Copy,                nullptr},
#if ZEL_X86
    {"sse2",     Cpu::sse2,     IpScan_Copy,                x86::CopyRowStreaming_Sse2},
#endif
};

constexpr CopyVariant kRgbToV210Variants[] = {
    {"scalar",   Cpu::scalar,   IpScan_Copy_RGB_To_v210,    nullptr},
    {"portable", Cpu::portable, PackV210Row<kRGB>,          nullptr},
#if ZEL_X86
    {"avx512",   Cpu::avx512,   x86::RgbToV210_Avx512,      x86::RgbToV210Streaming_Avx512},
#endif
};

constexpr CopyVariant kRgbaToV210Variants[] = {
    {"scalar",   Cpu::scalar,   IpScan_Copy_RGBA_To_v210,   nullptr},
    {"portable", Cpu::portable, PackV210Row<kRGBA>,         nullptr},
#if ZEL_X86
    {"avx512",   Cpu::avx512,   x86::RgbaToV210_Avx512,     x86::RgbaToV210Streaming_Avx512},
#endif
};

constexpr CopyVariant kBgraToV210Variants[] = {
    {"scalar",   Cpu::scalar,   IpScan_Copy_BGRA_To_v210,   nullptr},
    {"portable", Cpu::portable, PackV210Row<kBGRA>,         nullptr},
#if ZEL_X86
    {"avx512",   Cpu::avx512,   x86::BgraToV210_Avx512,     x86::BgraToV210Streaming_Avx512},
#endif
};

constexpr CopyVariant kV210ToYCbYCr8Variants[] = {
    {"scalar",   Cpu::scalar,   IpScan_Copy_v210_To_YCbYCr8, nullptr},
#if ZEL_X86
    {"avx2",     Cpu::avx2,     x86::V210ToYCbYCr8_Avx2,     nullptr},
#endif
#if ZEL_NEON
    {"neon",     Cpu::neon,     arm::V210ToYCbYCr8_Neon,     nullptr},
#endif
};

constexpr const CopyFamily* kFamilies[] = {
    &kPlainCopy,
    &kBgraToRgb,   &kBgraToBgr,   &kBgraToArgb,  &kBgraToAbgr,  &kBgraToRgba,  &kRgbaToBgra,
    &kRgbToBgra,   &kRgbToRgba,   &kRgbToArgb,   &kBgraToRgb16,
    &kBgraToRGB10, &kRgbToRGB10,  &kRgb16ToRGB10, &kRGB10ToBgra,
    &kBgraToDpxLE, &kBgraToDpxBE, &kDpxLEToBgra, &kDpxBEToBgra, &kEndian32,
    &kVuyaToVuy,   &kVuyaToYCbYCr8,
    &kRgbToV210,   &kRgbaToV210,  &kBgraToV210,  &kV210ToYCbYCr8,
};

}  // namespace

constexpr CopyFamily kPlainCopy    {"copy",              1,  1,  1, kPlainVariants};
constexpr CopyFamily kBgraToRgb    {"BGRA8 to RGB8",     1,  4,  3, kOddBytes<IpScan_Copy_BGRA_To_RGB,       BgraToRgb>};
constexpr CopyFamily kBgraToBgr    {"BGRA8 to BGR8",     1,  4,  3, kOddBytes<IpScan_Copy_BGRA_To_BGR,       BgraToBgr>};
constexpr CopyFamily kBgraToArgb   {"BGRA8 to ARGB8",    1,  4,  4, kReordered<IpScan_Copy_BGRA_To_ARGB,       BgraToArgb>};
constexpr CopyFamily kBgraToAbgr   {"BGRA8 to ABGR8",    1,  4,  4, kReordered<IpScan_Copy_BGRA_To_ABGR,       BgraToAbgr>};
constexpr CopyFamily kBgraToRgba   {"BGRA8 to RGBA8",    1,  4,  4, kReordered<IpScan_Copy_BGRA_To_RGBA,       BgraToRgba>};
constexpr CopyFamily kRgbaToBgra   {"RGBA8 to BGRA8",    1,  4,  4, kReordered<IpScan_Copy_RGBA8_To_BGRA8,     BgraToRgba>};
constexpr CopyFamily kRgbToBgra    {"RGB8 to BGRA8",     1,  3,  4, kBytes<IpScan_Copy_RGB_To_BGRA8,       RgbToBgra>};
constexpr CopyFamily kRgbToRgba    {"RGB8 to RGBA8",     1,  3,  4, kBytes<OpaqueScan<kRGBA>,              RgbToRgba>};
constexpr CopyFamily kRgbToArgb    {"RGB8 to ARGB8",     1,  3,  4, kBytes<OpaqueScan<kARGB>,              RgbToArgb>};
constexpr CopyFamily kBgraToRgb16  {"BGRA8 to RGB16",    1,  4,  6, kOddBytes<IpScan_Copy_BGRA_To_RGB16,     BgraToRgb16>};
constexpr CopyFamily kBgraToRGB10  {"BGRA8 to RGB10",    1,  4,  4, kFields<IpScan_Copy_BGRA_To_RGB10,      BgraToRGB10>};
constexpr CopyFamily kRgbToRGB10   {"RGB8 to RGB10",     1,  3,  4, kOddFields<IpScan_Copy_RGB8_To_RGB10,      RgbToRGB10>};
constexpr CopyFamily kRgb16ToRGB10 {"RGB16LE to RGB10",  1,  6,  4, kFields<IpScan_Copy_RGB16LE_To_RGB10,   Rgb16ToRGB10>};
constexpr CopyFamily kRGB10ToBgra  {"RGB10 to BGRA8",    1,  4,  4, kFields<IpScan_Copy_RGB10_To_BGRA8,     RGB10ToBgra>};
constexpr CopyFamily kBgraToDpxLE  {"BGRA8 to DpxLE",    1,  4,  4, kFields<IpScan_Copy_BGRA_To_DpxLE,      BgraToDpxLE>};
constexpr CopyFamily kBgraToDpxBE  {"BGRA8 to DpxBE",    1,  4,  4, kFields<IpScan_Copy_BGRA_To_DpxBE,      BgraToDpxBE>};
constexpr CopyFamily kDpxLEToBgra  {"DpxLE to BGRA8",    1,  4,  4, kFields<IpScan_Copy_DpxLE_To_BGRA8,     DpxLEToBgra>};
constexpr CopyFamily kDpxBEToBgra  {"DpxBE to BGRA8",    1,  4,  4, kFields<IpScan_Copy_DpxBE_To_BGRA8,     DpxBEToBgra>};
constexpr CopyFamily kEndian32     {"Endian32",          1,  4,  4, kReordered<IpScan_Copy_Endian32,           Reverse>};
constexpr CopyFamily kVuyaToVuy    {"VUYA8 to VUY8",     1,  4,  4, kBytes<IpScan_Copy_VUYA8_To_VUY8,      VuyaToVuy>};
constexpr CopyFamily kVuyaToYCbYCr8{"VUYA8 to YCbYCr8",  2,  8,  4, kOddBytes<IpScan_Copy_VUYA8_To_YCbYCr8,   VuyaToYCbYCr>};
constexpr CopyFamily kRgbToV210    {"RGB8 to v210",      6, 18, 16, kRgbToV210Variants};
constexpr CopyFamily kRgbaToV210   {"RGBA8 to v210",     6, 24, 16, kRgbaToV210Variants};
constexpr CopyFamily kBgraToV210   {"BGRA8 to v210",     6, 24, 16, kBgraToV210Variants};
constexpr CopyFamily kV210ToYCbYCr8{"v210 to YCbYCr8",   6, 16, 12, kV210ToYCbYCr8Variants};
// clang-format on

std::span<const CopyFamily* const> CopyFamilies() { return kFamilies; }

void CopyRows(const CopyFamily& family, const CopyVariant& variant, Rows dst, Rows src, int width,
              int height) {
    const std::int64_t rowBytes = std::int64_t{width} / family.pixels * family.dstBytes;
    const int dstRowBytes = static_cast<int>(dst.step), srcRowBytes = static_cast<int>(src.step);
    WithRow(variant, dst.first, src.first, rowBytes, height, [=](IpScanCopyFn* row) {
        ForEach(
            height, [=](void* to, void* from) { row(to, dstRowBytes, from, srcRowBytes, width); },
            dst, src);
    });
}

void CopyFrame(const CopyFamily& family, const CopyVariant& variant, void* dst, int dstRowBytes,
               void* src, int srcRowBytes, int width, int height) {
    CopyRows(family, variant, Upwards({dst, dstRowBytes}, height),
             Upwards({src, srcRowBytes}, height), width, height);
}

void CopyFrame(const CopyFamily& family, void* dst, int dstRowBytes, void* src, int srcRowBytes,
               int width, int height) {
    CopyFrame(family, Pick(family.variants), dst, dstRowBytes, src, srcRowBytes, width, height);
}

}  // namespace zel::ip
