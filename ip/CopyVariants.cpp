#include "ip/detail/CopyVariants.h"

#include "ip/detail/Layouts.h"
#include "ip/detail/Units.h"
#include "ip/detail/V210Weights.h"
#include "ip/detail/Variants.h"
#include "ip/x86/CopyRows.h"

#include <algorithm>

namespace zel::ip {

namespace {

// --- portable rows: whole words, shifted and masked ----------------------------------

/// Of a BGRA8 pixel as a word: red in bits 16-23, green in 8-15, blue in 0-7.
void BgraToDpxLE(void* dst, int, void* src, int, int width) {
    MapUnits<std::uint32_t>(dst, src, width, [](std::uint32_t bgra) {
        return (bgra << 8 & 0xFF000000u) | (bgra << 6 & 0x003FC000u) | (bgra << 4 & 0x00000FF0u);
    });
}

/// The same word with its bytes reversed, which parts green and blue.
void BgraToDpxBE(void* dst, int, void* src, int, int width) {
    MapUnits<std::uint32_t>(dst, src, width, [](std::uint32_t bgra) {
        return (bgra >> 16 & 0x000000FFu) | (bgra >> 2 & 0x00003F00u) | (bgra << 14 & 0x00C00000u) |
               (bgra << 12 & 0x000F0000u) | bgra << 28;
    });
}

void DpxBEToBgra(void* dst, int, void* src, int, int width) {
    MapUnits<std::uint32_t>(dst, src, width, [](std::uint32_t dpx) {
        return (dpx << 16 & 0x00FF0000u) | (dpx << 2 & 0x0000FC00u) | (dpx >> 14 & 0x00000300u) |
               (dpx >> 12 & 0x000000F0u) | dpx >> 28 | 0xFF000000u;
    });
}

void BgraToRgb16(void* dst, int, void* src, int, int width) {
    const auto widen = [](void* to, void* from) {
        const auto bgra = Load<std::uint32_t>(from);
        Store(to, (bgra >> 16 & 0xFFu) | (bgra << 8 & 0xFF0000u));
        Store(At<std::uint32_t>(to, 1), static_cast<std::uint16_t>(bgra & 0xFFu));
    };
    ForEach(width, widen, Units{dst, 6}, UnitsOf<std::uint32_t>(src));
}

void VuyaToVuy(void* dst, int, void* src, int, int width) {
    MapUnits<std::uint32_t>(dst, src, width, [](std::uint32_t vuya) {
        return (vuya & 0xFFu) | (vuya >> 24) * 0x010100u | (vuya << 8 & 0xFF000000u);
    });
}

// --- portable v210: channels apart, so that a compiler makes vectors of them ----------

constexpr int kChunkGroups = 8, kChunkPixels = 6 * kChunkGroups;

struct Samples {
    float r[kChunkPixels], g[kChunkPixels], b[kChunkPixels];
};

/// Codes outside 0..1023 are not far outside.
std::uint32_t Code(float value) {
    return static_cast<std::uint32_t>(std::clamp(static_cast<int>(value), 0, 1023));
}

template <int kCount>
void Convert(const Samples& s, const V210Weights& w, std::uint32_t* codes) {
    for (int i = 0; i < kCount; ++i)
        codes[i] = Code((s.r[i] * w.r + s.g[i] * w.g + s.b[i] * w.b + w.bias) * 1023.0f);
}

/// `pixels` of the chunk's are there, a multiple of six.
template <Order From>
void PackChunk(void* dst, void* src, int pixels) {
    Samples s{};
    ForEach(
        pixels,
        [&](const std::byte* from, std::ptrdiff_t i) {
            s.r[i] = std::to_integer<std::uint8_t>(from[From.r]);
            s.g[i] = std::to_integer<std::uint8_t>(from[From.g]);
            s.b[i] = std::to_integer<std::uint8_t>(from[From.b]);
        },
        Units{src, From.elements}, Numbers{});
    std::uint32_t y[kChunkPixels], cb[kChunkPixels], cr[kChunkPixels];
    Convert<kChunkPixels>(s, kV210Y, y);
    Convert<kChunkPixels>(s, kV210Cb, cb);
    Convert<kChunkPixels>(s, kV210Cr, cr);
    ForEach(
        pixels / 6,
        [&](void* to, std::ptrdiff_t group) {
            const std::uint32_t *const gy = y + 6 * group, *const gb = cb + 6 * group,
                                       *const gr = cr + 6 * group;
            const V210Codes codes{{gy[0], gy[1], gy[2], gy[3], gy[4], gy[5]},
                                  {gb[0], gb[1], gb[2]},
                                  {gr[0], gr[1], gr[2]}};
            Store(to, PackV210(codes));
        },
        UnitsOf<V210Words>(dst), Numbers{});
}

template <Order From>
void ToV210(void* dst, int, void* src, int, int width) {
    const int pixels = std::max(width, 0) / 6 * 6;
    for (int x = 0; x < pixels; x += kChunkPixels)
        PackChunk<From>(At<V210Words>(dst, x / 6),
                        At<std::byte>(src, std::ptrdiff_t{x} * From.elements),
                        std::min(kChunkPixels, pixels - x));
}

// --- the lists ------------------------------------------------------------------------

// clang-format off
constexpr CopyVariant kPlainVariants[] = {
    {"scalar",   Cpu::scalar,   IpScan_Copy,                nullptr},
#if ZEL_X86
    {"sse2",     Cpu::sse2,     IpScan_Copy,                x86::CopyRowStreaming_Sse2},
#endif
};

constexpr CopyVariant kBgraToRgb16Variants[] = {
    {"scalar",   Cpu::scalar,   IpScan_Copy_BGRA_To_RGB16,  nullptr},
    {"portable", Cpu::portable, BgraToRgb16,                nullptr},
};

constexpr CopyVariant kVuyaToVuyVariants[] = {
    {"scalar",   Cpu::scalar,   IpScan_Copy_VUYA8_To_VUY8,  nullptr},
    {"portable", Cpu::portable, VuyaToVuy,                  nullptr},
};

constexpr CopyVariant kBgraToDpxLEVariants[] = {
    {"scalar",   Cpu::scalar,   IpScan_Copy_BGRA_To_DpxLE,  nullptr},
    {"portable", Cpu::portable, BgraToDpxLE,                nullptr},
};

constexpr CopyVariant kBgraToDpxBEVariants[] = {
    {"scalar",   Cpu::scalar,   IpScan_Copy_BGRA_To_DpxBE,  nullptr},
    {"portable", Cpu::portable, BgraToDpxBE,                nullptr},
};

constexpr CopyVariant kDpxBEToBgraVariants[] = {
    {"scalar",   Cpu::scalar,   IpScan_Copy_DpxBE_To_BGRA8, nullptr},
    {"portable", Cpu::portable, DpxBEToBgra,                nullptr},
};

constexpr CopyVariant kRgbToV210Variants[] = {
    {"scalar",   Cpu::scalar,   IpScan_Copy_RGB_To_v210,    nullptr},
    {"portable", Cpu::portable, ToV210<kRGB>,               nullptr},
};

constexpr CopyVariant kRgbaToV210Variants[] = {
    {"scalar",   Cpu::scalar,   IpScan_Copy_RGBA_To_v210,   nullptr},
    {"portable", Cpu::portable, ToV210<kRGBA>,              nullptr},
#if ZEL_X86
    {"avx512",   Cpu::avx512,   x86::RgbaToV210_Avx512,     x86::RgbaToV210Streaming_Avx512},
#endif
};

constexpr CopyVariant kBgraToV210Variants[] = {
    {"scalar",   Cpu::scalar,   IpScan_Copy_BGRA_To_v210,   nullptr},
    {"portable", Cpu::portable, ToV210<kBGRA>,              nullptr},
#if ZEL_X86
    {"avx512",   Cpu::avx512,   x86::BgraToV210_Avx512,     x86::BgraToV210Streaming_Avx512},
#endif
};

constexpr CopyVariant kV210ToYCbYCr8Variants[] = {
    {"scalar",   Cpu::scalar,   IpScan_Copy_v210_To_YCbYCr8, nullptr},
#if ZEL_X86
    {"avx2",     Cpu::avx2,     x86::V210ToYCbYCr8_Avx2,     nullptr},
#endif
};

constexpr const CopyFamily* kFamilies[] = {
    &kPlainCopy, &kBgraToRgb16, &kVuyaToVuy,  &kBgraToDpxLE,   &kBgraToDpxBE, &kDpxBEToBgra,
    &kRgbToV210, &kRgbaToV210,  &kBgraToV210, &kV210ToYCbYCr8,
};

}  // namespace

constexpr CopyFamily kPlainCopy    {"copy",             1,  1,  1, kPlainVariants};
constexpr CopyFamily kBgraToRgb16  {"BGRA8 to RGB16",   1,  4,  6, kBgraToRgb16Variants};
constexpr CopyFamily kVuyaToVuy    {"VUYA8 to VUY8",    1,  4,  4, kVuyaToVuyVariants};
constexpr CopyFamily kBgraToDpxLE  {"BGRA8 to DpxLE",   1,  4,  4, kBgraToDpxLEVariants};
constexpr CopyFamily kBgraToDpxBE  {"BGRA8 to DpxBE",   1,  4,  4, kBgraToDpxBEVariants};
constexpr CopyFamily kDpxBEToBgra  {"DpxBE to BGRA8",   1,  4,  4, kDpxBEToBgraVariants};
constexpr CopyFamily kRgbToV210    {"RGB8 to v210",     6, 18, 16, kRgbToV210Variants};
constexpr CopyFamily kRgbaToV210   {"RGBA8 to v210",    6, 24, 16, kRgbaToV210Variants};
constexpr CopyFamily kBgraToV210   {"BGRA8 to v210",    6, 24, 16, kBgraToV210Variants};
constexpr CopyFamily kV210ToYCbYCr8{"v210 to YCbYCr8",  6, 16, 12, kV210ToYCbYCr8Variants};
// clang-format on

std::span<const CopyFamily* const> CopyFamilies() { return kFamilies; }

void CopyFrame(const CopyFamily& family, const CopyVariant& variant, void* dst, int dstRowBytes,
               void* src, int srcRowBytes, int width, int height) {
    const std::int64_t rowBytes = std::int64_t{width} / family.pixels * family.dstBytes;
    WithRow(variant, dst, src, rowBytes, height, [=](IpScanCopyFn* row) {
        IpFrame_Copy_Master(row, dst, dstRowBytes, src, srcRowBytes, width, height);
    });
}

void CopyFrame(const CopyFamily& family, void* dst, int dstRowBytes, void* src, int srcRowBytes,
               int width, int height) {
    CopyFrame(family, Pick(family.variants), dst, dstRowBytes, src, srcRowBytes, width, height);
}

}  // namespace zel::ip
