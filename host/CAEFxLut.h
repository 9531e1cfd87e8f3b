#pragma once

/// An effect that is one colour transfer curve: the base of all four effects. A
/// derived class gives its texts, its element table and BuildLut().

#include "host/CAEFx.h"
#include "ip/IpLut.h"

#include <span>

class CUtilLut;

/// A pixel format that the effects render, and how.
struct AEFxLutFormat {
    PrPixelFormat format;
    IpFrameLutFn* routine;
    std::int32_t wideTables;  // low byte 0: 256 x 8 bits; else 1024 x 16 bits
};

extern const AEFxLutFormat AEFxLutFormatMap[5];

class CAEFxLut : public CAEFx {
public:
    /// Version 4.0, no elements.
    CAEFxLut();
    ~CAEFxLut() override;

    int QueryGuiElementCount() override;
    const AEFxGuiElement* QueryGuiElement(int index) override;
    int QueryPixelFormatCount() override;
    PrPixelFormat QueryPixelFormat(int index) override;

    /// Builds the curve from `values` and maps the frame through it. Returns 0.
    int RenderLocal(float* values, int count, PrPixelFormat format, void* dst, int dstRowBytes,
                    void* src, int srcRowBytes, int width, int height) override;

    /// Shapes `lut`, an open identity; here it stays the identity. Null: nothing.
    virtual void BuildLut(CUtilLut* lut, float* values);

    /// Exports the curve and maps the frame; a format outside AEFxLutFormatMap is
    /// copied through. Returns 0.
    virtual int ApplyLut(CUtilLut* lut, PrPixelFormat format, void* dst, int dstRowBytes, void* src,
                         int srcRowBytes, int width, int height);

    std::int32_t m_nElementCount;
    const AEFxGuiElement* m_pElements;  // static data, not owned
};
