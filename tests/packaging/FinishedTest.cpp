/// What a host reads of the finished modules, held against what the modules report when
/// they run.
///
/// On Windows wrestool has taken the resources out of the files before; elsewhere it is
/// the resource file of the Mac that is read.

#include "tests/host/Modules.h"
#include "tests/packaging/PiplReader.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <set>

#if !defined(_WIN32)
#include "packaging/Files.h"
#endif

namespace zel::test {
namespace {

using Data = std::vector<std::uint8_t>;

#if defined(_WIN32)
constexpr bool kWindows = true;

Data Taken(const std::string& module, const char* suffix) {
    std::ifstream in(ZEL_EXTRACTED "/" + module + suffix, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

Data ResourceOf(const std::string& module) { return Taken(module, ".pipl"); }
#else
constexpr bool kWindows = false;

Data ResourceOf(const std::string& module) {
    const Data file = packaging::MacResources(*packaging::Find(module), packaging::Platform::Mac64);
    const auto at = file.begin() + 256 + 4;
    return {at, file.end() - 50};
}
#endif

class Finished : public EachModule {
protected:
    PiplContents said = ReadPipl(ResourceOf(row.target), kWindows);
};

TEST_P(Finished, VersionAndFlagsAreThoseOfGlobalSetup) {
    EXPECT_EQ(Send(PF_Cmd_GLOBAL_SETUP), PF_Err_NONE);
    EXPECT_EQ(said.Number("eVER"), host.Out()->my_version);
    if (premiere) return;  // After Effects compares the flags
    EXPECT_EQ(said.Number("eGLO"), static_cast<std::uint32_t>(host.Out()->out_flags));
    // The second flags stay as the host has cleared them.
    EXPECT_EQ(host.Out()->out_flags2, RecordingHost::UntouchedOut().out_flags2);
    EXPECT_EQ(said.Number("eGL2"), 0u);
}

TEST_P(Finished, EntryPointIsExported) {
    const std::string name = kWindows ? said.CString("8664") : said.Pascal("mi64");
    EXPECT_NE(module.Find(name.c_str()), nullptr) << name;
}

TEST_P(Finished, NamesFitTheHosts) {
    EXPECT_EQ(said.Pascal("eMNA"), "zelfx." + std::string(row.target).substr(4));
    EXPECT_LE(said.Pascal("eMNA").size(), 31u);
    EXPECT_LE(said.Pascal("name").size(), 31u);
    // The menu shows at least what the About text says.
    EXPECT_NE(said.Pascal("name").find(row.name), std::string::npos);
    EXPECT_EQ(said.Pascal("catg"), "ZEL");
}

#if defined(_WIN32)
TEST_P(Finished, FileVersionIsTheEffects) {
    // The fixed part follows the key L"VS_VERSION_INFO", padded to four bytes.
    const Data version = Taken(row.target, ".version");
    ASSERT_GT(version.size(), 40u + 52u);
    const auto word = [&](std::size_t at) {
        return version[at] | version[at + 1] << 8 | version[at + 2] << 16 |
               static_cast<std::uint32_t>(version[at + 3]) << 24;
    };
    EXPECT_EQ(word(40), 0xFEEF04BDu);      // signature
    EXPECT_EQ(word(40 + 8), 0x00040000u);  // 4.0
    EXPECT_EQ(word(40 + 12), 0x00000001u);
}
#endif

INSTANTIATE_TEST_SUITE_P(Modules, Finished, EachModuleInEachHost(), NameOf);

TEST(Finished, MatchNamesAreUnique) {
    std::set<std::string> names;
    for (const ModuleRow& row : kModules)
        names.insert(ReadPipl(ResourceOf(row.target), kWindows).Pascal("eMNA"));
    EXPECT_EQ(names.size(), std::size(kModules));
}

}  // namespace
}  // namespace zel::test
