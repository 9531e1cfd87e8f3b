// The help of every verb fits a screen and tells all that the verb takes.

#include "cli/Help.h"
#include "cli/verbs/Verbs.h"
#include "tests/cli/CliTest.h"

#include <algorithm>
#include <sstream>

namespace {

using namespace zel::test;

using Help = CliTest;

void ExpectFits(const std::string& help, int lines) {
    EXPECT_LE(std::ranges::count(help, '\n'), lines) << help;
    std::istringstream rows(help);
    for (std::string row; std::getline(rows, row);) {
        EXPECT_LE(row.size(), 80u) << row;
        EXPECT_FALSE(row.ends_with(' ')) << "'" << row << "'";
    }
}

TEST(HelpText, FitsAScreen) {
    ExpectFits(zel::HelpOf(zel::AllVerbs()), 24);
    for (const zel::Verb& verb : zel::AllVerbs()) {
        SCOPED_TRACE(verb.name);
        // render has more to say than a small terminal holds.
        ExpectFits(zel::HelpOf(verb), std::string(verb.name) == "render" ? 43 : 24);
    }
}

TEST(HelpText, NamesEveryVerbAndOption) {
    const std::string program = zel::HelpOf(zel::AllVerbs());
    for (const zel::Verb& verb : zel::AllVerbs()) {
        SCOPED_TRACE(verb.name);
        EXPECT_NE(program.find(std::string("\n  ") + verb.name + ' '), std::string::npos);
        EXPECT_NE(program.find(verb.summary), std::string::npos);
        const std::string help = zel::HelpOf(verb);
        EXPECT_TRUE(help.starts_with(std::string("zelfx ") + verb.name)) << help;
        for (const zel::Option& option : verb.options) {
            if (option.IsHeading()) {
                EXPECT_NE(help.find(std::string("\n") + option.help + ":\n"), std::string::npos)
                    << option.help;
                continue;
            }
            EXPECT_NE(help.find(option.Name()), std::string::npos) << option.Name();
            if (option.count != zel::Option::Required) continue;
            const std::string usage = help.substr(0, help.find('\n'));
            EXPECT_NE(usage.find(option.IsPositional() ? option.Name() : option.Flags().back()),
                      std::string::npos)
                << option.Name() << " belongs into the first line";
        }
    }
}

TEST_F(Help, IsPrinted) {
    const struct {
        Words command;
        std::string wanted;
    } cases[] = {
        {{"--help"}, zel::HelpOf(zel::AllVerbs())},
        {{"-h"}, zel::HelpOf(zel::AllVerbs())},
        {{"list", "--help"}, zel::HelpOf(zel::ListVerb())},
        {{"render", "-h"}, zel::HelpOf(zel::RenderVerb())},
        {{"render", "in.png", "--help"}, zel::HelpOf(zel::RenderVerb())},
    };
    for (const auto& c : cases) {
        const Outcome run = Zelfx(c.command);
        EXPECT_EQ(run.status, 0);
        EXPECT_EQ(run.out, c.wanted);
        EXPECT_EQ(run.err, "");
    }
}

}  // namespace
