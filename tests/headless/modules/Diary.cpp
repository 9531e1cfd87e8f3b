/// A module that writes every command into the file named by ZEL_TEST_DIARY, with what
/// the host hands back of the data it keeps: "5 gs" has global and sequence data. Fails
/// the command in ZEL_TEST_FAIL with error 7.

#include "host/CAEFxLut.h"
#include "host/Entry.h"

#include <cstdlib>
#include <fstream>
#include <string>

namespace {

class Diary : public CAEFxLut {
    PF_Err Main(int cmd, PF_InData* in, PF_OutData* out, PF_ParamDef* params[], PF_LayerDef* output,
                void* extra) override {
        if (const char* file = std::getenv("ZEL_TEST_DIARY"))
            std::ofstream(file, std::ios::app) << cmd << (in->global_data ? " g" : " -")
                                               << (in->sequence_data ? 's' : '-') << '\n';
        const char* failing = std::getenv("ZEL_TEST_FAIL");
        if (failing && cmd == std::atoi(failing)) return 7;
        const PF_Err result = CAEFxLut::Main(cmd, in, out, params, output, extra);
        const PF_UtilCallbacks& utils = *in->utils;
        if (cmd == PF_Cmd_GLOBAL_SETUP) out->global_data = utils.host_new_handle(8);
        if (cmd == PF_Cmd_SEQUENCE_SETUP) out->sequence_data = utils.host_new_handle(8);
        if (cmd == PF_Cmd_GLOBAL_SETDOWN) utils.host_dispose_handle(in->global_data);
        return result;
    }
};

Diary effect;

}  // namespace

CAEFx& TheEffect() { return effect; }
