// What the program says of the verbs about looks.

#include "tests/looks/LooksTest.h"

#include <algorithm>
#include <sstream>

namespace {

using namespace zel::test;

class LooksHelp : public LooksTest {};

TEST_F(LooksHelp, FitsAScreen) {
    for (const char* verb : {"render", "curve", "export", "compare", "scope", "probe"}) {
        SCOPED_TRACE(verb);
        const std::string help = Succeeds({verb, "--help"}).out;
        EXPECT_LE(std::ranges::count(help, '\n'), 40) << help;
        std::istringstream lines(help);
        for (std::string line; std::getline(lines, line);) EXPECT_LE(line.size(), 100u) << line;
    }
}

TEST_F(LooksHelp, NamesTheOptionsThatVerbsShare) {
    for (const char* verb : {"render", "curve", "export", "probe"}) {
        const std::string help = Succeeds({verb, "--help"}).out;
        for (const char* option :
             {"--effect", "--set", "--preset", "--log-to-linear", "--linear-to-log"})
            EXPECT_NE(help.find(option), std::string::npos) << verb << ' ' << option;
    }
    const std::string program = Succeeds({"--help"}).out;
    for (const char* verb : {"export", "compare", "scope", "probe"})
        EXPECT_NE(program.find(verb), std::string::npos) << verb;
}

}  // namespace
