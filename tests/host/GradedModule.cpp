#include "tests/host/GradedModule.h"

#include <algorithm>
#include <functional>

namespace zel::test {

std::vector<FrameFormat> FormatsOf(bool premiere) {
    if (premiere) return {std::begin(kFrameFormats), std::end(kFrameFormats)};
    return {kFrameFormats[1], kFrameFormats[4]};
}

void GradedModule::Grade(std::mt19937& random) {
    const Controls controls = row.controls();
    for (std::size_t i = 0; i < controls.size(); ++i) {
        const int param = static_cast<int>(i) + 1;
        if (controls[i].kind == Control::Slider) {
            const Range& range = kRanges[controls[i].range];
            params.SetSlider(param,
                             std::uniform_real_distribution<double>(range.low, range.high)(random));
        } else if (controls[i].kind == Control::CheckBox) {
            params.SetCheckBox(param, static_cast<A_long>(random() % 2));
        }
    }
}

Curve GradedModule::EngineCurve() {
    float values[128] = {};
    for (int i = 1; i < params.Count(); ++i) {
        const PF_ParamDef& def = params[i];
        if (def.param_type == PF_Param_FLOAT_SLIDER)
            values[i - 1] = static_cast<float>(def.u.fs_d.value);
        else if (def.param_type == PF_Param_CHECKBOX)
            values[i - 1] = static_cast<float>(def.u.bd.value);
    }
    CUtilLut lut;
    lut.Open();
    lut.Reset();
    std::invoke(row.operation, lut, static_cast<float*>(values));
    Curve curve;
    for (std::size_t c = 0; c < 3; ++c) std::copy_n(lut.m_pLut + c * 1024, 1024, curve[c].begin());
    return curve;
}

}  // namespace zel::test
