// Sequences through the real modules: which frames are read, what they are called, and
// that each is what it is when rendered alone.

#include "tests/cli/frames/FramesTest.h"

namespace {

using namespace zel::test;

class Sequences : public FramesTest {
protected:
    static constexpr int kFrames = 6;
    void SetUp() override { MakeFrames(kFrames); }

    void Remove(std::initializer_list<int> numbers) {
        for (const int n : numbers) fs::remove(In("in/shot.000" + std::to_string(n) + ".png"));
    }
    void EmptyOut() {
        fs::remove_all(In("out"));
        fs::create_directory(In("out"));
    }
};

TEST_F(Sequences, EveryWayToNameThem) {
    const Files alone = RenderedAlone(kFrames);
    ASSERT_EQ(alone.size(), std::size_t{kFrames});
    ASSERT_TRUE(alone.at("shot.0001.png") != alone.at("shot.0002.png"));
    const struct {
        const char *in, *out;
        Words more;
    } cases[] = {
        {"in/shot.####.png", "out/shot.####.png", {}},
        {"in/shot.%04d.png", "out/shot.%04d.png", {}},
        {"in", "out/shot.####.png", {}},
        {"in/", "out/", {}},
        {"in/shot.0003.png", "out/shot.####.png", {}},
        {"in/shot.0003.png", "out", {}},
        {"in/shot.####.png", "out", {"--frames", "1-6"}},
        {"in/shot.####.png", "out", {"--frames", "4-6,1-5"}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(std::string(c.in) + " to " + c.out);
        EmptyOut();
        const Outcome run = RenderFrames(c.in, c.out, c.more);
        EXPECT_EQ(run.status, 0) << run.err;
        EXPECT_EQ(run.err, "");
        EXPECT_NE(run.out.find(": 6 frames, 48 x 32, 16 bit"), std::string::npos) << run.out;
        EXPECT_EQ(FilesIn("out"), alone);
    }
}

TEST_F(Sequences, APictureWithoutANumberGoesIntoAFolderToo) {
    fs::copy_file(In("in/shot.0003.png"), In("still.png"));
    const Outcome run = RenderFrames("still.png", "out");
    EXPECT_EQ(run.status, 0) << run.err;
    const Files out = FilesIn("out"), alone = RenderedAlone(3);
    ASSERT_EQ(out.size(), 1u);
    EXPECT_EQ(out.at("still.png"), alone.at("shot.0003.png"));
}

TEST_F(Sequences, TheSameBytesWhateverTheJobs) {
    const Files alone = RenderedAlone(kFrames);
    for (const char* jobs : {"1", "2", "3", "7", "256"}) {
        EmptyOut();
        ASSERT_EQ(RenderFrames("in", "out", {"--jobs", jobs}).status, 0);
        EXPECT_EQ(FilesIn("out"), alone) << jobs << " jobs";
    }
}

TEST_F(Sequences, OtherTypesAndNumbers) {
    ASSERT_EQ(RenderFrames("in", "out/other_%02d.dpx", {"--depth", "10"}).status, 0);
    EXPECT_EQ(FilesIn("out").size(), std::size_t{kFrames});
    Tool({"ffmpeg", "-v", "error", "-i", "out/other_06.dpx", "-f", "null", "-"});
}

TEST_F(Sequences, OneFileIsOnePicture) {
    EXPECT_EQ(RenderFrames("in/shot.0003.png", "out/shot.0003.png").status, 0);
    EXPECT_EQ(OutputFrames(), "3");
    // Names that exist are no patterns.
    fs::rename(In("in/shot.0003.png"), In("in/a.##.png"));
    EXPECT_EQ(RenderFrames("in/a.##.png", "out/b.##.png").status, 0);
    EXPECT_TRUE(fs::exists(In("out/b.##.png")));
}

TEST_F(Sequences, Ranges) {
    const struct {
        const char *frames, *rendered;
        bool clipped = false;
    } cases[] = {
        {"2-4", "2 3 4"}, {"1-6x2", "1 3 5"},    {"1-2,5", "1 2 5"},       {"5-100", "5 6", true},
        {"3", "3"},       {"-5-2", "1 2", true}, {"1-100x4", "1 5", true}, {"6,1", "1 6"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.frames);
        EmptyOut();
        const Outcome run = RenderFrames("in", "out", {std::string("--frames=") + c.frames});
        EXPECT_EQ(run.status, 0) << run.err;
        EXPECT_EQ(OutputFrames(), c.rendered);
        EXPECT_EQ(run.err.find("frames 1 to 6") != std::string::npos, c.clipped) << run.err;
    }
}

TEST_F(Sequences, MissingFrames) {
    Remove({2, 4, 5});
    const struct {
        const char* missing;
        const char* frames;
        int status;
        const char* rendered;
        Words told;
    } cases[] = {
        {"error", "1-6", 5, "", {"frames 2, 4-5 of 'in/shot.####.png' are missing"}},
        {"error", "1,2", 5, "", {"frame 2 of"}},
        {"error", "1,9", 5, "", {"frame 9 of"}},
        {"error", "7-9", 5, "", {"none of the wanted frames", "1 to 6"}},
        {"error", "1,3", 0, "1 3", {}},
        {"skip", "1-6", 5, "1 3 6", {"frames 2, 4-5 were missing", "left out"}},
        {"skip", "2", 5, "", {"frame 2 was missing"}},
        {"skip", "3,6", 0, "3 6", {}},
        {"nearest", "1-6", 5, "1 2 3 4 5 6", {"frames 2, 4-5 were missing", "nearest"}},
        {"nearest", "5,9", 5, "5 9", {"frames 5, 9 were missing"}},
        {"nearest", "1,3", 0, "1 3", {}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(std::string(c.missing) + " " + c.frames);
        EmptyOut();
        const Outcome run =
            RenderFrames("in", "out", {"--missing", c.missing, "--frames", c.frames});
        EXPECT_EQ(run.status, c.status) << run.err;
        EXPECT_EQ(OutputFrames(), c.rendered);
        for (const std::string& text : c.told)
            EXPECT_NE(run.err.find(text), std::string::npos) << text << " in " << run.err;
        if (c.told.empty()) {
            EXPECT_EQ(run.err, "");
        }
    }
    // Without a word, a gap is an error before anything is written.
    EmptyOut();
    EXPECT_EQ(RenderFrames("in", "out").status, 5);
    EXPECT_EQ(OutputFrames(), "");
}

TEST_F(Sequences, TheNearestIsTheLowerOfTwo) {
    Remove({2, 4, 5});
    ASSERT_EQ(RenderFrames("in", "out", {"--missing", "nearest"}).status, 5);
    const Files out = FilesIn("out");
    EXPECT_EQ(out.at("shot.0002.png"), out.at("shot.0001.png"));
    EXPECT_EQ(out.at("shot.0004.png"), out.at("shot.0003.png"));
    EXPECT_EQ(out.at("shot.0005.png"), out.at("shot.0006.png"));
}

TEST_F(Sequences, OneOfSeveralInAFolder) {
    WriteFile(In("in/notes.txt"), "x", 1);
    WriteFile(In("in/.shot.0009.png"), "x", 1);
    WriteFile(In("in/still2.png"), "x", 1);  // a number, but alone
    EXPECT_EQ(RenderFrames("in", "out").status, 0);
    EXPECT_EQ(OutputFrames(), "1 2 3 4 5 6");
    for (const char* name : {"in/b.1.png", "in/b.2.png"}) WriteFile(In(name), "x", 1);
    ExpectRefused(Command("in", "out"), 2, {"2 sequences", "'in/b.#.png'", "'in/shot.####.png'"});
}

TEST_F(Sequences, NumbersGrowOutOfTheirPlace) {
    fs::create_directory(In("wide"));
    for (int i = 1; i <= 3; ++i)
        fs::copy_file(In("in/shot.000" + std::to_string(i) + ".png"),
                      In("wide/a" + std::to_string(97 + i) + ".png"));
    EXPECT_EQ(RenderFrames("wide", "out/shot.####.png").status, 0);
    EXPECT_EQ(OutputFrames(), "98 99 100");
}

TEST_F(Sequences, RefusedBeforeTheFirstFrame) {
    fs::create_directory(In("empty"));
    fs::create_directory_symlink("in", In("link"));
    const struct {
        const char* name;
        Words arguments;
        int status;
        Words told;
    } cases[] = {
        {"no such folder", {"in", "no/a.##.png"}, 1, {"no folder 'no'"}},
        {"no such folder for all", {"in", "no/"}, 1, {"into 'no/'", "no such folder"}},
        {"no place", {"in", "out/a.png"}, 2, {"'out/a.png'", "6 frames", "####"}},
        {"two places", {"in", "out/a.##.##.png"}, 2, {"several places"}},
        {"another type", {"in/shot.####.png", "out/a.##.gif"}, 2, {".png", ".dpx"}},
        {"onto itself", {"in", "in"}, 2, {"'in/shot.0001.png'", "is read"}},
        {"onto itself by name", {"in", "in/shot.%04d.png"}, 2, {"is read"}},
        {"onto itself by a link", {"in", "link/shot.####.png"}, 2, {"is read"}},
        {"onto itself another way", {"in", "out/../in/shot.####.png"}, 2, {"leads out"}},
        {"a folder that leads out", {"in", "out/../../a.##.png"}, 2, {"leads out", "'..'"}},
        {"an empty folder", {"empty", "out/a.##.png"}, 3, {"'empty'", "no sequence"}},
        {"no such file", {"in/a.##.png", "out/a.##.png"}, 3, {"'in/a.##.png'", "no file"}},
        {"no such input folder", {"no/a.##.png", "out/a.##.png"}, 3, {"folder 'no'"}},
        {"no number", {"in/notes.png", "out/a.##.png", "--frames", "1"}, 3, {"no such file"}},
        {"ranges", {"in", "out", "--frames", "6-1"}, 2, {"--frames", "1 comes before 6"}},
        {"steps", {"in", "out", "--frames", "1-6x0"}, 2, {"--frames", "a step is 1 or more"}},
        {"words", {"in", "out", "--frames", "all"}, 2, {"--frames", "'all'", "1-100x2"}},
        {"missing",
         {"in", "out", "--missing", "black"},
         2,
         {"--missing", "error, skip or nearest"}},
        {"no jobs", {"in", "out", "--jobs", "0"}, 2, {"--jobs", "'0'", "1 to 256"}},
        {"too many jobs", {"in", "out", "--jobs", "257"}, 2, {"--jobs", "1 to 256"}},
        {"jobs in words", {"in", "out", "-j", "two"}, 2, {"--jobs", "'two'"}},
        {"no manifest", {"in", "out", "--verify", "m.json"}, 3, {"'m.json'", "no such file"}},
        {"no log", {"in", "out", "--log", "no/l.jsonl"}, 1, {"'no/l.jsonl'", "log"}},
    };
    const Files before = FilesIn("in");
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        Words more(c.arguments.begin() + 2, c.arguments.end());
        ExpectRefused(Command(c.arguments[0], c.arguments[1], more), c.status, c.told);
        EXPECT_EQ(OutputFrames(), "");
        EXPECT_EQ(FilesIn("in"), before);
    }
}

TEST_F(Sequences, ADamagedFrameStopsTheRun) {
    const Files alone = RenderedAlone(kFrames);
    fs::resize_file(In("in/shot.0004.png"), 200);
    // The PNG library jumps out of its reader past a text, which leak sanitizers see.
    const RunOptions libraryLeaks{.environment = {{"ASAN_OPTIONS", "detect_leaks=0"}}};
    const Outcome run =
        Zelfx(Command("in", "out", {"--manifest", "out/m.json", "--jobs", "1"}), libraryLeaks);
    EXPECT_EQ(run.status, 3);
    EXPECT_NE(run.err.find("'in/shot.0004.png'"), std::string::npos) << run.err;
    EXPECT_EQ(LinesOf(run.err), 1u) << run.err;
    EXPECT_EQ(run.out, "");
    for (const auto& [name, content] : FilesIn("out")) EXPECT_EQ(content, alone.at(name)) << name;
    for (const char* done : {"1", "2", "3"})
        EXPECT_TRUE(fs::exists(In(std::string("out/shot.000") + done + ".png")));
    EXPECT_FALSE(fs::exists(In("out/m.json")));
}

TEST_F(Sequences, MemoryStaysTheSame) {
    fs::remove_all(In("in"));
    fs::create_directory(In("in"));
    constexpr int kFew = 100, kMany = 600;
    MakeEqualFrames(kMany, "512x512");
    // The address sanitizer would hold up to 256 MiB of what was freed.
    const RunOptions holdLittle{.environment = {{"ASAN_OPTIONS", "quarantine_size_mb=8"}}};
    const auto peak = [&](int frames) {
        const std::string range = "1-" + std::to_string(frames);
        const Outcome run =
            Zelfx(Command("in", "out/shot.####.tif",
                          {"--frames", range, "--jobs", "2", "--depth", "8", "--verbose"}),
                  holdLittle);
        EXPECT_EQ(run.status, 0) << run.err;
        EXPECT_NE(run.err.find("2 jobs: at most 4 frames in flight"), std::string::npos) << run.err;
        return run.peakKiB;
    };
    const long few = peak(kFew), many = peak(kMany);
    // A frame of 512 x 512 pixels of 8 bytes is 2048 KiB; a twenty-fifth of the frames more
    // is allowed. How many buffers meet in memory is chance, and in a few dozen frames the
    // most of them may not: a sanitizer's memory grew by 18 MiB from 12 frames to 100, and
    // from there by chance alone, 13 MiB at most.
    EXPECT_LT(many - few, (kMany - kFew) / 25 * 2048)
        << few << " KiB for " << kFew << " frames, " << many << " for " << kMany;
#if !defined(ZEL_SANITIZED)
    // Without a sanitizer there is no such rise: 3 MiB from the first frames on.
    constexpr int kFirst = 12;
    const long first = peak(kFirst);
    for (const long later : {few, many})
        EXPECT_LT(later - first, 4 * 2048) << first << " KiB for " << kFirst << " frames";
#endif
}

}  // namespace
