/// The one exported function of a module. Only modules compile this file.

#include "host/Entry.h"

#include "abi/Export.h"
#include "host/CAEFx.h"
#include "host/HostPolicy.h"

// The export is called "main", but a C++ function of that name may not have six
// arguments, and some tool chains plant start-up code into it. So the function has
// a name of its own and only its assembler label is "main" (Mach-O puts an
// underscore before every C name).
#if defined(__APPLE__)
#define ZEL_ENTRY_LABEL "_main"
#else
#define ZEL_ENTRY_LABEL "main"
#endif

extern "C" ZEL_EXPORT PF_Err ZelEffectMain(PF_Cmd cmd, PF_InData* in_data, PF_OutData* out_data,
                                           PF_ParamDef* params[], PF_LayerDef* output,
                                           void* extra) __asm__(ZEL_ENTRY_LABEL);

PF_Err ZelEffectMain(PF_Cmd cmd, PF_InData* in_data, PF_OutData* out_data, PF_ParamDef* params[],
                     PF_LayerDef* output, void* extra) {
    if constexpr (zel::policy::kThrowsIntoHost) {
        return TheEffect().Main(cmd, in_data, out_data, params, output, extra);
    } else {
        try {
            return TheEffect().Main(cmd, in_data, out_data, params, output, extra);
        } catch (...) {
            return PF_Err_BAD_CALLBACK_PARAM;
        }
    }
}
