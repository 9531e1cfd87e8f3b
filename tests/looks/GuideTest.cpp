// Every command of docs/guide.md does what the guide says: it runs.

#include "tests/looks/LooksTest.h"

#include <fstream>
#include <sstream>

namespace {

using namespace zel::test;

struct Section {
    std::string title, commands;
};

/// The blocks marked sh, by the heading above them.
std::vector<Section> Sections() {
    std::ifstream guide(ZEL_SOURCE_ROOT "/docs/guide.md");
    EXPECT_TRUE(guide) << "docs/guide.md is not there";
    std::vector<Section> sections;
    bool inside = false;
    for (std::string line; std::getline(guide, line);) {
        if (line.starts_with("## ")) sections.push_back({line.substr(3), ""});
        if (line.starts_with("```")) {
            inside = line == "```sh";
            continue;
        }
        if (inside && !sections.empty()) sections.back().commands += line + '\n';
    }
    return sections;
}

class Guide : public LooksTest {};

TEST_F(Guide, EveryCommandRuns) {
    std::filesystem::create_directory_symlink(ZEL_SOURCE_ROOT "/samples", folder / "samples");
    const std::string path =
        std::filesystem::path(ZELFX_PROGRAM).parent_path().string() + ":" + std::getenv("PATH");
    int commands = 0;
    const std::vector<Section> sections = Sections();
    EXPECT_EQ(sections.size(), 10u) << "tasks";
    for (const Section& section : sections) {
        SCOPED_TRACE(section.title);
        EXPECT_NE(section.commands, "") << "a section without a command";
        std::istringstream lines(section.commands);
        for (std::string line; std::getline(lines, line);) commands += line.starts_with("zelfx ");
        const Outcome run = RunProgram({"bash", "-euo", "pipefail", "-c", section.commands},
                                       {.folder = folder / "", .environment = {{"PATH", path}}});
        EXPECT_EQ(run.status, 0) << section.commands << run.err;
        EXPECT_EQ(run.err, "") << section.commands;
    }
    EXPECT_GT(commands, 30);
}

}  // namespace
