/// RENDER: the host's frame and parameter values, as RenderLocal() takes them.

#include "host/CAEFx.h"
#include "host/PixelFormatSuite.h"

#include <algorithm>
#include <array>

namespace {

using namespace zel;

bool Lists(CAEFx& effect, PrPixelFormat format) {
    for (int i = 0; i < effect.QueryPixelFormatCount(); ++i)
        if (effect.QueryPixelFormat(i) == format) return true;
    return false;
}

/// What a parameter contributes: sliders as the user sees them, check boxes 0 or 1.
float ValueOf(const PF_ParamDef* param) {
    if (!param) return 0.0f;
    switch (param->param_type) {
        case PF_Param_CHECKBOX: return static_cast<float>(param->u.bd.value);
        case PF_Param_FLOAT_SLIDER: return static_cast<float>(param->u.fs_d.value);
        default: return 0.0f;
    }
}

}  // namespace

PF_Err CAEFx::Render(PF_InData* in_data, PF_OutData* out_data, PF_ParamDef* params[],
                     PF_LayerDef* output, void*) {
    if (!output || !params[0] || !params[0]->u.ld.data) return PF_Err_NONE;
    if (!output->data) return PF_Err_UNRECOGNIZED_PARAM_TYPE;
    const PF_LayerDef& input = params[0]->u.ld;

    PrPixelFormat format{};
    PixelFormatSuite formats{in_data, out_data};
    PF_Err result = formats.Result();
    if (formats) {
        formats->GetPixelFormat(output, &format);  // the format it leaves is what counts
        result = formats.Release();
    } else {
        format = (output->world_flags & PF_WorldFlag_DEEP) ? PrPixelFormat_ARGB_4444_16u
                                                           : PrPixelFormat_ARGB_4444_8u;
    }
    if (!Lists(*this, format)) return PF_Err_UNRECOGNIZED_PARAM_TYPE;

    // Parameter 0 is the input layer, so the last value is parameter num_params - 1;
    // the slot behind the host's list is never read.
    std::array<float, kAEFxMaxValues> values{};
    const int count = std::min<int>(in_data->num_params, kAEFxMaxValues);
    for (int i = 0; i < count && i + 1 < in_data->num_params; ++i)
        values[static_cast<std::size_t>(i)] = ValueOf(params[i + 1]);

    RenderLocal(values.data(), count, format, output->data, output->rowbytes, input.data,
                input.rowbytes, output->width, output->height);
    // Deliberate: without the suite this is the acquire's 516, after a good render.
    // docs/quirks.md, "516 after a good render".
    return result;
}
