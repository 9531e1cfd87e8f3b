#include "ip/IpFill.h"

#include "ip/detail/FillVariants.h"
#include "ip/detail/Layouts.h"
#include "ip/detail/Memory.h"
#include "ip/detail/Numeric.h"
#include "ip/detail/Rows.h"
#include "ip/detail/Units.h"

namespace {

using namespace zel::ip;

// --- colours to codes ---------------------------------------------------------

/// How a layout turns a normalised colour into codes.
struct Scale {
    float factor, top;
};

constexpr Scale kScale8{256.0f, 255.0f};
constexpr Scale kScale16{65536.0f, 65535.0f};
constexpr Scale kScaleRGB10{1023.0f, 1023.0f};
constexpr Scale kScaleDpx{1024.0f, 1023.0f};

template <class Code>
Code ToCode(float colour, Scale scale, bool normalised) {
    return Saturated<Code>(normalised ? Clamp(colour * scale.factor, 0.0f, scale.top) : colour);
}

struct Yuv {
    float y, u, v;
};

/// Analogue YUV, full range: y in 0..1, u and v around 0 for colours in 0..1.
/// Single precision throughout, sums from left to right.
Yuv ToYuv(float r, float g, float b, bool normalised) {
    constexpr float kPerCode = 0.00390625f;  // 1/256
    if (!normalised) {
        r = Clamp(r * kPerCode, 0.0f, 1.0f);
        g = Clamp(g * kPerCode, 0.0f, 1.0f);
        b = Clamp(b * kPerCode, 0.0f, 1.0f);
    }
    return {0.299f * r + 0.587f * g + 0.114f * b, -0.147f * r - 0.289f * g + 0.436f * b,
            0.615f * r - 0.515f * g - 0.100f * b};
}

unsigned char ToByte(float code) {
    return static_cast<unsigned char>(Saturated<std::uint32_t>(Clamp(code, 0.0f, 255.0f)));
}

unsigned int ToChroma10(float chroma) {
    // Deliberate: the lower bound is -5, not -0.5; Saturated() does the clamping
    // at 0. docs/quirks.md, "10-bit chroma".
    return Saturated<unsigned int>((0.5f + Clamp(chroma, -5.0f, 0.5f)) * 1023.0f);
}

}  // namespace

void IpRGBToYUV8(unsigned char* y, unsigned char* cb, unsigned char* cr, float r, float g, float b,
                 bool normalised) {
    const Yuv yuv = ToYuv(r, g, b, normalised);
    *y = ToByte(yuv.y * 255.0f);
    *cb = ToByte(yuv.u * 255.0f + 128.0f);
    *cr = ToByte(yuv.v * 255.0f + 128.0f);
}

void IpRGBToYUV10(unsigned int* y, unsigned int* cb, unsigned int* cr, float r, float g, float b,
                  bool normalised) {
    const Yuv yuv = ToYuv(r, g, b, normalised);
    *y = Saturated<unsigned int>(Clamp(yuv.y, 0.0f, 1.0f) * 1023.0f);
    *cb = ToChroma10(yuv.u);
    *cr = ToChroma10(yuv.v);
}

// --- rows ---------------------------------------------------------------------

void IpScan_Fill_RGBA8(void* scan, int start, int count, float r, float g, float b, float a,
                       bool normalised) {
    const auto code = [=](float c) { return ToCode<std::uint32_t>(c, kScale8, normalised); };
    FillUnits(scan, start, count, PackBytes(code(r), code(g), code(b), code(a)));
}

void IpScan_Fill_BGRA8(void* scan, int start, int count, float r, float g, float b, float a,
                       bool normalised) {
    IpScan_Fill_RGBA8(scan, start, count, b, g, r, a, normalised);
}

void IpScan_Fill_ARGB8(void* scan, int start, int count, float r, float g, float b, float a,
                       bool normalised) {
    IpScan_Fill_RGBA8(scan, start, count, a, r, g, b, normalised);
}

void IpScan_Fill_RGBA16(void* scan, int start, int count, float r, float g, float b, float a,
                        bool normalised) {
    const auto code = [=](float c) { return ToCode<std::uint64_t>(c, kScale16, normalised); };
    FillUnits(scan, start, count, PackShorts(code(r), code(g), code(b), code(a)));
}

void IpScan_Fill_BGRA16(void* scan, int start, int count, float r, float g, float b, float a,
                        bool normalised) {
    IpScan_Fill_RGBA16(scan, start, count, b, g, r, a, normalised);
}

void IpScan_Fill_ARGB16(void* scan, int start, int count, float r, float g, float b, float a,
                        bool normalised) {
    IpScan_Fill_RGBA16(scan, start, count, a, r, g, b, normalised);
}

void IpScan_Fill_BGRA32Float(void* scan, int start, int count, float r, float g, float b, float a,
                             bool) {
    struct Pixel {
        float b, g, r, a;
    };
    const auto unit = [](float c) { return Clamp(c, 0.0f, 1.0f); };
    FillUnits(scan, start, count, Pixel{unit(b), unit(g), unit(r), unit(a)});
}

void IpScan_Fill_RGB10(void* scan, int start, int count, float r, float g, float b, float,
                       bool normalised) {
    const auto code = [=](float c) { return ToCode<std::uint32_t>(c, kScaleRGB10, normalised); };
    FillUnits(scan, start, count, Pack10(code(r), code(g), code(b)));
}

void IpScan_Fill_DpxLe(void* scan, int start, int count, float r, float g, float b, float,
                       bool normalised) {
    const auto code = [=](float c) { return ToCode<std::uint32_t>(c, kScaleDpx, normalised); };
    FillUnits(scan, start, count, PackDpx(code(r), code(g), code(b)));
}

void IpScan_Fill_DpxBe(void* scan, int start, int count, float r, float g, float b, float,
                       bool normalised) {
    const auto code = [=](float c) { return ToCode<std::uint32_t>(c, kScaleDpx, normalised); };
    FillUnits(scan, start, count, ByteReversed(PackDpx(code(r), code(g), code(b))));
}

void IpScan_Fill_YUYV8(void* scan, int start, int count, float r, float g, float b, float,
                       bool normalised) {
    unsigned char y, cb, cr;
    IpRGBToYUV8(&y, &cb, &cr, r, g, b, normalised);
    FillUnits(scan, start / 2, count / 2, PackBytes(y, cb, y, cr));
}

void IpScan_Fill_UYVY8(void* scan, int start, int count, float r, float g, float b, float,
                       bool normalised) {
    unsigned char y, cb, cr;
    IpRGBToYUV8(&y, &cb, &cr, r, g, b, normalised);
    FillUnits(scan, start / 2, count / 2, PackBytes(cb, y, cr, y));
}

// Deliberate: black, whatever the colour. docs/quirks.md, "v210 fill".
void IpScan_Fill_v210(void* scan, int start, int count, float, float, float, float, bool) {
    unsigned int y, cb, cr;
    IpRGBToYUV10(&y, &cb, &cr, 0, 0, 0, true);
    FillUnits(scan, start / 6, count / 6, PackV210(y, cb, cr));
}

// --- frames -------------------------------------------------------------------

void IpFrame_Fill_Master(IpScanFillFn* scanFn, void* base, int rowBytes, int width, int height,
                         float r, float g, float b, float a, bool normalised) {
    ForEach(
        height, [=](void* row) { scanFn(row, 0, width, r, g, b, a, normalised); },
        Upwards({base, rowBytes}, height));
}

// clang-format off
void IpFrame_Fill_RGBA8(void* base, int rowBytes, int width, int height, float r, float g, float b, float a, bool normalised) {
    FillFrame(IpScan_Fill_RGBA8, {1, 4}, base, rowBytes, width, height, r, g, b, a, normalised);
}
void IpFrame_Fill_BGRA8(void* base, int rowBytes, int width, int height, float r, float g, float b, float a, bool normalised) {
    FillFrame(IpScan_Fill_BGRA8, {1, 4}, base, rowBytes, width, height, r, g, b, a, normalised);
}
void IpFrame_Fill_ARGB8(void* base, int rowBytes, int width, int height, float r, float g, float b, float a, bool normalised) {
    FillFrame(IpScan_Fill_ARGB8, {1, 4}, base, rowBytes, width, height, r, g, b, a, normalised);
}
void IpFrame_Fill_RGBA16(void* base, int rowBytes, int width, int height, float r, float g, float b, float a, bool normalised) {
    FillFrame(IpScan_Fill_RGBA16, {1, 8}, base, rowBytes, width, height, r, g, b, a, normalised);
}
void IpFrame_Fill_BGRA16(void* base, int rowBytes, int width, int height, float r, float g, float b, float a, bool normalised) {
    FillFrame(IpScan_Fill_BGRA16, {1, 8}, base, rowBytes, width, height, r, g, b, a, normalised);
}
void IpFrame_Fill_ARGB16(void* base, int rowBytes, int width, int height, float r, float g, float b, float a, bool normalised) {
    FillFrame(IpScan_Fill_ARGB16, {1, 8}, base, rowBytes, width, height, r, g, b, a, normalised);
}
void IpFrame_Fill_BGRA32Float(void* base, int rowBytes, int width, int height, float r, float g, float b, float a, bool normalised) {
    FillFrame(IpScan_Fill_BGRA32Float, {1, 16}, base, rowBytes, width, height, r, g, b, a, normalised);
}
void IpFrame_Fill_RGB10(void* base, int rowBytes, int width, int height, float r, float g, float b, float a, bool normalised) {
    FillFrame(IpScan_Fill_RGB10, {1, 4}, base, rowBytes, width, height, r, g, b, a, normalised);
}
void IpFrame_Fill_DpxLe(void* base, int rowBytes, int width, int height, float r, float g, float b, float a, bool normalised) {
    FillFrame(IpScan_Fill_DpxLe, {1, 4}, base, rowBytes, width, height, r, g, b, a, normalised);
}
void IpFrame_Fill_DpxBe(void* base, int rowBytes, int width, int height, float r, float g, float b, float a, bool normalised) {
    FillFrame(IpScan_Fill_DpxBe, {1, 4}, base, rowBytes, width, height, r, g, b, a, normalised);
}
void IpFrame_Fill_YUYV8(void* base, int rowBytes, int width, int height, float r, float g, float b, float a, bool normalised) {
    FillFrame(IpScan_Fill_YUYV8, {2, 4}, base, rowBytes, width, height, r, g, b, a, normalised);
}
void IpFrame_Fill_UYVY8(void* base, int rowBytes, int width, int height, float r, float g, float b, float a, bool normalised) {
    FillFrame(IpScan_Fill_UYVY8, {2, 4}, base, rowBytes, width, height, r, g, b, a, normalised);
}
void IpFrame_Fill_v210(void* base, int rowBytes, int width, int height, float r, float g, float b, float a, bool normalised) {
    FillFrame(IpScan_Fill_v210, {6, 16}, base, rowBytes, width, height, r, g, b, a, normalised);
}
// clang-format on
