/// Command lines of any words, one per line of the input: each ends in a verb with what
/// was given to it, in a page of help, or in an error of the command line. The verbs do
/// nothing here; settings are put into a real effect's parameters.

#include "cli/Options.h"
#include "cli/Settings.h"
#include "cli/verbs/Verbs.h"
#include "fuzz/Check.h"
#include "fuzz/Feed.h"
#include "headless/EffectSession.h"
#include "headless/Error.h"

#include <iostream>
#include <sstream>
#include <streambuf>

namespace {

using namespace zel;
using namespace zel::fuzz;

int Settings(const Arguments& arguments) {
    static const EffectSession session(ZEL_FUZZ_MODULE, Personality::Premiere);
    ParameterValues values(session.Params());
    ApplySettings(arguments, values);
    for (const Parameter& p : session.Params().All())
        if (p.IsSettable())
            Check(values.Get(p) >= p.Minimum() && values.Get(p) <= p.Maximum(),
                  "a value is out of its range");
    return 0;
}

std::vector<Verb> HarmlessVerbs() {
    std::vector<Verb> verbs(AllVerbs().begin(), AllVerbs().end());
    for (Verb& verb : verbs) verb.run = Settings;
    return verbs;
}

/// Takes what help prints.
class Nowhere : public std::streambuf {
    int overflow(int c) override { return c == EOF ? 0 : c; }
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const std::vector<Verb> verbs = HarmlessVerbs();
    static Nowhere nowhere;
    Feed feed(data, size);
    std::vector<std::string> words{"zelfx"};
    std::istringstream lines(feed.Rest());
    for (std::string word; std::getline(lines, word);) words.push_back(word.c_str());
    std::vector<const char*> argv;
    for (const std::string& word : words) argv.push_back(word.c_str());

    std::streambuf* const out = std::cout.rdbuf(&nowhere);
    try {
        RunVerbs(verbs, static_cast<int>(argv.size()), argv.data());
    } catch (const Error& e) {
        Check(e.Kind() == ErrorKind::Usage, "an error that is no matter of the command line");
        Check(e.what()[0] != '\0', "an error without words");
    }
    std::cout.rdbuf(out);
    return 0;
}
