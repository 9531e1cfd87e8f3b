/// PARAMS_SETUP: the element table, row by row, as host parameters.

#include "host/CAEFx.h"
#include "host/HostPolicy.h"
#include "host/PixelFormatSuite.h"

#include <cstring>

namespace {

using namespace zel;

void FillSlider(PF_ParamDef& def, const AEFxRange& range) {
    PF_FloatSliderDef& slider = def.u.fs_d;
    slider.value = range.initial;
    slider.valid_min = range.validMin;
    slider.valid_max = range.validMax;
    slider.slider_min = range.sliderMin;
    slider.slider_max = range.sliderMax;
    slider.dephault = range.initial;
    slider.precision = static_cast<A_short>(range.precision);
    slider.curve_tolerance = abi::kDefaultCurveTolerance;
}

/// Fills a cleared record. Returns false for a type that is no host parameter.
bool Fill(PF_ParamDef& def, const AEFxGuiElement& element, const PF_UtilCallbacks& utils) {
    const auto copyName = [&] { utils.ansi.strcpy(abi::ParamName(def), element.name); };
    switch (element.type) {
        case kGroupStart:
            def.param_type = PF_Param_GROUP_START;
            copyName();
            return true;
        case kFloatSlider:
            def.param_type = PF_Param_FLOAT_SLIDER;
            def.flags = PF_ParamFlag_COLLAPSE_TWIRLY;
            copyName();
            FillSlider(def, AEFxRangeTable[element.range]);
            return true;
        case kCheckBox:
            def.param_type = PF_Param_CHECKBOX;
            def.flags = PF_ParamFlag_CANNOT_TIME_VARY;
            copyName();
            def.u.bd.u.nameptr = "";
            return true;
        case kGroupEnd: def.param_type = PF_Param_GROUP_END; return true;
        default: return false;
    }
}

}  // namespace

PF_Err CAEFx::ParamsSetup(PF_InData* in_data, PF_OutData* out_data, PF_ParamDef*[], PF_LayerDef*,
                          void*) {
    const int count = QueryGuiElementCount();
    if (PixelFormatSuite formats{in_data, out_data}) {
        out_data->num_params = count;
        formats.Release();
    } else {
        out_data->num_params = count + 4;  // deliberate: docs/quirks.md, "num_params"
    }

    int added = 0;
    for (int i = 0; i < count; ++i) {
        const AEFxGuiElement* element = QueryGuiElement(i);
        if (!element) break;
        PF_ParamDef def;
        std::memset(&def, 0, sizeof def);  // the bytes between and behind the members too
        if (!Fill(def, *element, *in_data->utils)) continue;
        def.uu.id = static_cast<std::int16_t>(element->id);
        constexpr PF_ParamIndex kAppend = -1;
        const PF_Err error = in_data->inter.add_param(in_data->effect_ref, kAppend, &def);
        if (error != PF_Err_NONE) return error;
        ++added;
    }
    if constexpr (policy::kCountsWhatIsAdded) out_data->num_params = added + 1;
    return PF_Err_NONE;
}
