// What a run says of itself: on a terminal, elsewhere, and when it shall be quiet.

#include "tests/cli/frames/FramesTest.h"

#include "cli/frames/Progress.h"
#include "cli/picture/QuietLibraries.h"

#include <fcntl.h>
#include <pty.h>
#include <sys/wait.h>
#include <unistd.h>

#include <regex>
#include <thread>

namespace {

using namespace zel::test;

class ProgressLine : public FramesTest {
protected:
    /// What zelfx prints to a terminal, both of its outputs.
    std::string OnTerminal(const Words& arguments, const char* kind) const {
        int terminal = -1;
        const pid_t child = forkpty(&terminal, nullptr, nullptr, nullptr);
        if (child == 0) {
            Words words = Words{ZELFX_PROGRAM} + arguments;
            std::vector<char*> pointers;
            for (std::string& word : words) pointers.push_back(word.data());
            pointers.push_back(nullptr);
            setenv("TERM", kind, 1);
            if (chdir(In("").c_str()) == 0) execv(pointers[0], pointers.data());
            _exit(127);
        }
        std::string text;
        char block[4096];
        for (ssize_t n; (n = read(terminal, block, sizeof block)) > 0;)
            text.append(block, static_cast<std::size_t>(n));
        close(terminal);
        int status = 0;
        waitpid(child, &status, 0);
        EXPECT_EQ(status, 0) << text;
        return text;
    }
};

TEST(Progress, Durations) {
    const struct {
        double seconds;
        const char* text;
    } cases[] = {
        {-1, "0 s"},           {0, "0 s"},
        {0.4, "0 s"},          {59.4, "59 s"},
        {59.6, "1 min 0 s"},   {200, "3 min 20 s"},
        {3599, "59 min 59 s"}, {3600, "1 h 0 min"},
        {7530, "2 h 5 min"},   {360000, "100 h 0 min"},
    };
    for (const auto& c : cases) EXPECT_EQ(zel::Duration(c.seconds), c.text) << c.seconds;
}

TEST_F(ProgressLine, IsOverwrittenOnATerminal) {
    MakeEqualFrames(200, "512x512");  // for a fast machine, over a second
    const std::string text = OnTerminal(Command("in", "out", {"--jobs", "1"}), "xterm");
    const std::regex line(R"(\r\x1b\[K(\d+)/200 frames, [0-9.]+ per second, \d+ s left)");
    std::vector<int> counts;
    for (std::sregex_iterator at(text.begin(), text.end(), line), end; at != end; ++at)
        counts.push_back(std::stoi((*at)[1]));
    EXPECT_GE(counts.size(), 2u) << text;
    EXPECT_TRUE(std::is_sorted(counts.begin(), counts.end()));
    // In the end the line is gone, and the result stands in its place.
    EXPECT_TRUE(std::regex_search(text, std::regex("\r\x1b\\[Kout/shot.####.tif: 200 frames")))
        << text;
}

TEST_F(ProgressLine, IsPlainElsewhere) {
    MakeEqualFrames(6, "256x256");
    const struct {
        Words more;
        const char* kind;
    } cases[] = {{{}, "dumb"}, {{"--quiet"}, "xterm"}};
    for (const auto& c : cases) {
        const std::string text = OnTerminal(Command("in", "out", c.more), c.kind);
        EXPECT_EQ(text.find('\x1b'), std::string::npos) << text;
    }
    const Outcome run = RenderFrames("in", "out");
    EXPECT_EQ(run.err, "");  // done before a line is due
    EXPECT_EQ(LinesOf(run.out), 1u);
}

TEST_F(ProgressLine, QuietAndVerbose) {
    MakeEqualFrames(5, "64x64");
    const Outcome quiet = RenderFrames("in", "out", {"--quiet"});
    EXPECT_EQ(quiet.out + quiet.err, "");
    const Outcome verbose = RenderFrames("in", "out", {"--verbose", "--jobs", "2"});
    EXPECT_EQ(LinesOf(verbose.err), 6u) << verbose.err;
    EXPECT_NE(verbose.err.find("at most 4 frames in flight"), std::string::npos) << verbose.err;
    for (int i = 1; i <= 5; ++i)
        EXPECT_NE(verbose.err.find("frame " + std::to_string(i) + ": "), std::string::npos);
}

// Threads that hold libraries quiet take nothing of what the program says itself, and
// give standard error back.
TEST(QuietLibraries, ManyThreads) {
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    const int saved = dup(STDERR_FILENO);
    dup2(ends[1], STDERR_FILENO);
    {
        std::vector<std::jthread> threads;
        for (int t = 0; t < 8; ++t)
            threads.emplace_back([] {
                for (int i = 0; i < 200; ++i) {
                    const zel::QuietLibraries quiet;
                    [[maybe_unused]] const ssize_t n = write(STDERR_FILENO, "noise", 5);
                    if (i % 20 == 0) zel::WriteToStderr("word\n");
                }
            });
    }
    [[maybe_unused]] const ssize_t n = write(STDERR_FILENO, "last\n", 5);
    dup2(saved, STDERR_FILENO);
    close(saved);
    close(ends[1]);
    std::string text;
    char block[4096];
    for (ssize_t r; (r = read(ends[0], block, sizeof block)) > 0;)
        text.append(block, static_cast<std::size_t>(r));
    close(ends[0]);
    std::string expected;
    for (int i = 0; i < 80; ++i) expected += "word\n";
    EXPECT_EQ(text, expected + "last\n");
}

}  // namespace
