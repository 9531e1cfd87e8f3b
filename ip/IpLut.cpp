#include "ip/IpLut.h"

#include "ip/IpTables.h"
#include "ip/detail/Layouts.h"
#include "ip/detail/LutPrepared.h"
#include "ip/detail/LutVariants.h"
#include "ip/detail/Memory.h"
#include "ip/detail/Numeric.h"
#include "ip/detail/Rows.h"
#include "ip/detail/Units.h"
#include "ip/detail/Variants.h"

#include <array>

namespace {

using namespace zel::ip;

/// A frame whose pixels have the channel order O: the colour tables go where the
/// layout has the colours, the identity table where it has alpha.
template <Order O>
void LutFrame(const LutFamily& family, void* unity, void* dst, int dstRowBytes, void* src,
              int srcRowBytes, int width, int height, void* tableR, void* tableG, void* tableB) {
    void* t[4];
    t[O.r] = tableR;
    t[O.g] = tableG;
    t[O.b] = tableB;
    t[O.a] = unity;
    zel::ip::LutFrame(family, Pick(family.variants), dst, dstRowBytes, src, srcRowBytes, width,
                      height, t[0], t[1], t[2], t[3]);
}

/// Sends each of the row's samples through the table of its channel.
template <class Sample, class Look>
void LutSamples(void* dst, void* src, int width, const std::array<void*, 4>& tables, Look look) {
    const auto map = [&](void* to, void* from, std::ptrdiff_t i) {
        Store(to, look(tables[static_cast<std::size_t>(i) % 4], Load<Sample>(from)));
    };
    ForEach(std::ptrdiff_t{4} * width, map, UnitsOf<Sample>(dst), UnitsOf<Sample>(src), Numbers{});
}

}  // namespace

// --- rows: the definition that every faster variant is held to ------------------

void IpScan_Lut_8(void* dst, void* src, int width, void* t0, void* t1, void* t2, void* t3) {
    const std::array tables{t0, t1, t2, t3};
    const auto look = [](void* table, std::uint8_t sample) {
        return LoadAt<std::uint8_t>(table, sample);
    };
    LutSamples<std::uint8_t>(dst, src, width, tables, look);
}

void IpScan_Lut_16(void* dst, void* src, int width, void* t0, void* t1, void* t2, void* t3) {
    const std::array tables{t0, t1, t2, t3};
    const auto look = [](void* table, std::uint16_t sample) {
        const unsigned code = LoadAt<std::uint16_t>(table, sample >> 6);
        return static_cast<std::uint16_t>(code << 6);
    };
    LutSamples<std::uint16_t>(dst, src, width, tables, look);
}

void IpScan_Lut_Float(void* dst, void* src, int width, void* t0, void* t1, void* t2, void* t3) {
    const auto unit = [](void* table, int index) {
        return static_cast<float>(LoadAt<std::uint16_t>(table, index)) * kCodeToUnit;
    };
    using Pixel = std::array<float, 4>;
    MapUnits<Pixel>(dst, src, width, [=](const Pixel& in) {
        const int i0 = CodeOfUnit(in[0]), i1 = CodeOfUnit(in[1]), i2 = CodeOfUnit(in[2]);
        // Deliberate: channel 3 takes channel 2's index, source alpha is never used.
        // docs/quirks.md, "float alpha".
        return Pixel{unit(t0, i0), unit(t1, i1), unit(t2, i2), unit(t3, i2)};
    });
}

// --- frames -------------------------------------------------------------------

void IpFrame_Lut_Master(IpScanLutFn* scanFn, void* dst, int dstRowBytes, void* src, int srcRowBytes,
                        int width, int height, void* t0, void* t1, void* t2, void* t3) {
    ForEach(
        height, [=](void* to, void* from) { scanFn(to, from, width, t0, t1, t2, t3); },
        Rows{dst, dstRowBytes}, Rows{src, srcRowBytes});
}

// clang-format off
void IpFrame_Lut_RGBA8(void* dst, int dstRowBytes, void* src, int srcRowBytes, int width, int height, void* tableR, void* tableG, void* tableB) {
    LutFrame<kRGBA>(kLut8, unityLut8, dst, dstRowBytes, src, srcRowBytes, width, height, tableR, tableG, tableB);
}
void IpFrame_Lut_BGRA8(void* dst, int dstRowBytes, void* src, int srcRowBytes, int width, int height, void* tableR, void* tableG, void* tableB) {
    LutFrame<kBGRA>(kLut8, unityLut8, dst, dstRowBytes, src, srcRowBytes, width, height, tableR, tableG, tableB);
}
void IpFrame_Lut_ARGB8(void* dst, int dstRowBytes, void* src, int srcRowBytes, int width, int height, void* tableR, void* tableG, void* tableB) {
    LutFrame<kARGB>(kLut8, unityLut8, dst, dstRowBytes, src, srcRowBytes, width, height, tableR, tableG, tableB);
}
void IpFrame_Lut_BGRA16(void* dst, int dstRowBytes, void* src, int srcRowBytes, int width, int height, void* tableR, void* tableG, void* tableB) {
    LutFrame<kBGRA>(kLut16, unityLut10, dst, dstRowBytes, src, srcRowBytes, width, height, tableR, tableG, tableB);
}
void IpFrame_Lut_ARGB16(void* dst, int dstRowBytes, void* src, int srcRowBytes, int width, int height, void* tableR, void* tableG, void* tableB) {
    LutFrame<kARGB>(kLut16, unityLut10, dst, dstRowBytes, src, srcRowBytes, width, height, tableR, tableG, tableB);
}
void IpFrame_Lut_BGRAFloat(void* dst, int dstRowBytes, void* src, int srcRowBytes, int width, int height, void* tableR, void* tableG, void* tableB) {
    LutFrame<kBGRA>(kLutFloat, unityLut10, dst, dstRowBytes, src, srcRowBytes, width, height, tableR, tableG, tableB);
}
// clang-format on
