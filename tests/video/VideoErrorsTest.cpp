// What cannot be read or written is told in one line, and leaves no file.

#include "tests/video/VideoTests.h"

#include <cstdlib>

namespace {

using namespace zel::test;
using VideoErrors = VideoTest;

Words Command(const std::string& in, const std::string& out, const Words& more = {}) {
    return Words{"render", in, out, "-e", "color_balance"} + more;
}

TEST_F(VideoErrors, ClipsThatBreakOff) {
    const struct {
        const char* file;
        Words encoding;
    } clips[] = {
        {"c.mp4", {"-c:v", "libx264", "-c:a", "aac", "-movflags", "+faststart"}},
        {"c.mkv", {"-c:v", "libx264", "-c:a", "aac"}},
        {"c.mov", {"-c:v", "prores_ks", "-c:a", "pcm_s16le", "-movflags", "+faststart"}},
        {"c.webm", {"-c:v", "libvpx-vp9", "-c:a", "libopus"}},
        {"late.mp4", {"-c:v", "libx264", "-c:a", "aac"}},  // its index is at its end
    };
    for (const auto& clip : clips) {
        MakeClip(clip.file, Words{"-pix_fmt", "yuv422p10le", "-color_range", "tv", "-colorspace",
                                  "bt709", "-color_primaries", "bt709", "-color_trc", "bt709"} +
                                clip.encoding);
        Bytes bytes = ReadFile(In(clip.file));
        for (const int percent : {98, 75, 40, 8, 1}) {
            SCOPED_TRACE(std::to_string(percent) + " % of " + clip.file);
            bytes.resize(bytes.size() * static_cast<std::size_t>(percent) / 100);
            WriteFile(In(clip.file), bytes);
            ExpectRefused(Command(clip.file, "out.mov", {"--quiet"}), 3, {clip.file});
            bytes = ReadFile(In(clip.file));
        }
        fs::remove(In(clip.file));
    }
}

TEST_F(VideoErrors, DamageInTheMiddle) {
    MakePlainClip("in.mp4");
    Bytes bytes = ReadFile(In("in.mp4"));
    for (std::size_t i = bytes.size() / 2; i < bytes.size() / 2 + 400; ++i)
        bytes[i] = static_cast<unsigned char>(i * 167);
    WriteFile(In("in.mp4"), bytes);
    ExpectRefused(Command("in.mp4", "out.mov"), 3, {"in.mp4", "damaged"});
}

TEST_F(VideoErrors, NoVideo) {
    WriteFile(In("text.mp4"), "not a video at all", 18);
    WriteFile(In("empty.mp4"), "", 0);
    fs::create_directory(In("folder.mp4"));
    Ffmpeg({"-f", "lavfi", "-i", "sine=d=1", "sound.m4a"});
    ExpectRefused(Command("none.mp4", "out.mp4"), 3, {"none.mp4", "no such file"});
    ExpectRefused(Command("text.mp4", "out.mp4"), 3, {"text.mp4", "damaged or no video"});
    ExpectRefused(Command("empty.mp4", "out.mp4"), 3, {"empty.mp4", "damaged or no video"});
    ExpectRefused(Command("folder.mp4", "out.mp4"), 3, {"folder.mp4", "a folder"});
    ExpectRefused(Command("sound.m4a", "out.mp4"), 3, {"sound.m4a", "no video in it"});
}

TEST_F(VideoErrors, ColoursThatCannotBeUndone) {
    MakeClip("in.mkv", {"-c:v", "libx264", "-colorspace", "ycgco", "-pix_fmt", "yuv444p", "-an"});
    ExpectRefused(Command("in.mkv", "out.mp4"), 3, {"in.mkv", "ycgco", "bt709", "bt2020nc"});
}

TEST_F(VideoErrors, WrongUsage) {
    MakePlainClip("in.mp4", "0.2");
    MakeWithMagick<std::uint8_t>("in.png", 1, 1, {1, 2, 3});
    const struct {
        const char *in, *out;
        Words more, texts;
    } cases[] = {
        {"in.mp4", "out.mp4", {"--crf", "many"}, {"--crf", "many", "0", "63"}},
        {"in.mp4", "out.mp4", {"--crf", "-1"}, {"--crf", "-1"}},
        {"in.mp4", "out.mp4", {"--crf", "64"}, {"--crf", "64"}},
        {"in.mp4", "out.mp4", {"--crf", "nan"}, {"--crf", "nan"}},
        {"in.mp4", "out.mov", {"--crf", "18"}, {"--crf", "prores_ks"}},
        {"in.mp4", "out.mp4", {"--pix-fmt", "yuv420"}, {"--pix-fmt", "yuv420", "yuv420p"}},
        {"in.mp4", "out.mp4", {"--depth", "16"}, {"--depth", "pictures", "out.mp4"}},
        {"in.mp4", "out.mp4", {"--endian", "big"}, {"--endian", "out.mp4"}},
        {"in.mp4", "out.mp4", {"--transfer", "log"}, {"--transfer", "out.mp4"}},
        {"in.mp4", "out.mp4", {"--frames", "1-2"}, {"--frames", "sequences"}},
        {"in.mp4", "out.mp4", {"--missing", "skip"}, {"--missing", "sequences"}},
        {"in.mp4", "out.mp4", {"--skip-existing"}, {"--skip-existing", "sequences"}},
        {"in.mp4", "out.mp4", {"--manifest", "m"}, {"--manifest", "sequences"}},
        {"in.png", "out.png", {"--codec", "libx264"}, {"--codec", "videos"}},
        {"in.png", "out.png", {"--crf", "18"}, {"--crf", "videos"}},
        {"in.png", "out.png", {"--pix-fmt", "yuv420p"}, {"--pix-fmt", "videos"}},
        {"in.mp4", "out.xyz", {}, {"in.mp4", "out.xyz", "suffix", ".mov", ".mp4"}},
    };
    for (const auto& c : cases) ExpectRefused(Command(c.in, c.out, c.more), 2, c.texts);
}

TEST_F(VideoErrors, WhatFfmpegCannotWrite) {
    MakePlainClip("in.mp4", "0.4");
    ExpectRefused(Command("in.mp4", "out.mp4", {"--codec", "nonsense"}), 1,
                  {"out.mp4", "nonsense"});
    ExpectRefused(Command("in.mp4", "out.mp4", {"--pix-fmt", "gbrapf32le"}), 1, {"out.mp4"});
    ExpectRefused(Command("in.mp4", "out.webm"), 1, {"out.webm", "Opus"});
    ExpectRefused(Command("in.mp4", "none/out.mp4"), 1, {"none/out.mp4", "no folder"});
    fs::create_directory(In("folder.mp4"));
    ExpectRefused(Command("in.mp4", "folder.mp4"), 1, {"folder.mp4", "is a folder"});
}

TEST_F(VideoErrors, FullDisk) {
    if (!fs::exists("/dev/full")) GTEST_SKIP() << "no /dev/full here";
    MakePlainClip("in.mp4");
    // 20 KiB are as much as a file may have: room for some of the frames.
    const Outcome run =
        RunProgram({"bash", "-c", "ulimit -f 20; trap '' XFSZ; exec \"$@\"", "-", ZELFX_PROGRAM,
                    "render", "in.mp4", "out.mov", "-e", "color_balance"},
                   {.folder = In("")});
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(LinesOf(run.err), 1u) << run.err;
    EXPECT_NE(run.err.find("out.mov"), std::string::npos) << run.err;
    EXPECT_EQ(Listing(), Words{"in.mp4"});
}

TEST_F(VideoErrors, ProgramsThatAreNotThere) {
    MakePlainClip("in.mp4", "0.4");
    fs::create_directory(In("bin"));
    const std::string bin = In("bin").string();
    const RunOptions options{.environment = {{"PATH", bin}}};
    ExpectRefused(Command("in.mp4", "out.mp4"), 1, {"ffprobe", "PATH"}, options);
    ExpectRefused(Command("in.mp4", "out.mp4"), 1, {"ffprobe", "PATH"},
                  {.environment = {{"PATH", ""}}});

    const Outcome where = Tool({"sh", "-c", "command -v ffprobe"});
    fs::create_symlink(where.out.substr(0, where.out.find('\n')), In("bin/ffprobe"));
    ExpectRefused(Command("in.mp4", "out.mp4"), 1, {"ffmpeg", "PATH"}, options);
}

}  // namespace
