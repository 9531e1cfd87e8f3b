#include "tests/host/Modules.h"

#include <algorithm>
#include <cstring>
#include <iterator>

namespace zel::test {

namespace {

struct BuiltModule {
    const char* target;
    const char* path;
};

#define ZEL_BUILT_MODULE(target, path) {target, path},
constexpr BuiltModule kBuilt[] = {
#include "BuiltModules.inc"
};
#undef ZEL_BUILT_MODULE

}  // namespace

std::string PathOf(const std::string& target) {
    for (const BuiltModule& built : kBuilt)
        if (built.target == target) return built.path;
    return {};
}

std::vector<AddedParam> EachModule::Start() {
    EXPECT_EQ(Send(PF_Cmd_GLOBAL_SETUP), PF_Err_NONE);
    host.Reset();
    EXPECT_EQ(Send(PF_Cmd_PARAMS_SETUP), PF_Err_NONE);
    std::vector<AddedParam> added = host.added;
    host.Reset();
    return added;
}

std::string NameOf(const testing::TestParamInfo<EachModule::ParamType>& info) {
    return std::string(std::get<0>(info.param)->target) +
           (std::get<1>(info.param) == Personality::Premiere ? "_Premiere" : "_AfterEffects");
}

TEST(Modules, EveryBuiltModuleIsUnderTest) {
    for (const BuiltModule& built : kBuilt)
        EXPECT_EQ(std::ranges::count_if(kModules,
                                        [&](const ModuleRow& row) {
                                            return row.target == std::string(built.target);
                                        }),
                  1)
            << built.target << " needs a row in kModules";
    EXPECT_EQ(std::size(kBuilt), std::size(kModules));
}

TEST(Modules, LoadUnloadAndLoadAgain) {
    for (const ModuleRow& row : kModules)
        for (int i = 0; i < 3; ++i) {
            RecordingHost host(Personality::Premiere);
            LoadedModule module(PathOf(row.target));
            EXPECT_EQ(module.Entry()(PF_Cmd_GLOBAL_SETUP, host.In(), host.Out(), nullptr, nullptr,
                                     nullptr),
                      0);
            EXPECT_EQ(host.Out()->my_version, 0x200001u);
        }
}

TEST(Modules, AFileThatIsNoModuleIsReported) {
    EXPECT_THROW(LoadedModule("no_such_module.so"), std::runtime_error);
}

}  // namespace zel::test
