// Completion in real shells: what they offer is what the verbs' tables have.

#include "cli/verbs/Verbs.h"
#include "tests/cli/CliTest.h"

#include <algorithm>
#include <sstream>

namespace {

using namespace zel::test;

class Completion : public CliTest {
protected:
    Completion() {
        for (const char* shell : {"bash", "zsh"}) {
            const Outcome run = Zelfx({"completion", shell});
            EXPECT_EQ(run.status, 0) << run.err;
            WriteFile(In(shell), run.out.data(), run.out.size());
        }
        WriteFile(In("look.json"), "{}", 2);
        WriteFile(In("a picture.png"), "x", 1);
    }

    struct Case {
        Words line, offered;  // the last word is the one to complete
    };

    /// Asks one bash for all of them.
    void ExpectBashOffers(const std::vector<Case>& cases) const {
        // compopt speaks to a completion that the shell itself asked for: not here.
        std::string script =
            "compopt() { :; }; source ./bash\n"
            "ask() { COMP_WORDS=(\"$@\"); COMP_CWORD=$(($# - 1))\n"
            "_zelfx " ZELFX_PROGRAM
            " \"${@: -1}\" \"${@: -2:1}\"\n"
            "[[ $COMPREPLY ]] && printf '%s\\n' \"${COMPREPLY[@]}\"; echo --; }\n";
        for (const Case& c : cases) {
            script += "ask";
            for (const std::string& word : c.line) script += SplitAtEqualSigns(word);
            script += '\n';
        }
        const Outcome run = Tool({"bash", "--norc", "-c", script});
        EXPECT_EQ(run.err, "");
        std::istringstream lines(run.out);
        for (const Case& c : cases) {
            Words offered, wanted = c.offered;
            for (std::string line; std::getline(lines, line) && line != "--";)
                offered.push_back(line);
            std::ranges::sort(offered);
            std::ranges::sort(wanted);
            EXPECT_EQ(offered, wanted) << testing::PrintToString(c.line);
        }
    }

private:
    /// As the words of a command line reach a completion: '=' is one of its own.
    static std::string SplitAtEqualSigns(const std::string& word) {
        const auto at = word.find('=');
        if (at == std::string::npos) return " '" + word + "'";
        const std::string behind = word.substr(at + 1);
        return " '" + word.substr(0, at) + "' '='" + (behind.empty() ? "" : " '" + behind + "'");
    }
};

TEST_F(Completion, BashKnowsVerbsAndOptions) {
    std::vector<Case> cases;
    Words verbs{"--help", "--version"};
    for (const zel::Verb& verb : zel::AllVerbs()) {
        verbs.emplace_back(verb.name);
        Words flags{"--help"};
        for (const zel::Option& option : verb.options)
            for (const std::string& flag : option.Flags()) flags.push_back(flag);
        cases.push_back({{"zelfx", verb.name, "-"}, flags});
    }
    cases.push_back({{"zelfx", ""}, verbs});
    cases.push_back({{"zelfx", "ren"}, {"render"}});
    cases.push_back({{"zelfx", "render", "--log-"}, {"--log-to-linear"}});
    ExpectBashOffers(cases);
}

TEST_F(Completion, BashKnowsTheWordsOfAnOption) {
    std::vector<Case> cases;
    for (const zel::Verb& verb : zel::AllVerbs())
        for (const zel::Option& option : verb.options) {
            const Words words = option.Words();
            if (words.empty()) continue;
            if (option.IsPositional()) cases.push_back({{"zelfx", verb.name, ""}, words});
            for (const std::string& flag : option.Flags())
                cases.push_back({{"zelfx", verb.name, flag, ""}, words});
            if (!option.IsPositional())
                cases.push_back({{"zelfx", verb.name, option.Name() + "="}, words});
        }
    EXPECT_GT(cases.size(), 20u);
    cases.push_back({{"zelfx", "render", "a", "b", "--alpha", "m"}, {"module"}});
    cases.push_back({{"zelfx", "render", "a", "b", "--alpha=m"}, {"module"}});
    ExpectBashOffers(cases);
}

TEST_F(Completion, BashAsksForEffectsParametersAndFiles) {
    ExpectBashOffers({
        {{"zelfx", "render", "in.png", "out.png", "-e", ""},
         {"brightness_contrast_pivot", "color_balance", "gamma_gain_offset",
          "log_linear_conversion"}},
        {{"zelfx", "describe", "gam"}, {"gamma_gain_offset"}},
        {{"zelfx", "curve", "co"}, {"color_balance"}},
        {{"zelfx", "export", "-o", "x.cube", "lo"}, {"log_linear_conversion", "look.json"}},
        {{"zelfx", "render", "a", "b", "-p", "lo"}, {"look.json"}},
        {{"zelfx", "render", "a"}, {"a picture.png"}},
        {{"zelfx", "render", "x", "y", "-e", "color_balance", "-s", "high"},
         {"highlights.blue=", "highlights.green=", "highlights.red=", "highlights.rgb="}},
        {{"zelfx", "curve", "color_balance", "--set", "master.r"}, {"master.red=", "master.rgb="}},
        // Numbers and sizes are the person's own.
        {{"zelfx", "place", "a", "b", "--size", ""}, {}},
        {{"zelfx", "render", "a", "b", "-s", "master.red="}, {}},
        {{"zelfx", "render", "a", "b", "-s", "master.red=1"}, {}},
    });
}

TEST_F(Completion, NamesOfParametersAreTaken) {
    for (const char* effect : {"color_balance", "brightness_contrast_pivot", "gamma_gain_offset",
                               "log_linear_conversion"}) {
        const std::string names = Zelfx({"describe", effect, "--names"}).out;
        std::istringstream lines(names);
        Words setting{"curve", effect, "-o", "curve.csv"};
        for (std::string name; std::getline(lines, name);) {
            EXPECT_EQ(name.find_first_not_of("abcdefghijklmnopqrstuvwxyz._"), std::string::npos)
                << name;
            setting.insert(setting.end(), {"-s", name + "=1"});
        }
        EXPECT_GT(setting.size(), 20u);
        EXPECT_EQ(Zelfx(setting).status, 0) << effect << names;
    }
}

/// A terminal with zsh in it, lines typed into that, and what completing makes of them.
TEST_F(Completion, ZshCompletesInATerminal) {
    if (RunProgram({"sh", "-c", "command -v zsh"}).status != 0) GTEST_SKIP() << "no zsh here";
    Tool({"zsh", "-n", "zsh"});
    fs::create_directory(In("functions"));
    fs::copy_file(In("zsh"), In("functions/_zelfx"));
    fs::create_directory(In("bin"));
    fs::create_symlink(ZELFX_PROGRAM, In("bin/zelfx"));
    const std::string rc = R"sh(
path=($PWD/bin $path)
fpath=($PWD/functions $fpath)
autoload -U compinit
compinit -u -D
complete-and-tell() { zle complete-word; print -r -- $BUFFER >>told; zle kill-whole-line }
zle -N complete-and-tell
bindkey '^X' complete-and-tell
PS1='ready>'
)sh";
    WriteFile(In(".zshrc"), rc.data(), rc.size());
    // One line at a time: completion leaves a line alone while more is being typed.
    const std::string driver = R"sh(
zmodload zsh/zpty
: >told
zpty shell "TERM=dumb ZDOTDIR=$PWD zsh -i"
zpty -r -m shell out '*ready>*'
for line; do
    (( ++lines ))
    zpty -w -n shell "$line"$'\x18'
    for i in {1..200}; do
        (( $(wc -l <told) >= lines )) && break
        sleep 0.05
    done
done
zpty -d shell
cat told
)sh";
    WriteFile(In("driver"), driver.data(), driver.size());
    const struct {
        const char *line, *completed;
    } cases[] = {
        {"zelfx ren", "zelfx render "},
        {"zelfx render a b --alpha mo", "zelfx render a b --alpha module "},
        {"zelfx describe col", "zelfx describe color_balance "},
        {"zelfx render a b -e gam", "zelfx render a b -e gamma_gain_offset "},
        {"zelfx curve color_balance -s midtones.re", "zelfx curve color_balance -s midtones.red="},
        {"zelfx render a b --save-p", "zelfx render a b --save-preset "},
        {"zelfx curve loo", "zelfx curve look.json "},
    };
    Words command{"timeout", "60", "zsh", "-f", "driver"};
    std::string wanted;
    for (const auto& c : cases) {
        command.emplace_back(c.line);
        wanted += std::string(c.completed) + '\n';
    }
    const Outcome run = RunProgram(command, {.folder = In("")});
    EXPECT_EQ(run.out, wanted) << run.err;
}

}  // namespace
