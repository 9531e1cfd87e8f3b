#pragma once

/// Gamma/Gain/Offset: a power curve with multiplier and lift, for all channels and each
/// channel, over the whole tonal range and for highlights, midtones and shadows.

#include "host/CAEFxLut.h"

class CAEFxLutGamma : public CAEFxLut {
public:
    CAEFxLutGamma();
    ~CAEFxLutGamma() override;

    /// CUtilLut::ApplyGamma2() with the whole array; null does nothing.
    void BuildLut(CUtilLut* lut, float* values) override;
};
