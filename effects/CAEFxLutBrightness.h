#pragma once

/// Brightness/Contrast/Pivot: brightness, contrast and the point that contrast turns
/// about, for all channels and each channel, over the whole tonal range and for
/// highlights, midtones and shadows.

#include "host/CAEFxLut.h"

class CAEFxLutBrightness : public CAEFxLut {
public:
    CAEFxLutBrightness();
    ~CAEFxLutBrightness() override;

    /// CUtilLut::ApplyBrightness2() with the whole array; null does nothing.
    void BuildLut(CUtilLut* lut, float* values) override;
};
