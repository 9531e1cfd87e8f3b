#include "tests/cli/frames/FramesTest.h"

#include <cstdio>

namespace zel::test {

namespace {

std::string FrameFile(int number, const char* suffix = ".png") {
    char digits[20];
    std::snprintf(digits, sizeof digits, "%04d", number);
    return std::string("shot.") + digits + suffix;
}

}  // namespace

FramesTest::FramesTest() {
    for (const char* folder : {"in", "out"}) fs::create_directory(In(folder));
}

void FramesTest::MakeFrames(int count, const std::string& size) const {
    Tool({"ffmpeg", "-v", "error", "-f", "lavfi", "-i",
          "testsrc2=s=" + size + ":r=1,noise=alls=40:allf=t", "-frames:v", std::to_string(count),
          "-pix_fmt", "rgb48be", "in/shot.%04d.png"});
}

void FramesTest::MakeEqualFrames(int count, const std::string& size) const {
    const fs::path first = In("in") / FrameFile(1, ".tif");
    Tool({"ffmpeg", "-v", "error", "-f", "lavfi", "-i", "nullsrc=s=" + size + ",noise=alls=99",
          "-frames:v", "1", "-pix_fmt", "rgb48le", "-compression_algo", "raw", first.string()});
    for (int i = 2; i <= count; ++i) fs::create_hard_link(first, In("in") / FrameFile(i, ".tif"));
}

Words FramesTest::Command(const std::string& in, const std::string& out, const Words& more) const {
    return Words{"render", in, out, "-e", "color_balance"} + VividOptions() + more;
}

Outcome FramesTest::RenderFrames(const std::string& in, const std::string& out,
                                 const Words& more) const {
    return Zelfx(Command(in, out, more));
}

Files FramesTest::RenderedAlone(int count) const {
    fs::create_directory(In("alone"));
    for (int i = 1; i <= count; ++i)
        Render("in/" + FrameFile(i), "alone/" + FrameFile(i), VividOptions());
    return FilesIn("alone");
}

Files FramesTest::FilesIn(const std::string& folder) const {
    Files files;
    for (const auto& entry : fs::directory_iterator(In(folder)))
        files[entry.path().filename().string()] = ReadFile(entry.path());
    return files;
}

std::string FramesTest::OutputFrames() const {
    std::string numbers;
    for (const auto& [name, content] : FilesIn("out")) {
        int number = 0;
        EXPECT_EQ(std::sscanf(name.c_str(), "shot.%d.png", &number), 1) << name;
        EXPECT_EQ(name, FrameFile(number));
        numbers += (numbers.empty() ? "" : " ") + std::to_string(number);
    }
    return numbers;
}

}  // namespace zel::test
