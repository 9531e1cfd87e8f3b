#include "ip/detail/LutVariants.h"

#include "ip/arm/LutRows.h"
#include "ip/detail/LutPrepared.h"
#include "ip/detail/Units.h"
#include "ip/detail/Variants.h"
#include "ip/x86/LutRows.h"

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

void LutRowFloatPrepared(void* dst, void* src, int width, void* t0, void* t1, void* t2, void* t3) {
    const auto index = [](float sample) {
        const float code = sample * 1023.0f;
        const float raised = code > 0.0f ? code : 0.0f;  // NaN becomes 0
        return static_cast<int>(raised < 1023.0f ? raised : 1023.0f);
    };
    using Pixel = std::array<float, 4>;
    MapUnits<Pixel>(dst, src, width, [=](const Pixel& in) {
        const int i0 = index(in[0]), i1 = index(in[1]), i2 = index(in[2]);
        return Pixel{LoadAt<float>(t0, i0), LoadAt<float>(t1, i1), LoadAt<float>(t2, i2),
                     LoadAt<float>(t3, i2)};
    });
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
};

constexpr LutVariant kVariantsFloat[] = {
    {"scalar",   Cpu::scalar,   nullptr,        IpScan_Lut_Float,      nullptr},
    {"portable", Cpu::portable, PrepareUnits,   LutRowFloatPrepared,   nullptr},
#if ZEL_X86
    {"sse2",     Cpu::sse2,     PrepareUnits,   x86::LutRowFloat_Sse2, x86::LutRowFloatStreaming_Sse2},
    {"avx2",     Cpu::avx2,     PrepareUnits,   x86::LutRowFloat_Avx2, x86::LutRowFloatStreaming_Avx2},
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
