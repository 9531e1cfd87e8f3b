// Children that die and signals that come at any moment: an error in words, never a hang,
// and no file that looks finished.

#include "tests/video/VideoTests.h"

#include <chrono>
#include <csignal>
#include <fstream>
#include <random>
#include <thread>

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

using namespace zel::test;
using namespace std::chrono_literals;

/// The program on its way, which the test watches.
class Running {
public:
    Running(const fs::path& folder, const Words& arguments) {
        m_child = fork();
        if (m_child != 0) return;
        const int err = open((folder / "err").c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0666);
        const int none = open("/dev/null", O_RDWR);
        if (err < 0 || dup2(none, 0) < 0 || dup2(none, 1) < 0 || dup2(err, 2) < 0 ||
            chdir(folder.c_str()) != 0)
            _exit(127);
        setenv("ASAN_OPTIONS", "detect_leaks=0", 1);
        std::vector<char*> words{const_cast<char*>(ZELFX_PROGRAM)};
        for (const std::string& word : arguments) words.push_back(const_cast<char*>(word.c_str()));
        words.push_back(nullptr);
        execv(words[0], words.data());
        _exit(127);
    }
    ~Running() {
        if (m_status < 0) Kill(SIGKILL), Wait();
    }

    /// A child whose command line has `word`, 0 when there is none.
    pid_t Child(const std::string& word) const {
        const std::string all =
            "/proc/" + std::to_string(m_child) + "/task/" + std::to_string(m_child) + "/children";
        std::ifstream children(all);
        for (pid_t child; children >> child;) {
            std::ifstream line("/proc/" + std::to_string(child) + "/cmdline");
            const std::string words(std::istreambuf_iterator<char>(line), {});
            if (words.find(word) != std::string::npos) return child;
        }
        return 0;
    }

    pid_t WaitForChild(const std::string& word) const {
        for (int i = 0; i < 2000; ++i) {
            if (const pid_t child = Child(word)) return child;
            std::this_thread::sleep_for(5ms);
        }
        ADD_FAILURE() << "no child with " << word;
        return 0;
    }

    void Kill(int signal) const { kill(m_child, signal); }

    /// The exit status, or -signal; a failure when it takes more than a minute.
    int Wait() {
        for (int i = 0; i < 6000 && m_status < 0; ++i) {
            int status = 0;
            if (waitpid(m_child, &status, WNOHANG) == m_child) {
                m_status = 1;
                return WIFSIGNALED(status) ? -WTERMSIG(status) : WEXITSTATUS(status);
            }
            std::this_thread::sleep_for(10ms);
        }
        ADD_FAILURE() << "it hangs";
        kill(m_child, SIGKILL);
        waitpid(m_child, nullptr, 0);
        m_status = 1;
        return -1;
    }

private:
    pid_t m_child = 0;
    int m_status = -1;
};

class VideoDeath : public VideoTest {
protected:
    VideoDeath() { MakePlainClip("in.mp4", "60"); }

    Words Command(const std::string& out) const {
        return {"render", "in.mp4", out, "-e", "color_balance", "--jobs", "2"};
    }

    std::string Said() const {
        const Bytes bytes = ReadFile(In("err"));
        return std::string(bytes.begin(), bytes.end());
    }
};

constexpr const char* kDecoder = "pipe:1";
constexpr const char* kEncoder = "pipe:0";

TEST_F(VideoDeath, FfmpegKilledAtAnyMoment) {
    const unsigned seed = 20261121;
    std::mt19937 random(seed);
    std::uniform_int_distribution<int> milliseconds(0, 250);
    for (int i = 0; i < 5; ++i)
        for (const char* which : {kDecoder, kEncoder}) {
            const auto delay = std::chrono::milliseconds(milliseconds(random));
            SCOPED_TRACE(std::string(which) + " after " + std::to_string(delay.count()) +
                         " ms, seed " + std::to_string(seed));
            Running zelfx(In(""), Command("out.mov"));
            const pid_t child = zelfx.WaitForChild(which);
            std::this_thread::sleep_for(delay);
            ASSERT_EQ(kill(child, SIGKILL), 0) << "it was over before";
            EXPECT_EQ(zelfx.Wait(), which == kDecoder ? 3 : 1);
            EXPECT_EQ(Said().find("zelfx: cannot "), 0u) << Said();
            EXPECT_NE(Said().find("ffmpeg was ended by signal 9"), std::string::npos) << Said();
            EXPECT_EQ(LinesOf(Said()), 1u) << Said();
            EXPECT_EQ(Listing(), (Words{"err", "in.mp4"}));
        }
}

TEST_F(VideoDeath, SignalsLeaveNothingBehind) {
    for (const int signal : {SIGINT, SIGTERM}) {
        SCOPED_TRACE(signal);
        Running zelfx(In(""), Command("out.mov"));
        const pid_t encoder = zelfx.WaitForChild(kEncoder);
        std::this_thread::sleep_for(100ms);
        zelfx.Kill(signal);
        EXPECT_EQ(zelfx.Wait(), -signal);
        EXPECT_NE(Said().find("interrupted after"), std::string::npos) << Said();
        EXPECT_EQ(Listing(), (Words{"err", "in.mp4"}));
        EXPECT_NE(kill(encoder, 0), 0) << "ffmpeg goes on";
    }
}

TEST_F(VideoDeath, KilledItLeavesNoVideoAndNoChildren) {
    Running zelfx(In(""), Command("out.mov"));
    const pid_t encoder = zelfx.WaitForChild(kEncoder), decoder = zelfx.WaitForChild(kDecoder);
    std::this_thread::sleep_for(100ms);
    zelfx.Kill(SIGKILL);
    EXPECT_EQ(zelfx.Wait(), -SIGKILL);
    EXPECT_FALSE(fs::exists(In("out.mov")));
    for (int i = 0; i < 1000; ++i) {
        if (kill(encoder, 0) != 0 && kill(decoder, 0) != 0) break;
        std::this_thread::sleep_for(10ms);
    }
    // Orphans of a test may stay as zombies where nobody collects them.
    for (const pid_t child : {encoder, decoder}) {
        std::ifstream stat("/proc/" + std::to_string(child) + "/stat");
        std::string pid, name, state;
        stat >> pid >> name >> state;
        EXPECT_TRUE(state.empty() || state == "Z") << name << ' ' << state;
    }
    // The next run takes the temporary file of this one away.
    RenderClip("in.mp4", "out.mov", {"--quiet"});
    EXPECT_EQ(Listing(), (Words{"err", "in.mp4", "out.mov"}));
}

}  // namespace
