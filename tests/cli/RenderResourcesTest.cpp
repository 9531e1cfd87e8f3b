// What a render costs and leaves behind: memory, and the same bytes every time.

#include "tests/cli/CliTest.h"

#include <chrono>
#include <thread>

namespace {

using namespace zel::test;

class RenderResources : public CliTest {};

TEST_F(RenderResources, TheSameBytesEveryTime) {
    std::vector<std::uint16_t> samples;
    for (unsigned i = 0; i < 3 * 64 * 48; ++i)
        samples.push_back(static_cast<std::uint16_t>(i * 40503));
    MakeWithMagick("in.png", 64, 48, samples, {"-define", "png:bit-depth=16"});
    const char* files[] = {"a.png", "a.tif", "a.exr", "a.dpx", "a.jpg"};
    for (const char* folder : {"first", "second"}) {
        fs::create_directory(In(folder));
        for (const char* file : files) Render("in.png", std::string(folder) + "/" + file);
        // Longer than a second, the step of most dates in files.
        if (*folder == 'f') std::this_thread::sleep_for(std::chrono::milliseconds(1200));
    }
    for (const char* file : files)
        EXPECT_EQ(ReadFile(In("first") / file), ReadFile(In("second") / file)) << file;
}

TEST_F(RenderResources, NoDateIsMadeUpAndAGivenOneIsKept) {
    MakeWithMagick("in.png", 2, 2, std::vector<std::uint16_t>(12, 999));
    for (const std::string file : {"a.tif", "a.exr"}) {
        Render("in.png", file);
        EXPECT_EQ(Tool({"oiiotool", "--info", "-v", file}).out.find("DateTime"), std::string::npos);
    }
    Tool({"oiiotool", "in.png", "--attrib", "DateTime", "2001:02:03 04:05:06", "-o", "dated.tif"});
    for (const std::string file : {"b.tif", "b.exr"}) {
        Render("dated.tif", file);
        EXPECT_NE(Tool({"oiiotool", "--info", "-v", file}).out.find("2001:02:03 04:05:06"),
                  std::string::npos)
            << file;
    }
}

#if !defined(ZEL_SANITIZED)  // sanitizers multiply memory

TEST_F(RenderResources, MemoryIsTwoFramesAndLittleMore) {
    Tool({"oiiotool", "--pattern",
          "fill:topleft=0,0.5,1:topright=1,0,0:bottomleft=0,1,0:"
          "bottomright=1,1,0",
          "4000x3000", "3", "-d", "uint16", "--compression", "none", "-o", "in.tif"});
    constexpr long kFrame = 4000L * 3000 * 8 / 1024;  // KiB; the file has 3/4 of it
    const long small = [&] {
        MakeWithMagick("small.tif", 2, 2, std::vector<std::uint16_t>(12, 999));
        return Render("small.tif", "small-out.tif").peakKiB;
    }();
    const Outcome run = Render("in.tif", "out.tif", VividOptions());
    // Two frames and what the program needs for any picture. The file itself is read in
    // pieces while there is only one frame, so it takes no room of its own.
    const long bound = 2 * kFrame + small + 32 * 1024;
    EXPECT_LT(run.peakKiB, bound);
    EXPECT_GT(run.peakKiB, 2 * kFrame) << "too good to be measured right";
    RecordProperty("peakKiB", std::to_string(run.peakKiB));
    std::printf("peak %ld KiB, two frames %ld, a small picture %ld\n", run.peakKiB, 2 * kFrame,
                small);
}

#endif

}  // namespace
