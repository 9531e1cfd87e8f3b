#pragma once

/// Log/Linear Conversion: film log codes to linear light or back, by black and white
/// reference codes, display gamma and film gamma, for all channels and each channel.

#include "host/CAEFxLut.h"

class CAEFxLutLog : public CAEFxLut {
public:
    CAEFxLutLog();
    ~CAEFxLutLog() override;

    /// CUtilLut::ApplyLog() with the whole array; null does nothing.
    void BuildLut(CUtilLut* lut, float* values) override;
};
