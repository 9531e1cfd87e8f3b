#include "ip/IpLut.h"

#include "ip/IpTables.h"
#include "ip/detail/Layouts.h"
#include "ip/detail/Memory.h"
#include "ip/detail/Numeric.h"
#include "ip/detail/Rows.h"

#include <bit>

namespace {

using namespace zel::ip;

constexpr float kCodeToUnit = 1.0f / 1023.0f;
static_assert(std::bit_cast<std::uint32_t>(kCodeToUnit) == 0x3A802008);

/// A frame whose pixels have the channel order O: the colour tables go where the
/// layout has the colours, the identity table where it has alpha.
template <Order O>
void LutFrame(IpScanLutFn* scanFn, void* unity, void* dst, int dstRowBytes, void* src,
              int srcRowBytes, int width, int height, void* tableR, void* tableG, void* tableB) {
    void* t[4];
    t[O.r] = tableR;
    t[O.g] = tableG;
    t[O.b] = tableB;
    t[O.a] = unity;
    IpFrame_Lut_Master(scanFn, dst, dstRowBytes, src, srcRowBytes, width, height, t[0], t[1], t[2],
                       t[3]);
}

}  // namespace

// --- rows: the definition that every faster variant is held to ------------------

void IpScan_Lut_8(void* dst, void* src, int width, void* t0, void* t1, void* t2, void* t3) {
    void* const tables[4] = {t0, t1, t2, t3};
    for (std::ptrdiff_t i = 0; i < std::ptrdiff_t{4} * width; ++i)
        StoreAt(dst, i, LoadAt<std::uint8_t>(tables[i % 4], LoadAt<std::uint8_t>(src, i)));
}

void IpScan_Lut_16(void* dst, void* src, int width, void* t0, void* t1, void* t2, void* t3) {
    void* const tables[4] = {t0, t1, t2, t3};
    for (std::ptrdiff_t i = 0; i < std::ptrdiff_t{4} * width; ++i) {
        const int index = LoadAt<std::uint16_t>(src, i) >> 6;
        const unsigned code = LoadAt<std::uint16_t>(tables[i % 4], index);
        StoreAt(dst, i, static_cast<std::uint16_t>(code << 6));
    }
}

void IpScan_Lut_Float(void* dst, void* src, int width, void* t0, void* t1, void* t2, void* t3) {
    const auto unit = [](void* table, int index) {
        return static_cast<float>(LoadAt<std::uint16_t>(table, index)) * kCodeToUnit;
    };
    for (std::ptrdiff_t i = 0; i < std::ptrdiff_t{4} * width; i += 4) {
        const int i0 = CodeOfUnit(LoadAt<float>(src, i));
        const int i1 = CodeOfUnit(LoadAt<float>(src, i + 1));
        const int i2 = CodeOfUnit(LoadAt<float>(src, i + 2));
        StoreAt(dst, i, unit(t0, i0));
        StoreAt(dst, i + 1, unit(t1, i1));
        StoreAt(dst, i + 2, unit(t2, i2));
        // Deliberate: channel 2's index; source alpha is never read.
        // docs/quirks.md, "float alpha".
        StoreAt(dst, i + 3, unit(t3, i2));
    }
}

// --- frames -------------------------------------------------------------------

void IpFrame_Lut_Master(IpScanLutFn* scanFn, void* dst, int dstRowBytes, void* src, int srcRowBytes,
                        int width, int height, void* t0, void* t1, void* t2, void* t3) {
    ForEachRow(
        height, [=](void* to, void* from) { scanFn(to, from, width, t0, t1, t2, t3); },
        Rows{dst, dstRowBytes}, Rows{src, srcRowBytes});
}

// clang-format off
void IpFrame_Lut_RGBA8(void* dst, int dstRowBytes, void* src, int srcRowBytes, int width, int height, void* tableR, void* tableG, void* tableB) {
    LutFrame<kRGBA>(IpScan_Lut_8, unityLut8, dst, dstRowBytes, src, srcRowBytes, width, height, tableR, tableG, tableB);
}
void IpFrame_Lut_BGRA8(void* dst, int dstRowBytes, void* src, int srcRowBytes, int width, int height, void* tableR, void* tableG, void* tableB) {
    LutFrame<kBGRA>(IpScan_Lut_8, unityLut8, dst, dstRowBytes, src, srcRowBytes, width, height, tableR, tableG, tableB);
}
void IpFrame_Lut_ARGB8(void* dst, int dstRowBytes, void* src, int srcRowBytes, int width, int height, void* tableR, void* tableG, void* tableB) {
    LutFrame<kARGB>(IpScan_Lut_8, unityLut8, dst, dstRowBytes, src, srcRowBytes, width, height, tableR, tableG, tableB);
}
void IpFrame_Lut_BGRA16(void* dst, int dstRowBytes, void* src, int srcRowBytes, int width, int height, void* tableR, void* tableG, void* tableB) {
    LutFrame<kBGRA>(IpScan_Lut_16, unityLut10, dst, dstRowBytes, src, srcRowBytes, width, height, tableR, tableG, tableB);
}
void IpFrame_Lut_ARGB16(void* dst, int dstRowBytes, void* src, int srcRowBytes, int width, int height, void* tableR, void* tableG, void* tableB) {
    LutFrame<kARGB>(IpScan_Lut_16, unityLut10, dst, dstRowBytes, src, srcRowBytes, width, height, tableR, tableG, tableB);
}
void IpFrame_Lut_BGRAFloat(void* dst, int dstRowBytes, void* src, int srcRowBytes, int width, int height, void* tableR, void* tableG, void* tableB) {
    LutFrame<kBGRA>(IpScan_Lut_Float, unityLut10, dst, dstRowBytes, src, srcRowBytes, width, height, tableR, tableG, tableB);
}
// clang-format on
