/// A module with a parameter of a type that the host does not know, between two that
/// it does. Its render writes what it was handed into the first row.

#include "host/CAEFxLut.h"
#include "host/Entry.h"

#include <cstring>

namespace {

constexpr PF_ParamType kColour = 5;

class OddParameters : public CAEFxLut {
public:
    OddParameters() { std::strcpy(m_szName, "Odd, very"); }

private:
    PF_Err ParamsSetup(PF_InData* in, PF_OutData*, PF_ParamDef*[], PF_LayerDef*, void*) override {
        const auto add = [in](PF_ParamType type, const char* name, A_long id) {
            PF_ParamDef def{};
            def.param_type = type;
            def.uu.id = id;
            std::strcpy(zel::abi::ParamName(def), name);
            if (type == PF_Param_FLOAT_SLIDER) {
                def.u.fs_d.valid_max = def.u.fs_d.slider_max = 10.0f;
                def.u.fs_d.value = def.u.fs_d.dephault = 0.6f;
            }
            return in->inter.add_param(in->effect_ref, -1, &def);
        };
        if (const PF_Err error = add(PF_Param_FLOAT_SLIDER, "First", 1)) return error;
        if (const PF_Err error = add(kColour, "Tint", 2)) return error;
        return add(PF_Param_CHECKBOX, "Last", 3);
    }

    PF_Err Render(PF_InData* in, PF_OutData* out, PF_ParamDef* params[], PF_LayerDef* output,
                  void*) override {
        const float seen[] = {
            static_cast<float>(in->num_params),
            static_cast<float>(params[1]->u.fs_d.value),
            static_cast<float>(params[2]->param_type),
            static_cast<float>(params[3]->u.bd.value),
            params[4] ? 1.0f : 0.0f,
            static_cast<float>(in->width),
            static_cast<float>(output->height),
        };
        std::memcpy(output->data, seen, sizeof seen);
        std::strcpy(out->return_msg, "seen");
        return PF_Err_NONE;
    }
};

OddParameters effect;

}  // namespace

CAEFx& TheEffect() { return effect; }
