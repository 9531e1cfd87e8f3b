// What a farm does to a run: it is watched, ended, killed and started again.

#include "tests/cli/frames/FramesTest.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <functional>
#include <random>
#include <sstream>
#include <thread>

namespace {

using namespace zel::test;
using nlohmann::json;

class Farm : public FramesTest {
protected:
    std::size_t CountOut() const {
        const auto files = fs::directory_iterator(In("out"));
        return static_cast<std::size_t>(std::count_if(
            begin(files), end(files),
            [](const auto& entry) { return entry.path().filename().string()[0] != '.'; }));
    }

    /// Until `done`; throws after a minute.
    static void WaitFor(const std::function<bool()>& done) {
        const auto end = std::chrono::steady_clock::now() + std::chrono::minutes(1);
        while (!done()) {
            if (std::chrono::steady_clock::now() > end) throw std::runtime_error("waited in vain");
            std::this_thread::sleep_for(std::chrono::milliseconds(2));
        }
    }

    RunningProgram Start(const Words& more = {}) const {
        Words command{ZELFX_PROGRAM};
        for (const std::string& word : Command("in", "out", more)) command.push_back(word);
        return RunningProgram(command, {.folder = In("")});
    }

    /// All frames of MakeEqualFrames come out alike.
    Bytes OneResult() const {
        Render("in/shot.0001.tif", "one.tif", VividOptions());
        return ReadFile(In("one.tif"));
    }

    std::vector<json> Log() const {
        const Bytes bytes = ReadFile(In("l.jsonl"));
        std::istringstream text(std::string(bytes.begin(), bytes.end()));
        std::vector<json> lines;
        for (std::string line; std::getline(text, line);) lines.push_back(json::parse(line));
        return lines;
    }
};

TEST_F(Farm, KeepsWholeOutputs) {
    MakeFrames(5);
    ASSERT_EQ(RenderFrames("in", "out").status, 0);
    const Files whole = FilesIn("out");
    const auto before = fs::last_write_time(In("out/shot.0001.png"));

    const auto size = fs::file_size(In("out/shot.0002.png"));
    fs::resize_file(In("out/shot.0002.png"), size - 3);
    WriteFile(In("out/shot.0003.png"), "", 0);
    fs::remove(In("out/shot.0004.png"));
    Tool({"convert", "out/shot.0005.png", "-depth", "8", "out/shot.0005.png"});

    const Outcome run = RenderFrames("in", "out", {"--skip-existing", "--log", "l.jsonl"});
    EXPECT_EQ(run.status, 0) << run.err;
    EXPECT_NE(run.out.find("5 frames (1 kept)"), std::string::npos) << run.out;
    EXPECT_EQ(FilesIn("out"), whole);
    EXPECT_EQ(fs::last_write_time(In("out/shot.0001.png")), before);
    EXPECT_EQ(Log()[0]["status"], "kept");
    EXPECT_EQ(Log()[1]["status"], "done");

    const Outcome all = RenderFrames("in", "out", {"--skip-existing"});
    EXPECT_EQ(all.status, 0);
    EXPECT_EQ(all.out, "out/shot.####.png: 5 frames (5 kept)\n");
}

// Broken off anywhere, a file of any type is no output that is kept.
TEST_F(Farm, KeepsNoPartOfAnyType) {
    MakeFrames(1);
    const struct {
        const char* suffix;
        Words more;
    } cases[] = {
        {"png", {}},
        {"jpg", {}},
        {"tif", {}},
        {"exr", {}},
        {"dpx", {"--depth", "10"}},
        {"dpx", {"--depth", "16"}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.suffix);
        const std::string out = "out/shot.####." + std::string(c.suffix);
        const fs::path file = In("out/shot.0001." + std::string(c.suffix));
        ASSERT_EQ(RenderFrames("in", out, c.more).status, 0);
        const Bytes whole = ReadFile(file);
        Words again = c.more;
        again.push_back("--skip-existing");
        EXPECT_NE(RenderFrames("in", out, again).out.find("(1 kept)"), std::string::npos);
        for (const double part : {0.0, 0.3, 0.98}) {
            const auto size = static_cast<std::size_t>(part * static_cast<double>(whole.size()));
            WriteFile(file, whole.data(), size);
            const Outcome run = RenderFrames("in", out, again);
            EXPECT_EQ(run.status, 0) << run.err;
            EXPECT_EQ(run.out.find("kept"), std::string::npos) << part << ' ' << run.out;
            EXPECT_TRUE(ReadFile(file) == whole) << part;
        }
    }
}

TEST_F(Farm, LogsEveryFrame) {
    MakeFrames(5);
    fs::remove(In("in/shot.0003.png"));
    ASSERT_EQ(RenderFrames("in", "out", {"--missing", "skip", "--log", "l.jsonl"}).status, 5);
    const char* status[] = {"done", "done", "missing", "done", "done"};
    const std::vector<json> lines = Log();
    ASSERT_EQ(lines.size(), 5u);
    for (std::size_t i = 0; i < 5; ++i) {
        const json& line = lines[i];
        const std::string name = "shot.000" + std::to_string(i + 1) + ".png";
        EXPECT_EQ(line["frame"], i + 1);
        EXPECT_EQ(line["in"], "in/" + name);
        EXPECT_EQ(line["status"], status[i]);
        if (line["status"] == "done") {
            EXPECT_EQ(line["out"], "out/" + name);
            EXPECT_GT(line["ms"], 0);
        } else {
            EXPECT_TRUE(line["out"].is_null());
        }
    }
    // A second run goes on in the same file.
    ASSERT_EQ(RenderFrames("in", "out", {"--missing", "nearest", "--log", "l.jsonl"}).status, 5);
    ASSERT_EQ(Log().size(), 10u);
    EXPECT_EQ(Log()[7]["status"], "nearest");
    EXPECT_EQ(Log()[7]["in"], "in/shot.0002.png");
}

TEST_F(Farm, LogsFailures) {
    MakeFrames(3);
    WriteFile(In("in/shot.0002.png"), "no picture", 10);
    ASSERT_EQ(RenderFrames("in", "out", {"--jobs", "1", "--log", "l.jsonl"}).status, 3);
    const std::vector<json> lines = Log();
    ASSERT_GE(lines.size(), 2u);
    EXPECT_EQ(lines[0]["status"], "done");
    EXPECT_EQ(lines[1]["status"], "failed");
    EXPECT_NE(lines[1]["error"].get<std::string>().find("shot.0002.png"), std::string::npos);
}

TEST_F(Farm, SignalsLetTheFramesUnderWayFinish) {
    constexpr std::size_t kFrames = 400;
    MakeEqualFrames(kFrames, "256x256");
    const Bytes one = OneResult();
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        SCOPED_TRACE(signal);
        fs::remove_all(In("out"));
        fs::create_directory(In("out"));
        RunningProgram run = Start({"--jobs", "2", "--manifest", "m.json", "--log", "l.jsonl"});
        WaitFor([&] { return CountOut() >= 3; });
        run.Signal(signal);
        const Outcome outcome = run.Wait();
        EXPECT_EQ(outcome.status, -signal);  // 128 + signal to a shell
        EXPECT_NE(outcome.err.find("interrupted after"), std::string::npos) << outcome.err;
        const Files files = FilesIn("out");
        EXPECT_LT(files.size(), kFrames);
        EXPECT_NE(outcome.err.find("after " + std::to_string(files.size()) + " of 400 frames"),
                  std::string::npos)
            << files.size() << " files, " << outcome.err;
        for (const auto& [name, content] : files)
            EXPECT_TRUE(content == one) << name;  // and no temporary one is left
        EXPECT_EQ(Log().size(), files.size());
        EXPECT_FALSE(fs::exists(In("m.json")));
        fs::remove(In("l.jsonl"));
    }
    ASSERT_EQ(RenderFrames("in", "out", {"--skip-existing", "--manifest", "m.json"}).status, 0);
    EXPECT_EQ(CountOut(), kFrames);
    EXPECT_EQ(Zelfx({"verify", "m.json"}).status, 0);
}

TEST_F(Farm, ASecondSignalEndsAtOnce) {
    MakeEqualFrames(60, "1024x1024");
    const Bytes one = OneResult();
    RunningProgram run = Start({"--jobs", "2"});
    WaitFor([&] { return CountOut() >= 1; });
    run.Signal(SIGINT);
    std::this_thread::sleep_for(std::chrono::milliseconds(5));
    run.Signal(SIGINT);
    EXPECT_EQ(run.Wait().status, -SIGINT);
    for (const auto& [name, content] : FilesIn("out")) EXPECT_TRUE(content == one) << name;
}

TEST_F(Farm, KilledRunsAreTakenUp) {
    constexpr std::size_t kFrames = 120;
    MakeEqualFrames(kFrames, "384x384");
    const Bytes one = OneResult();
    constexpr unsigned seed = 20240607;
    std::mt19937 random(seed);
    std::uniform_int_distribution<int> milliseconds(0, 40);
    std::size_t before = 0;
    for (int kill = 0; kill < 5; ++kill) {
        RunningProgram run = Start({"--jobs", "3", "--skip-existing"});
        WaitFor([&] { return CountOut() > before; });
        std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds(random)));
        run.Signal(SIGKILL);
        const int status = run.Wait().status;
        EXPECT_TRUE(status == -SIGKILL || status == 0) << status;
        if (status == 0) break;
        for (const auto& [name, content] : FilesIn("out"))
            EXPECT_TRUE(name[0] == '.' || content == one) << name << ", seed " << seed;
        EXPECT_GT(CountOut(), before) << "a finished frame was lost, seed " << seed;
        before = CountOut();
    }
    const Outcome last = RenderFrames("in", "out", {"--skip-existing"});
    EXPECT_EQ(last.status, 0) << last.err;
    const Files files = FilesIn("out");
    EXPECT_EQ(files.size(), kFrames) << "temporary files are left";
    for (const auto& [name, content] : files) EXPECT_TRUE(content == one) << name;
}

// Another run's temporary files are not a dead one's.
TEST_F(Farm, TwoRunsShareAFolder) {
    constexpr std::size_t kFrames = 40;
    MakeEqualFrames(kFrames, "256x256");
    const Bytes one = OneResult();
    RunningProgram first = Start({"--frames", "1-20"}), second = Start({"--frames", "21-40"});
    const Outcome a = first.Wait(), b = second.Wait();
    EXPECT_EQ(a.status, 0) << a.err;
    EXPECT_EQ(b.status, 0) << b.err;
    const Files files = FilesIn("out");
    EXPECT_EQ(files.size(), kFrames);
    for (const auto& [name, content] : files) EXPECT_TRUE(content == one) << name;
}

}  // namespace
