/// zelfx with modules that misbehave: it goes on, says what happened and leaves what was
/// there as it was.

#include "tests/cli/CliTest.h"

#include <chrono>

namespace {

using namespace zel::test;

class Misbehaving : public CliTest {
protected:
    Misbehaving() { MakeWithMagick("in.png", 3, 2, std::vector<unsigned char>(18, 100)); }

    static std::string FileOf(const std::string& module) {
        return ZEL_MISBEHAVING "/" + module + ".so";
    }

    /// Runs zelfx, but not forever.
    Outcome Limited(const Words& arguments, RunOptions options = {}) const {
        Words command{"timeout", "-s", "KILL", "120", ZELFX_PROGRAM};
        command.insert(command.end(), arguments.begin(), arguments.end());
        options.folder = In("");
        return RunProgram(command, options);
    }

    /// Renders through the module over a picture that is there already, which is to stay.
    void ExpectTold(const std::string& module, const Words& options, const Words& texts) const {
        SCOPED_TRACE(module);
        WriteFile(In("out.png"), "old", 3);
        const Words before = Listing();
        Words arguments{"render", "in.png", "out.png", "-e", FileOf(module)};
        arguments.insert(arguments.end(), options.begin(), options.end());
        const Outcome run = Limited(arguments);
        EXPECT_EQ(run.status, 4);
        EXPECT_EQ(run.out, "");
        EXPECT_TRUE(run.err.starts_with("zelfx: ") || module == "Aborts") << run.err;
        for (const std::string& text : texts)
            EXPECT_NE(run.err.find(text), std::string::npos) << "'" << text << "' in " << run.err;
        EXPECT_EQ(ReadFile(In("out.png")), Bytes({'o', 'l', 'd'}));
        EXPECT_EQ(Listing(), before);
    }
};

struct Case {
    const char *module, *told;
};

// clang-format off
constexpr Case kCrashes[] = {
    {"CrashesWhenLoaded",    "CrashesWhenLoaded.so' crashed while it was loaded (SIGSEGV)"},
    {"CrashesInGlobalSetup", "CrashesInGlobalSetup.so' crashed in GLOBAL_SETUP (SIGSEGV)"},
    {"CrashesInParamsSetup", "CrashesInParamsSetup.so' crashed in PARAMS_SETUP (SIGSEGV)"},
    {"CrashesInRender",      "CrashesInRender.so' crashed in RENDER (SIGSEGV)\n"},
    {"UsesUpItsStack",       "UsesUpItsStack.so' crashed in RENDER (SIGSEGV)"},
    {"Aborts",               "Aborts.so' crashed in RENDER (SIGABRT)"},
    {"ExitsInSetup",         "ExitsInSetup.so' ended its process in GLOBAL_SETUP"},
    {"ExitsInRender",        "ExitsInRender.so' ended its process in RENDER"},
};
constexpr Case kHangs[] = {  // given 5 seconds: on a busy machine 1 can pass before they hang
    {"NeverLoads",           "NeverLoads.so' was not loaded within 5 seconds"},
    {"NeverSetsUp",          "NeverSetsUp.so' did not return from PARAMS_SETUP within 5 seconds"},
    {"NeverRenders",         "NeverRenders.so' did not return from RENDER within 5 seconds"},
};
constexpr Case kStrayWrites[] = {
    {"WritesBeforeItsFrame", "WritesBeforeItsFrame.so' wrote outside its frame in RENDER: 3 bytes before its first row"},
    {"WritesBesideItsRow",   "wrote outside its frame in RENDER: behind the 3 pixels of row 0"},
    {"WritesBehindItsFrame", "wrote outside its frame in RENDER: behind its last row"},
    {"WritesFarBefore",      "WritesFarBefore.so' crashed in RENDER (SIGSEGV): it reached 65536 bytes before the output frame"},
    {"WritesFarBehind",      "crashed in RENDER (SIGSEGV): it reached 65536 bytes behind the output frame"},
    {"ReadsFarBehind",       "crashed in RENDER (SIGSEGV): it reached 65536 bytes behind the input frame"},
};
// What is told of these is the same with and without a process of their own.
constexpr Case kSurvivable[] = {
    {"ThrowsAnInt",          "ThrowsAnInt.so' threw out of RENDER: the number 516"},
    {"ThrowsAnException",    "ThrowsAnException.so' threw out of RENDER: no way"},
    {"ThrowsAnObject",       "ThrowsAnObject.so' threw out of RENDER: an object of unknown type"},
    {"AnswersNonsense",      "refused the frame with error -2147483648"},
    {"AddsWithoutEnd",       "AddsWithoutEnd.so' answered PARAMS_SETUP with error 4"},
};
// clang-format on

TEST_F(Misbehaving, CrashesAreSurvived) {
    for (const Case& c : kCrashes) ExpectTold(c.module, {"--isolate"}, {c.told});
}

TEST_F(Misbehaving, WhatDoesNotReturnIsGivenUp) {
    for (const Case& c : kHangs)
        ExpectTold(c.module, {"--isolate", "--isolate-timeout", "5"}, {c.told});
    ExpectTold("NeverLoads", {"--isolate", "--isolate-timeout", "1"}, {"within 1 second\n"});
}

TEST_F(Misbehaving, WritesOutsideTheFrameAreFound) {
    for (const Case& c : kStrayWrites) ExpectTold(c.module, {"--isolate"}, {c.told});
}

TEST_F(Misbehaving, WhatCanBeSurvivedIsSurvivedAnyway) {
    for (const Case& c : kSurvivable) {
        ExpectTold(c.module, {}, {c.told});
        ExpectTold(c.module, {"--isolate"}, {c.told});
    }
}

TEST_F(Misbehaving, AnExitIsNoSuccess) {
    ExpectTold("ExitsInSetup", {}, {"ended the program"});
    ExpectTold("ExitsInRender", {}, {"ended the program"});
}

#if !defined(ZEL_SANITIZED)  // they have an end of their own for crashes

TEST_F(Misbehaving, ACrashWithoutAProcessOfItsOwnLeavesTheOldFile) {
    WriteFile(In("out.png"), "old", 3);
    const Words before = Listing();
    const Outcome run =
        RunProgram({ZELFX_PROGRAM, "render", "in.png", "out.png", "-e", FileOf("CrashesInRender")},
                   {.folder = In("")});
    EXPECT_EQ(run.status, -SIGSEGV);
    EXPECT_EQ(run.err, "zelfx: crashed (SIGSEGV); --isolate tells of an effect that does\n");
    EXPECT_EQ(ReadFile(In("out.png")), Bytes({'o', 'l', 'd'}));
    EXPECT_EQ(Listing(), before);
}

#endif

TEST_F(Misbehaving, FailuresOfTheSetDownAreTold) {
    const Case cases[] = {
        {"CrashesInSetdown", "CrashesInSetdown.so' crashed in GLOBAL_SETDOWN (SIGSEGV)"},
        {"NeverSetsDown", "NeverSetsDown.so' did not return from GLOBAL_SETDOWN within 5 seconds"},
    };
    for (const Case& c : cases) {
        const Outcome run = Limited({"render", "in.png", std::string(c.module) + ".png", "-e",
                                     FileOf(c.module), "--isolate", "--isolate-timeout", "5"});
        EXPECT_EQ(run.status, 0) << run.err;  // the picture is whole
        EXPECT_NE(run.err.find("zelfx: note: "), std::string::npos) << run.err;
        EXPECT_NE(run.err.find(c.told), std::string::npos) << run.err;
        EXPECT_EQ(ReadWithMagick<unsigned char>(std::string(c.module) + ".png"),
                  std::vector<unsigned char>(18, 100));
    }
}

TEST_F(Misbehaving, OddRegistrations) {
    for (const char* isolate : {"", "--isolate"}) {
        const auto with = [&](Words words) {
            if (*isolate) words.push_back(isolate);
            return Limited(words);
        };
        const Outcome none = with({"describe", FileOf("AddsNone")});
        EXPECT_EQ(none.status, 0) << none.err;
        EXPECT_EQ(LinesOf(none.out), 3u) << none.out;
        const Outcome many = with({"describe", FileOf("AddsThousands")});
        EXPECT_EQ(many.status, 0) << many.err;
        EXPECT_EQ(LinesOf(many.out), 5003u);
        EXPECT_NE(many.out.find("\n 5000  5000  " + std::string(32, 'p') + " "), std::string::npos);
        const Outcome named =
            with({"render", "in.png", "named.png", "-e", FileOf("NamesItselfWithoutEnd")});
        EXPECT_EQ(named.status, 0) << named.err;
        EXPECT_NE(named.out.find("through " + std::string(256, 'n') + " as"), std::string::npos)
            << named.out;
    }
}

TEST_F(Misbehaving, AListGoesOnBehindThem) {
    const std::string folders = ZEL_MISBEHAVING ":" ZEL_MODULES;
    const Outcome run = Limited({"list", "--isolate", "--isolate-timeout", "5"},
                                {.environment = {{"ZELFX_PATH", folders}}});
    EXPECT_EQ(run.status, 4);
    for (const char* good : {"zel_color_balance", "zel_log_linear_conversion", "AddsThousands"})
        EXPECT_NE(run.out.find(good), std::string::npos) << good << " in " << run.out;
    for (const char* told : {"CrashesWhenLoaded.so' crashed while it was loaded (SIGSEGV)",
                             "NeverLoads.so' was not loaded within 5 seconds",
                             "ExitsInSetup.so' ended its process in GLOBAL_SETUP"})
        EXPECT_NE(run.err.find(told), std::string::npos) << told << " in " << run.err;
}

TEST_F(Misbehaving, NothingIsLeftRunning) {
    using namespace std::chrono;
    const auto start = steady_clock::now();
    Limited({"render", "in.png", "out.png", "-e", FileOf("NeverRenders"), "--isolate",
             "--isolate-timeout", "1"});
    EXPECT_LT(steady_clock::now() - start, seconds(30));
    for (const auto& entry : fs::directory_iterator("/proc")) {
        std::error_code ignored;
        const fs::path folder = fs::read_symlink(entry.path() / "cwd", ignored);
        EXPECT_FALSE(!ignored && !folder.empty() && folder == fs::canonical(In("")))
            << entry.path() << " still runs in " << folder;
    }
}

TEST_F(Misbehaving, OptionsOfIsolation) {
    ExpectRefused(
        {"render", "in.png", "out.png", "-e", FileOf("AddsNone"), "--isolate-timeout", "5"}, 2,
        {"--isolate-timeout is for --isolate"});
    for (const std::string limit : {"0", "-1", "86401", "1.5", "soon", ""})
        ExpectRefused({"list", "--isolate", "--isolate-timeout", limit}, 2,
                      {"--isolate-timeout cannot be '" + limit + "'", "from 1 to 86400"});
}

}  // namespace
