/// PARAMS_SETUP through the loaded modules: every byte of every record.

#include "tests/host/Modules.h"

#include <algorithm>
#include <bit>

namespace zel::test {
namespace {

class ModuleParams : public EachModule {
protected:
    const Controls controls = row.controls();
    const int count = static_cast<int>(controls.size());
};

/// The record that a control becomes; every byte not named here is zero.
PF_ParamDef Expected(const Control& control, int id) {
    PF_ParamDef def;
    std::memset(&def, 0, sizeof def);
    def.uu.id = id;
    std::strcpy(abi::ParamName(def), control.name.c_str());
    switch (control.kind) {
        case Control::GroupStart: def.param_type = 13; break;
        case Control::GroupEnd: def.param_type = 14; break;
        case Control::CheckBox:
            def.param_type = 4;
            def.flags = 0x2;  // no keyframes
            break;
        case Control::Slider:
            const Range& range = kRanges[control.range];
            def.param_type = 10;
            def.flags = 0x20;  // starts folded
            def.u.fs_d.value = static_cast<double>(range.start);
            def.u.fs_d.valid_min = def.u.fs_d.slider_min = range.low;
            def.u.fs_d.valid_max = def.u.fs_d.slider_max = range.high;
            def.u.fs_d.dephault = range.start;
            def.u.fs_d.precision = 2;
            def.u.fs_d.curve_tolerance = std::bit_cast<float>(0x3D4CCCCDu);  // 0.05
            break;
    }
    return def;
}

testing::AssertionResult SameBytes(const PF_ParamDef& expected, const PF_ParamDef& got) {
    unsigned char wanted[sizeof expected], found[sizeof got];
    std::memcpy(wanted, &expected, sizeof wanted);
    std::memcpy(found, &got, sizeof found);
    for (std::size_t i = 0; i < sizeof wanted; ++i)
        if (wanted[i] != found[i])
            return testing::AssertionFailure() << "byte " << i << " of the record: expected "
                                               << int{wanted[i]} << ", got " << int{found[i]};
    return testing::AssertionSuccess();
}

TEST_P(ModuleParams, EveryByteOfEveryRecord) {
    EXPECT_EQ(Send(PF_Cmd_PARAMS_SETUP), PF_Err_NONE);
    ASSERT_EQ(host.added.size(), controls.size());
    for (std::size_t i = 0; i < controls.size(); ++i) {
        PF_ParamDef expected = Expected(controls[i], IdOf(controls, i));
        const PF_ParamDef& got = host.added[i].def;
        if (controls[i].kind == Control::CheckBox) {
            ASSERT_NE(got.u.bd.u.nameptr, nullptr) << i;
            EXPECT_STREQ(got.u.bd.u.nameptr, "") << i;
            expected.u.bd.u.nameptr = got.u.bd.u.nameptr;
        }
        EXPECT_TRUE(SameBytes(expected, got)) << "parameter " << i + 1 << ", " << controls[i].name;
        EXPECT_EQ(host.added[i].index, -1) << i;
    }
}

TEST_P(ModuleParams, CallsInOrder) {
    Send(PF_Cmd_PARAMS_SETUP);
    Calls expected{kAcquire, premiere ? kRelease : kMessage};
    for (const Control& control : controls) {
        if (control.kind != Control::GroupEnd) expected.push_back("strcpy " + control.name);
        expected.push_back("add_param -1");
    }
    EXPECT_EQ(host.calls, expected);
}

// docs/quirks.md, "num_params": the layer left out for one host, three too many for the
// other.
TEST_P(ModuleParams, CountIsTheControlsOrFourMore) {
    Send(PF_Cmd_PARAMS_SETUP);
    PF_OutData expected = RecordingHost::UntouchedOut();
    expected.num_params = premiere ? count : count + 4;
    if (!premiere) ExpectAcquireMessage(expected);
    EXPECT_TRUE(Same(expected, *host.Out()));
}

TEST_P(ModuleParams, MissingBasicSuiteIsTakenForAfterEffects) {
    host.wrong.noBasicSuite = true;
    EXPECT_EQ(Send(PF_Cmd_PARAMS_SETUP), PF_Err_NONE);
    EXPECT_EQ(host.Out()->num_params, count + 4);
    EXPECT_EQ(host.calls.front(), kMessage);
    EXPECT_EQ(host.added.size(), controls.size());
}

TEST_P(ModuleParams, SuitePointerAloneTellsTheHost) {
    host.wrong.suiteStaysNull = true;
    Send(PF_Cmd_PARAMS_SETUP);
    EXPECT_EQ(host.Out()->num_params, count + 4);

    host.Reset();
    host.wrong = {.acquireResult = 3, .releaseResult = 5};
    EXPECT_EQ(Send(PF_Cmd_PARAMS_SETUP), PF_Err_NONE);
    EXPECT_EQ(host.Out()->num_params, premiere ? count : count + 4);
    EXPECT_EQ(host.added.size(), controls.size());
}

TEST_P(ModuleParams, FailingAddEndsTheCommandWithTheHostsError) {
    for (const int at : {0, 1, count / 2, count - 1})
        for (const PF_Err error : {4, 513, -1}) {
            host.Reset();
            host.wrong = {.addParamFailsAt = at, .addParamError = error};
            EXPECT_EQ(Send(PF_Cmd_PARAMS_SETUP), error) << "at " << at;
            EXPECT_EQ(static_cast<int>(host.added.size()), at);
            EXPECT_EQ(std::ranges::count(host.calls, "add_param -1"), at + 1);
            EXPECT_EQ(host.calls.back(), "add_param -1");
        }
}

// What the table of controls promises, counted here once more.
TEST_P(ModuleParams, GroupsPairUpAndForceRenderIsLast) {
    int depth = 0;
    for (const Control& control : controls) {
        depth += control.kind == Control::GroupStart ? 1
                 : control.kind == Control::GroupEnd ? -1
                                                     : 0;
        EXPECT_GE(depth, 0);
        EXPECT_LE(control.name.size(), 23u);
    }
    EXPECT_EQ(depth, 0);
    EXPECT_EQ(controls.back().name, "ForceRender");
    EXPECT_EQ(controls.back().kind, Control::CheckBox);
}

INSTANTIATE_TEST_SUITE_P(Modules, ModuleParams, EachModuleInEachHost(), NameOf);

struct Count {
    const char* name;
    Controls (*controls)();
    std::size_t count;
    const char* sample;  // name of the control before the last group end(s)
    std::size_t at;
};
constexpr Count kCounts[] = {
    {"color balance", ColorBalanceControls, 25, "Blue", 22},
    {"brightness", BrightnessControls, 81, "Blue Contrast Pivot", 77},
    {"gamma", GammaControls, 81, "Offset", 77},
    {"log", LogControls, 24, "Blue - Film Gamma", 21},
};

TEST(Controls, CountsAndLastSliders) {
    for (const Count& c : kCounts) {
        const Controls controls = c.controls();
        ASSERT_EQ(controls.size(), c.count) << c.name;
        EXPECT_EQ(controls[c.at].name, c.sample) << c.name;
        EXPECT_EQ(controls[c.at].kind, Control::Slider) << c.name;
        EXPECT_EQ(IdOf(controls, c.at), static_cast<int>(c.at)) << c.name;
    }
}

}  // namespace
}  // namespace zel::test
