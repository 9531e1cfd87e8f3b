/// A module whose global set-up throws an exception with two lines of text.

#include "host/CAEFxLut.h"
#include "host/Entry.h"

#include <stdexcept>

namespace {

class ThrowsInSetup : public CAEFxLut {
    PF_Err GlobalSetup(PF_InData*, PF_OutData*, PF_ParamDef*[], PF_LayerDef*, void*) override {
        throw std::runtime_error("no room\nfor tables\n");
    }
};

ThrowsInSetup effect;

}  // namespace

CAEFx& TheEffect() { return effect; }
