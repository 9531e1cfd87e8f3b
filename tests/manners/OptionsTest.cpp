// Every option of every verb, walked through the verbs' own tables: what is wrong on a
// command line is told by name, in one line, with status 2, before anything is read or
// written.

#include "cli/verbs/Verbs.h"
#include "headless/Error.h"
#include "tests/cli/CliTest.h"

namespace {

using namespace zel::test;

/// The least that the verb takes, with values that would do; `without` is left out.
Words Least(const zel::Verb& verb, const zel::Option* without = nullptr) {
    Words words{verb.name};
    for (const zel::Option& option : verb.options) {
        if (&option == without || option.count != zel::Option::Required) continue;
        if (!option.IsPositional()) words.push_back(option.Name());
        words.push_back(option.Words().empty() ? "there-is-none.png" : option.Words().front());
    }
    return words;
}

/// Parses in this process: a program for each of these hundreds would take a minute.
void ExpectRefused(const Words& words, const Words& texts) {
    std::vector<const char*> arguments{"zelfx"};
    std::string command;
    for (const std::string& word : words) {
        arguments.push_back(word.c_str());
        command += word + ' ';
    }
    SCOPED_TRACE(command);
    try {
        zel::RunVerbs(zel::AllVerbs(), static_cast<int>(arguments.size()), arguments.data());
        ADD_FAILURE() << "not refused";
    } catch (const zel::Error& e) {
        const std::string said = e.what();
        EXPECT_EQ(e.Kind(), zel::ErrorKind::Usage) << said;
        EXPECT_EQ(LinesOf(said), 0u) << said;
        for (const std::string& text : texts)
            EXPECT_NE(said.find(text), std::string::npos) << "'" << text << "' in " << said;
    }
}

TEST(Verbs, AreKnownOrRefused) {
    ExpectRefused({}, {"a verb is missing", "list", "man"});
    ExpectRefused({"rendr"}, {"no verb 'rendr'", "did you mean render"});
    ExpectRefused({"qqqqqq"}, {"no verb 'qqqqqq'", "list", "render", "man"});
    ExpectRefused({""}, {"no verb ''"});
    ExpectRefused({"--nonsense"}, {"'--nonsense'"});
    ExpectRefused({"--versoin"}, {"'--versoin'", "did you mean", "--version"});
    for (const zel::Verb& verb : zel::AllVerbs())
        ExpectRefused({std::string(verb.name) + "x"}, {"no verb", verb.name});
}

TEST(Options, NeedTheirValue) {
    for (const zel::Verb& verb : zel::AllVerbs())
        for (const zel::Option& option : verb.options)
            for (const std::string& flag : option.Flags()) {
                if (!option.value) continue;
                Words words = Least(verb, &option);
                words.push_back(flag);
                ExpectRefused(words, {"--" + option.Key(), "value", option.value});
            }
}

TEST(Options, TakeTheirWordsAndNoOthers) {
    int seen = 0;
    for (const zel::Verb& verb : zel::AllVerbs())
        for (const zel::Option& option : verb.options) {
            if (option.Words().empty()) continue;
            ++seen;
            for (const char* wrong : {"nonsense", "", " "}) {
                Words words = Least(verb, &option);
                if (!option.IsPositional()) words.push_back(option.Name());
                words.push_back(wrong);
                ExpectRefused(words, {option.Name() + " cannot be '" + wrong + "'",
                                      option.Words().front(), option.Words().back()});
            }
        }
    EXPECT_GE(seen, 12);
}

TEST(Options, AreKnownOrRefused) {
    for (const zel::Verb& verb : zel::AllVerbs()) {
        Words words = Least(verb);
        words.push_back("--nonsense");
        ExpectRefused(words, {"'--nonsense'"});
        for (const zel::Option& option : verb.options) {
            if (option.IsPositional() || option.IsHeading() || option.Key().size() < 4) continue;
            words.back() = "--" + option.Key().substr(1);  // a slip of the finger
            ExpectRefused(words, {"'" + words.back() + "'", "did you mean", option.Name()});
        }
    }
}

TEST(Options, ThatMustBeThereAreMissed) {
    for (const zel::Verb& verb : zel::AllVerbs()) {
        for (const zel::Option& option : verb.options) {
            if (option.count != zel::Option::Required) continue;
            // Without one name the next takes its place: the last is missed.
            ExpectRefused(Least(verb, &option),
                          {"is missing", option.IsPositional() ? "" : option.Name()});
        }
    }
}

TEST(Options, OneArgumentTooMany) {
    for (const zel::Verb& verb : zel::AllVerbs()) {
        bool takesAny = false;
        for (const zel::Option& option : verb.options)
            takesAny |= option.IsPositional() && option.count == zel::Option::Many;
        if (takesAny) continue;
        Words words = Least(verb);
        words.push_back("more");
        ExpectRefused(words, {"'more'", "too many"});
    }
}

TEST(Options, SwitchesTakeNoValue) {
    for (const zel::Verb& verb : zel::AllVerbs())
        for (const zel::Option& option : verb.options) {
            if (option.value || option.IsPositional() || option.IsHeading()) continue;
            Words words = Least(verb);
            words.push_back(option.Name() + "=nonsense");
            ExpectRefused(words, {option.Name()});
        }
}

}  // namespace
