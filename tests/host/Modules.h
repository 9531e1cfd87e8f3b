#pragma once

/// The modules under test and the fixture that puts each of them before both hosts.

#include "lut/CUtilLut.h"
#include "tests/host/Elements.h"
#include "tests/support/HostFrame.h"
#include "tests/support/LoadedModule.h"
#include "tests/support/RecordingHost.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <tuple>
#include <vector>

namespace zel::test {

struct ModuleRow {
    const char* target;
    const char* name;         // first part of the About text
    const char* description;  // its second line
    Controls (*controls)();
    void (CUtilLut::*operation)(float*);  // what shapes the curve
};

// clang-format off
inline const ModuleRow kModules[] = {
    {"zel_color_balance", "ZEL Color Balance", "Color Balance", ColorBalanceControls, &CUtilLut::ApplyBalance2},
    {"zel_brightness_contrast_pivot", "Brightness/Contrast/Pivot", "", BrightnessControls, &CUtilLut::ApplyBrightness2},
    {"zel_gamma_gain_offset", "Gamma/Gain/Offset", "", GammaControls, &CUtilLut::ApplyGamma2},
    {"zel_log_linear_conversion", "Log/Linear Conversion", "", LogControls, &CUtilLut::ApplyLog},
};
// clang-format on

/// Where the build has put a module; empty when it builds none of that name.
std::string PathOf(const std::string& target);

inline testing::AssertionResult Same(const PF_OutData& expected, const PF_OutData& got) {
    const std::string difference = Difference(expected, got);
    return difference.empty() ? testing::AssertionSuccess()
                              : testing::AssertionFailure() << difference;
}

/// What a failed acquire leaves.
inline void ExpectAcquireMessage(PF_OutData& expected) {
    expected.out_flags |= PF_OutFlag_DISPLAY_ERROR_MESSAGE;
    std::strcpy(expected.return_msg, "Not able to acquire AEFX Suite.");
}

using Calls = std::vector<std::string>;
inline const std::string kAcquire = "AcquireSuite PF Pixel Format Suite 1";
inline const std::string kRelease = "ReleaseSuite PF Pixel Format Suite 1";
inline const std::string kMessage = "sprintf Not able to acquire AEFX Suite.";

class EachModule : public testing::TestWithParam<std::tuple<const ModuleRow*, Personality>> {
protected:
    const ModuleRow& row = *std::get<0>(GetParam());
    const bool premiere = std::get<1>(GetParam()) == Personality::Premiere;
    LoadedModule module{PathOf(row.target)};
    RecordingHost host{std::get<1>(GetParam())};

    PF_Err Send(PF_Cmd command, PF_ParamDef** params = nullptr, PF_LayerDef* output = nullptr) {
        return module.Entry()(command, host.In(), host.Out(), params, output, nullptr);
    }

    /// Start-up as a host does it: GLOBAL_SETUP, PARAMS_SETUP. Returns the records
    /// added and leaves the host's own record empty.
    std::vector<AddedParam> Start();

    /// Sends RENDER for `params`, which become the host's parameter list.
    PF_Err Render(ParamList& params, PF_LayerDef* output) {
        host.numParams = params.Count();
        return Send(PF_Cmd_RENDER, params.Pointers(), output);
    }
};

inline auto EachModuleInEachHost() {
    std::vector<const ModuleRow*> rows;
    for (const ModuleRow& row : kModules) rows.push_back(&row);
    return testing::Combine(testing::ValuesIn(rows),
                            testing::Values(Personality::AfterEffects, Personality::Premiere));
}

std::string NameOf(const testing::TestParamInfo<EachModule::ParamType>& info);

}  // namespace zel::test
