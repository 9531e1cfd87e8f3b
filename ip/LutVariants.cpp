#include "ip/detail/LutVariants.h"

#include "ip/arm/LutRows.h"
#include "ip/detail/LutPrepared.h"
#include "ip/detail/Units.h"
#include "ip/detail/Variants.h"
#include "ip/x86/LutRows.h"

#include <algorithm>

namespace zel::ip {

namespace {

template <class Fn>
void FillTables(PreparedTables& prepared, const std::array<void*, 4>& tables, Fn cell) {
    std::uint32_t* to = prepared.data();
    for (void* const table : tables)
        for (int i = 0; i < 1024; ++i) *to++ = cell(LoadAt<std::uint16_t>(table, i));
}

}  // namespace

void PrepareShifted(PreparedTables& prepared, void* t0, void* t1, void* t2, void* t3) {
    FillTables(prepared, {t0, t1, t2, t3},
               [](std::uint16_t code) { return static_cast<std::uint32_t>(code) << 6 & 0xFFFFu; });
}

void PrepareUnits(PreparedTables& prepared, void* t0, void* t1, void* t2, void* t3) {
    FillTables(prepared, {t0, t1, t2, t3}, [](std::uint16_t code) {
        return std::bit_cast<std::uint32_t>(static_cast<float>(code) * kCodeToUnit);
    });
}

void LutRow8Portable(void* dst, void* src, int width, void* t0, void* t1, void* t2, void* t3) {
    const auto look = [](void* table, std::uint32_t pixel, int bit) {
        return std::uint32_t{LoadAt<std::uint8_t>(table, pixel >> bit & 255)} << bit;
    };
    MapUnits<std::uint32_t>(dst, src, width, [=](std::uint32_t pixel) {
        return look(t0, pixel, 0) | look(t1, pixel, 8) | look(t2, pixel, 16) | look(t3, pixel, 24);
    });
}

void LutRow16Prepared(void* dst, void* src, int width, void* t0, void* t1, void* t2, void* t3) {
    const auto look = [](void* table, std::uint64_t pixel, int bit) {
        const auto index = static_cast<std::ptrdiff_t>(pixel >> (bit + 6) & 1023);
        return std::uint64_t{LoadAt<std::uint32_t>(table, index)} << bit;
    };
    MapUnits<std::uint64_t>(dst, src, width, [=](std::uint64_t pixel) {
        return look(t0, pixel, 0) | look(t1, pixel, 16) | look(t2, pixel, 32) | look(t3, pixel, 48);
    });
}

namespace {

/// CodeOfUnit() for a compiler to make vectors of. The clamps take the code's bits, which
/// as integers are in the order of the floats; NaN lies above infinity or below zero.
std::int32_t IndexOf(float sample) {
    constexpr auto kTop = std::bit_cast<std::int32_t>(1023.0f);
    constexpr std::int32_t kInfinity = 0x7F800000;
    const auto code = std::bit_cast<std::int32_t>(sample * 1023.0f);
    const std::int32_t raised = code < 0 || code > kInfinity ? 0 : code;
    return static_cast<std::int32_t>(std::bit_cast<float>(raised < kTop ? raised : kTop));
}

/// All indices first: few enough pixels that a processor still reads while it writes.
template <std::size_t kPixels>
void LookUp(std::byte* to, const std::byte* from, const std::array<void*, 4>& tables) {
    std::array<std::int32_t, 4 * kPixels> index;
    const auto samples = Load<std::array<float, 4 * kPixels>>(from);
    for (std::size_t i = 0; i < index.size(); ++i) index[i] = IndexOf(samples[i]);
    for (std::size_t i = 0; i < index.size(); i += 4)
        for (std::size_t c = 0; c < 4; ++c)
            StoreAt(to, static_cast<std::ptrdiff_t>(i + c),
                    LoadAt<std::uint32_t>(tables[c], index[i + std::min<std::size_t>(c, 2)]));
}

}  // namespace

void LutRowFloatPrepared(void* dst, void* src, int width, void* t0, void* t1, void* t2, void* t3) {
    constexpr std::ptrdiff_t kPixels = 8, kChannels = 4;
    const std::array tables{t0, t1, t2, t3};
    const auto to = [=](std::ptrdiff_t x) { return At<float>(dst, x * kChannels); };
    const auto from = [=](std::ptrdiff_t x) { return At<float>(src, x * kChannels); };
    std::ptrdiff_t x = 0;
    for (; x + kPixels <= width; x += kPixels) LookUp<kPixels>(to(x), from(x), tables);
    for (; x < width; ++x) LookUp<1>(to(x), from(x), tables);
}

namespace {

// clang-format off
constexpr LutVariant kVariants8[] = {
    {"scalar",   Cpu::scalar,   nullptr,        IpScan_Lut_8,          nullptr},
    {"portable", Cpu::portable, nullptr,        LutRow8Portable,       nullptr},
#if ZEL_X86
    {"avx512",   Cpu::avx512,   nullptr,        x86::LutRow8_Avx512,   x86::LutRow8Streaming_Avx512},
#endif
#if ZEL_NEON
    {"neon",     Cpu::neon,     nullptr,        arm::LutRow8_Neon,     nullptr},
#endif
};

constexpr LutVariant kVariants16[] = {
    {"scalar",   Cpu::scalar,   nullptr,        IpScan_Lut_16,         nullptr},
    {"portable", Cpu::portable, PrepareShifted, LutRow16Prepared,      nullptr},
#if ZEL_X86
    {"avx2",     Cpu::avx2,     PrepareShifted, x86::LutRow16_Avx2,    x86::LutRow16Streaming_Avx2},
#endif
#if ZEL_NEON
    {"neon",     Cpu::neon,     PrepareShifted, arm::LutRow16_Neon,    nullptr},
#endif
};

constexpr LutVariant kVariantsFloat[] = {
    {"scalar",   Cpu::scalar,   nullptr,        IpScan_Lut_Float,      nullptr},
    {"portable", Cpu::portable, PrepareUnits,   LutRowFloatPrepared,   nullptr},
#if ZEL_X86
    {"sse2",     Cpu::sse2,     PrepareUnits,   x86::LutRowFloat_Sse2, x86::LutRowFloatStreaming_Sse2},
    {"avx2",     Cpu::avx2,     PrepareUnits,   x86::LutRowFloat_Avx2, x86::LutRowFloatStreaming_Avx2},
#endif
#if ZEL_NEON
    {"neon",     Cpu::neon,     PrepareUnits,   arm::LutRowFloat_Neon, nullptr},
#endif
};
// clang-format on

constexpr const LutFamily* kFamilies[] = {&kLut8, &kLut16, &kLutFloat};

}  // namespace

constexpr LutFamily kLut8{"lut 8", 4, kVariants8};
constexpr LutFamily kLut16{"lut 16", 8, kVariants16};
constexpr LutFamily kLutFloat{"lut float", 16, kVariantsFloat};

std::span<const LutFamily* const> LutFamilies() { return kFamilies; }

void LutFrame(const LutFamily& family, const LutVariant& variant, void* dst, int dstRowBytes,
              void* src, int srcRowBytes, int width, int height, void* t0, void* t1, void* t2,
              void* t3) {
    PreparedTables prepared;
    std::array tables{t0, t1, t2, t3};
    if (variant.prepare) {
        variant.prepare(prepared, t0, t1, t2, t3);
        for (std::size_t c = 0; c < 4; ++c) tables[c] = &prepared[1024 * c];
    }
    const auto walk = [&](IpScanLutFn* row) {
        IpFrame_Lut_Master(row, dst, dstRowBytes, src, srcRowBytes, width, height, tables[0],
                           tables[1], tables[2], tables[3]);
    };
    WithRow(variant, dst, src, std::int64_t{family.pixelBytes} * width, height, walk);
}

}  // namespace zel::ip
