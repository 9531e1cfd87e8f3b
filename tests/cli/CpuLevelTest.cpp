// zelfx info, --cpu and ZELFX_CPU.

#include "tests/cli/CliTest.h"

#include <algorithm>
#include <map>
#include <sstream>

namespace {

using namespace zel::test;

/// What zelfx info prints.
struct Info {
    Words levels;  // of the processor, ascending
    std::string inUse;
    std::map<std::string, std::string> chosen, others;  // by family

    explicit Info(const std::string& printed) {
        std::istringstream lines(printed);
        for (std::string line; std::getline(lines, line);) {
            if (line.starts_with("processor levels: ")) {
                std::istringstream words(line.substr(18));
                for (std::string word; words >> word;) levels.push_back(word);
            } else if (line.starts_with("in use: ")) {
                inUse = line.substr(8, line.find(" (") - 8);
            } else if (inUse.empty()) {
                continue;
            } else if (line.starts_with("  ")) {
                const std::size_t also = line.find(" also: ");
                std::istringstream variant(line.substr(20, also - 20));
                const std::string family = line.substr(2, line.find_last_not_of(' ', 19) - 1);
                variant >> chosen[family];
                others[family] = line.substr(also + 7);
            }
        }
    }
};

class CpuLevel : public CliTest {
protected:
    Info InfoWith(const Words& options, const RunOptions& run = {}) const {
        const Outcome outcome = Zelfx(Words{"info"} + options, run);
        EXPECT_EQ(outcome.status, 0) << outcome.err;
        EXPECT_EQ(outcome.err, "");
        return Info(outcome.out);
    }

    const Info m_all = InfoWith({}, {.environment = {{"ZELFX_CPU", ""}}});
};

TEST_F(CpuLevel, InfoNamesLevelsAndRoutines) {
    ASSERT_GE(m_all.levels.size(), 2u);
    EXPECT_EQ(m_all.levels[0], "scalar");
    EXPECT_EQ(m_all.levels[1], "portable");
    EXPECT_EQ(m_all.inUse, m_all.levels.back()) << "all that there is, unless forced";
    for (const char* const family : {"lut 8", "lut 16", "lut float", "copy", "fill",
                                     "BGRA8 to v210", "v210 to YCbYCr8", "RGB8 to BGRA8"})
        EXPECT_EQ(m_all.chosen.count(family), 1u) << family;
    EXPECT_NE(m_all.chosen.at("lut 8"), "scalar");
    EXPECT_TRUE(m_all.others.at("lut 8").starts_with("scalar")) << m_all.others.at("lut 8");
}

TEST_F(CpuLevel, EveryLevelCanBeForced) {
    for (std::size_t i = 0; i < m_all.levels.size(); ++i) {
        const std::string& level = m_all.levels[i];
        SCOPED_TRACE(level);
        const Info byOption = InfoWith({"--cpu", level});
        const Info byVariable = InfoWith({}, {.environment = {{"ZELFX_CPU", level}}});
        EXPECT_EQ(byOption.inUse, level);
        EXPECT_EQ(byVariable.inUse, level);
        EXPECT_EQ(byOption.chosen, byVariable.chosen);
        EXPECT_EQ(byOption.levels, m_all.levels) << "what there is does not depend on it";
        for (const auto& [family, variant] : byOption.chosen) {
            const auto at = std::ranges::find(m_all.levels, variant);
            EXPECT_LE(at - m_all.levels.begin(), static_cast<std::ptrdiff_t>(i))
                << family << " runs " << variant;
        }
    }
}

TEST_F(CpuLevel, TheOptionOutranksTheVariable) {
    const Info info = InfoWith({"--cpu", "portable"}, {.environment = {{"ZELFX_CPU", "scalar"}}});
    EXPECT_EQ(info.inUse, "portable");
    EXPECT_EQ(info.chosen.at("lut 16"), "portable");
}

TEST_F(CpuLevel, EveryLevelMakesTheSame) {
    std::vector<std::uint16_t> noise;
    for (std::uint32_t i = 0, v = 1; i < 70 * 30 * 3; ++i) {
        v = v * 1664525 + 1013904223;
        noise.push_back(static_cast<std::uint16_t>(v >> 16));
    }
    MakeWithMagick("in.png", 70, 30, noise, {"-define", "png:bit-depth=16"});
    WriteFile(In("in.raw"), noise);
    std::map<std::string, Bytes> first;
    for (const std::string& level : m_all.levels) {
        SCOPED_TRACE(level);
        const auto expectSame = [&](const std::string& file) {
            const auto [scalar, isFirst] = first.emplace(file, ReadFile(In(file)));
            EXPECT_TRUE(isFirst || scalar->second == ReadFile(In(file))) << file;
        };
        for (const std::string format : {"BGRA8", "BGRAFloat"}) {
            Render("in.png", format + ".png",
                   VividOptions() + Words{"--cpu", level, "--format", format, "--depth", "16"});
            expectSame(format + ".png");
        }
        for (const std::string layout : {"v210", "DpxBE"}) {
            const Outcome run = Zelfx({"convert", "in.raw", "out." + layout, "--from", "BGRA8",
                                       "--to", layout, "--size", "70x45", "--cpu", level});
            EXPECT_EQ(run.status, 0) << run.err;
            expectSame("out." + layout);
        }
        const auto draws = [&](const Words& command, const std::string& file) {
            const Outcome run = Zelfx(command + Words{"--cpu", level});
            EXPECT_EQ(run.status, 0) << run.err;
            expectSame(file);
        };
        draws({"pattern", "pattern.dpxbe", "--size", "70x45", "--layout", "DpxBE"},
              "pattern.dpxbe");
        draws({"place", "in.png", "placed.png", "--offset", "12,-4", "--flip"}, "placed.png");
    }
}

TEST_F(CpuLevel, OthersAreRefused) {
    std::string takes = "it takes ";
    for (std::size_t i = 0; i < m_all.levels.size(); ++i)
        takes += (i == 0 ? "" : i + 1 == m_all.levels.size() ? " or " : ", ") + m_all.levels[i];
    for (const std::string level : {"fastest", "avx1024", "scalar "}) {
        ExpectRefused({"info", "--cpu", level}, 2, {"--cpu cannot be '" + level + "': " + takes});
        ExpectRefused({"info"}, 2, {"ZELFX_CPU cannot be '" + level + "': " + takes},
                      {.environment = {{"ZELFX_CPU", level}}});
    }
    for (const Words& command :
         {Words{"render", "in.png", "out.png", "-e", "color_balance"},
          Words{"convert", "in.raw", "out.raw", "--from", "BGRA8", "--to", "v210", "--size", "6x1"},
          Words{"pattern", "out.png", "--size", "6x1"}, Words{"place", "in.png", "out.png"}})
        ExpectRefused(command + Words{"--cpu", "mmx"}, 2, {"--cpu cannot be 'mmx': " + takes});
}

#if defined(__x86_64__) && !defined(ZEL_SANITIZED)
// An emulated processor of 2008: SSE4.2, and nothing of AVX.
TEST_F(CpuLevel, LevelsThatTheProcessorLacks) {
    const auto onOldProcessor = [](const Words& arguments) {
        return RunProgram(Words{"qemu-x86_64", "-cpu", "Nehalem", ZELFX_PROGRAM} + arguments,
                          {.environment = {{"ZELFX_CPU", ""}}});
    };
    if (RunProgram({"sh", "-c", "command -v qemu-x86_64"}).status != 0)
        GTEST_SKIP() << "needs qemu-x86_64, of Debian's qemu-user";

    const Outcome run = onOldProcessor({"info"});
    ASSERT_EQ(run.status, 0) << run.err;
    const Info info(run.out);
    EXPECT_EQ(info.levels, (Words{"scalar", "portable", "sse2"}));
    EXPECT_EQ(info.inUse, "sse2");
    EXPECT_EQ(info.chosen.at("lut 8"), "portable");
    EXPECT_EQ(info.chosen.at("lut float"), "sse2");
    EXPECT_EQ(info.others.at("lut 16"), "scalar, avx2 (not here)");
    EXPECT_NE(info.others.at("lut 8").find("avx512 (not here)"), std::string::npos);

    const Outcome refused = onOldProcessor({"info", "--cpu", "avx512"});
    EXPECT_EQ(refused.status, 2);
    EXPECT_EQ(refused.out, "");
    EXPECT_EQ(refused.err, "zelfx: --cpu cannot be 'avx512': it takes scalar, portable or sse2\n");
}
#endif

}  // namespace
