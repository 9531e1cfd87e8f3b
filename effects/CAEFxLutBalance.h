#pragma once

/// Color Balance: pushes red, green and blue up or down, for the whole tonal range
/// and for highlights, midtones and shadows.

#include "host/CAEFxLut.h"

class CAEFxLutBalance : public CAEFxLut {
public:
    CAEFxLutBalance();
    ~CAEFxLutBalance() override;

    /// CUtilLut::ApplyBalance2() with the whole array; null does nothing.
    void BuildLut(CUtilLut* lut, float* values) override;
};
