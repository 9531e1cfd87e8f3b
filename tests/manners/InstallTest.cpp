// An installed tree works from anywhere, also after it was moved.

#include "tests/cli/CliTest.h"

#include <cstdlib>

namespace {

using namespace zel::test;

class Install : public CliTest {
protected:
    Install() {
        Tool({ZEL_CMAKE, "--install", ZEL_BUILD_ROOT, "--prefix", In("first").string()});
        fs::rename(In("first"), In("moved"));
        fs::create_directory(In("elsewhere"));
    }

    Outcome Installed(const Words& arguments, RunOptions options = {}) const {
        Words command{In("moved/bin/zelfx").string()};
        command.insert(command.end(), arguments.begin(), arguments.end());
        options.folder = In("elsewhere");
        return RunProgram(command, options);
    }
};

TEST_F(Install, RendersFromAnyFolder) {
    const Outcome list = Installed({"list", "--json"});
    EXPECT_EQ(list.status, 0) << list.err;
    EXPECT_EQ(list.err, "");
    for (const char* module : {"zel_color_balance", "zel_brightness_contrast_pivot",
                               "zel_gamma_gain_offset", "zel_log_linear_conversion"})
        EXPECT_NE(list.out.find(In("moved/lib/zelfx/modules").string() + "/" + module),
                  std::string::npos)
            << list.out;

    const std::string photograph = ZEL_SOURCE_ROOT "/samples/coffee.png";
    const Words look{"-e", "color_balance", "-s", "midtones.blue=30"};
    const auto render = [&](const std::string& out) {
        Words words{"render", photograph, out};
        words.insert(words.end(), look.begin(), look.end());
        return words;
    };
    EXPECT_EQ(Installed(render("out.png")).status, 0);
    EXPECT_EQ(Zelfx(render("built.png")).status, 0);
    EXPECT_EQ(ReadFile(In("elsewhere/out.png")), ReadFile(In("built.png")));
}

TEST_F(Install, IsFoundThroughALinkAndThroughThePath) {
    fs::create_symlink(In("moved/bin/zelfx"), In("elsewhere/link"));
    EXPECT_EQ(RunProgram({"./link", "list"}, {.folder = In("elsewhere")}).status, 0);
    const std::string path = In("moved/bin").string() + ":" + std::getenv("PATH");
    EXPECT_EQ(RunProgram({"sh", "-c", "zelfx list"},
                         {.folder = In("elsewhere"), .environment = {{"PATH", path}}})
                  .status,
              0);
}

TEST_F(Install, ModulesOfThePathComeFirst) {
    fs::create_directory(In("mine"));
    fs::rename(In("moved/lib/zelfx/modules/zel_color_balance.so"), In("mine/zel_color_balance.so"));
    EXPECT_EQ(Installed({"describe", "color_balance"}).status, 4);
    const Outcome run =
        Installed({"describe", "color_balance", "--json"},
                  {.environment = {{"ZELFX_PATH", "/none:" + In("mine").string()}}});
    EXPECT_EQ(run.status, 0) << run.err;
    EXPECT_NE(run.out.find(In("mine/zel_color_balance.so").string()), std::string::npos);
}

TEST_F(Install, BringsManualAndCompletion) {
    const auto same = [&](const fs::path& file, const Words& command) {
        const Bytes bytes = ReadFile(In("moved") / file);
        EXPECT_EQ(std::string(bytes.begin(), bytes.end()), Zelfx(command).out) << file;
    };
    same("share/man/man1/zelfx.1", {"man"});
    same("share/bash-completion/completions/zelfx", {"completion", "bash"});
    same("share/zsh/site-functions/_zelfx", {"completion", "zsh"});
    for (const char* doc : {"README.md", "docs/guide.md", "samples/coffee.png"})
        EXPECT_TRUE(fs::exists(In("moved/share/doc/zelfx") / doc)) << doc;
}

}  // namespace
