#include "lut/CUtilLut.h"
#include "lut/EqualChannels.h"
#include "lut/LogControls.h"
#include "lut/Numeric.h"

using zel::lut::Clamp;
using zel::lut::ConvertsToLinear;
using zel::lut::DeriveLogConstants;
using zel::lut::LinearToLog;
using zel::lut::LogConstants;
using zel::lut::LogControls;
using zel::lut::LogToLinear;
using zel::lut::ResolveLog;
using zel::lut::ShapeChannels;

/// The same values as zel::lut::reference::ApplyLog(); equal channels are built once.
void CUtilLut::ApplyLog(float* params) {
    const float top = Clamp(m_fWhiteLevel, 0.0f, 1023.0f);
    const auto convert = ConvertsToLinear(params) ? LogToLinear : LinearToLog;
    const LogControls controls[kChannels] = {ResolveLog(params, 0, top), ResolveLog(params, 1, top),
                                             ResolveLog(params, 2, top)};
    ShapeChannels(m_pLut, controls, [=](float* entries, const LogControls& channel) {
        const LogConstants constants = DeriveLogConstants(channel, top);
        for (int i = 0; i < kEntries; ++i)
            entries[i] = Clamp(convert(entries[i], constants), 0.0f, top);
    });
}
