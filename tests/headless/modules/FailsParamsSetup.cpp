/// A module that answers PARAMS_SETUP with an error and, for Premiere, a text.

#include "host/CAEFxLut.h"
#include "host/Entry.h"

#include <cstring>

namespace {

class FailsParamsSetup : public CAEFxLut {
    PF_Err ParamsSetup(PF_InData* in, PF_OutData* out, PF_ParamDef*[], PF_LayerDef*,
                       void*) override {
        if (in->appl_id == zel::abi::kApplPremiere) std::strcpy(out->return_msg, "no\rsliders\n");
        return PF_Err_INVALID_INDEX;
    }
};

FailsParamsSetup effect;

}  // namespace

CAEFx& TheEffect() { return effect; }
