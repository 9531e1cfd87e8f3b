#include "headless/Module.h"

#include "tests/headless/Thrown.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

namespace {

using namespace zel;
using namespace zel::test;
namespace fs = std::filesystem;

class ModuleFiles : public testing::Test {
protected:
    void ExpectRefused(const fs::path& file, const std::string& says) {
        const Error e = Thrown([&] { const Module module(file); });
        EXPECT_EQ(e.Kind(), ErrorKind::Module);
        EXPECT_TRUE(Says(e, "'" + file.string() + "'"));
        EXPECT_TRUE(Says(e, says));
    }
    const TemporaryFolder temporary;
    const fs::path& folder = temporary.Path();
};

TEST_F(ModuleFiles, Missing) {
    ExpectRefused(folder / "none.so", "is not there");
    ExpectRefused("none.so", "is not there");
    ExpectRefused("", "is not there");
    ExpectRefused(fs::path(ZEL_LIBM).filename(), "is not there");  // in the system's folders only
}

TEST_F(ModuleFiles, NoLibrary) {
    for (const char* text : {"", "words",
                             "\x7F"
                             "ELF and no more"}) {
        std::ofstream(folder / "text.so") << text;
        ExpectRefused(folder / "text.so", "cannot be loaded as an effect module");
    }
    ExpectRefused(folder, "cannot be loaded as an effect module");
}

TEST_F(ModuleFiles, ALibraryWithoutEntryPoint) {
    ExpectRefused(ZEL_LIBM, "is no effect module: it does not export 'main'");
}

TEST_F(ModuleFiles, ARealModule) {
    const Module module(ZEL_MODULE);
    EXPECT_EQ(module.File(), ZEL_MODULE);
    EXPECT_TRUE(module.File().string().ends_with(Module::kSuffix));
    constexpr PF_Cmd kUnknown = 12345;  // answered with 0, nothing looked at
    EXPECT_EQ(module.Entry()(kUnknown, nullptr, nullptr, nullptr, nullptr, nullptr), 0);
}

TEST_F(ModuleFiles, APathFromTheCurrentFolder) {
    const fs::path before = fs::current_path();
    fs::copy_file(ZEL_MODULE, folder / "here.so");
    fs::current_path(folder);
    EXPECT_NO_THROW(const Module module("here.so"));
    fs::current_path(before);
}

}  // namespace
