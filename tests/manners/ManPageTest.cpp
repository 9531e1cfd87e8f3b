// The manual page: roff without complaints, and nothing left out.

#include "cli/verbs/Verbs.h"
#include "tests/cli/CliTest.h"

namespace {

using namespace zel::test;

class ManPage : public CliTest {
protected:
    ManPage() {
        const std::string page = Zelfx({"man"}).out;
        WriteFile(In("zelfx.1"), page.data(), page.size());
    }

    /// As a terminal shows it, without bold and without line breaks inside of sentences.
    std::string Rendered() {
        return Tool({"sh", "-c", "groff -man -ww -Tascii -P-c -P-b -P-u -rLL=2000n zelfx.1"}).out;
    }
};

TEST_F(ManPage, HasNoWarnings) {
    for (const char* device : {"-Tascii", "-Tutf8", "-Tps"}) {
        const Outcome run =
            RunProgram({"groff", "-man", "-ww", device, "zelfx.1"}, {.folder = In("")});
        EXPECT_EQ(run.status, 0) << device;
        EXPECT_EQ(run.err, "") << device;
    }
}

TEST_F(ManPage, NamesEveryVerbAndOptionWithItsHelp) {
    const std::string page = Rendered();
    std::size_t at = page.find("VERBS\n");
    ASSERT_NE(at, std::string::npos) << page;
    for (const zel::Verb& verb : zel::AllVerbs()) {
        SCOPED_TRACE(verb.name);
        at = page.find(std::string("\n   ") + verb.name + '\n', at);
        ASSERT_NE(at, std::string::npos) << page;
        for (const zel::Option& option : verb.options) {
            // In the order of the table, each flag before the next.
            const auto flags = option.IsPositional() || option.IsHeading()
                                   ? std::vector<std::string>{option.Key()}
                                   : option.Flags();
            for (const std::string& flag : flags)
                EXPECT_NE(page.find(flag, at), std::string::npos) << flag;
            at = page.find(option.help, at);
            ASSERT_NE(at, std::string::npos) << option.help;
            for (const std::string& word : option.Words())
                EXPECT_NE(page.rfind(word, page.find('\n', at)), std::string::npos) << word;
        }
    }
}

TEST_F(ManPage, TellsStatusAndEnvironment) {
    const std::string page = Rendered();
    for (const char* text : {"NAME", "SYNOPSIS", "EXIT STATUS", "ENVIRONMENT", "ZELFX_PATH",
                             "ZELFX_CPU", "lib/zelfx/modules"})
        EXPECT_NE(page.find(text), std::string::npos) << text;
}

}  // namespace
