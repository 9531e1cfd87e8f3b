// Videos through the program: everything but the look is in the output as it was in the
// input, and the pixels are those that the same look gives to pictures.

#include "tests/video/VideoTests.h"

namespace {

using namespace zel::test;
using Video = VideoTest;

const Words kX264{"-c:v", "libx264", "-preset", "ultrafast"};

TEST_F(Video, CarriesEverythingOver) {
    const struct {
        const char* name;
        const char *size, *rate;
        Words encoding;
        const char *in, *out, *codec, *pixels;
    } cases[] = {
        {"8 bits, 4:2:0, nothing marked", "96x64", "25",
         kX264 + Words{"-pix_fmt", "yuv420p", "-c:a", "aac"}, "a.mp4", "b.mp4", "h264", "yuv420p"},
        {"10 bits, 4:2:0, wide gamut, film rate", "96x64", "24000/1001",
         kX264 + Words{"-pix_fmt", "yuv420p10le", "-color_range", "tv", "-colorspace", "bt2020nc",
                       "-color_primaries", "bt2020", "-color_trc", "arib-std-b67", "-c:a", "aac"},
         "a.mp4", "b.mp4", "h264", "yuv420p10le"},
        {"10 bits to ProRes", "96x64", "30000/1001",
         kX264 + Words{"-pix_fmt", "yuv420p10le", "-color_range", "tv", "-colorspace", "bt709",
                       "-color_primaries", "bt709", "-color_trc", "bt709", "-c:a", "pcm_s16le"},
         "a.mov", "b.mov", "prores", "yuv422p10le"},
        {"television of old, pixels not square", "90x72", "25",
         kX264 + Words{"-vf", "setsar=16/11", "-pix_fmt", "yuv422p", "-color_range", "tv",
                       "-colorspace", "bt470bg", "-color_primaries", "bt470bg", "-color_trc",
                       "gamma28", "-c:a", "mp2"},
         "a.mkv", "b.mkv", "h264", "yuv422p"},
        {"full range",
         "96x64",
         "50",
         {"-c:v", "mjpeg", "-pix_fmt", "yuvj420p", "-q:v", "3", "-c:a", "pcm_s16le"},
         "a.avi",
         "b.mkv",
         "h264",
         "yuvj420p"},
        {"two sounds", "96x64", "25",
         kX264 + Words{"-pix_fmt", "yuv444p10le", "-map", "0:v", "-map", "1:a", "-map", "1:a",
                       "-c:a:0", "aac", "-c:a:1", "flac"},
         "a.mkv", "b.mkv", "h264", "yuv444p10le"},
        {"no sound", "96x64", "60", kX264 + Words{"-pix_fmt", "yuv420p", "-an"}, "a.mp4", "b.mkv",
         "h264", "yuv420p"},
        {"for the web",
         "96x64",
         "25",
         {"-c:v", "libvpx-vp9", "-pix_fmt", "yuv420p10le", "-c:a", "libopus"},
         "a.webm",
         "b.webm",
         "vp9",
         "yuv420p10le"},
        {"sides that no 4:2:0 encoder takes",
         "97x63",
         "25",
         {"-vf", "format=yuv444p,pad=97:67", "-c:v", "ffv1", "-pix_fmt", "yuv420p", "-an"},
         "a.mkv",
         "b.mkv",
         "h264",
         "yuv444p"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        MakeClip(c.in, c.encoding, c.size, c.rate);
        const auto in = VideoOf(c.in);
        RenderClip(c.in, c.out, VividOptions());
        const auto out = VideoOf(c.out);
        const nlohmann::json none("none");
        for (const char* fact :
             {"nb_read_frames", "avg_frame_rate", "width", "height", "sample_aspect_ratio",
              "color_space", "color_primaries", "color_transfer"})
            EXPECT_EQ(out.value(fact, none), in.value(fact, none)) << fact;
        // ProRes has no other than the limited range, and says so.
        if (std::string(c.codec) != "prores") {
            EXPECT_EQ(out.value("color_range", none), in.value("color_range", none));
        }
        EXPECT_EQ(out["codec_name"], c.codec);
        EXPECT_EQ(out["pix_fmt"], c.pixels);
        EXPECT_EQ(Sound(c.out), Sound(c.in));
        for (const char* file : {c.in, c.out}) fs::remove(In(file));
    }
    EXPECT_EQ(Listing(), Words{});
}

TEST_F(Video, TellsWhatItDid) {
    MakePlainClip("in.mp4");
    const Outcome run = RenderClip("in.mp4", "out.mov");
    EXPECT_EQ(run.out,
              "out.mov: 25 frames, 96 x 64, 25/1 a second, prores_ks yuv422p10le, through ZEL "
              "Color Balance as BGRA8\n");
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(RenderClip("in.mp4", "quiet.mov", {"--quiet"}).out, "");
}

/// Lossless both ways, so that the frames can be held to pictures of the same pixels.
TEST_F(Video, FramesAreThoseOfPictures) {
    const struct {
        const char *pixels, *samples, *way;
    } cases[] = {
        {"bgra", "rgb24", "BGRA8"},
        {"rgb48le", "rgb48le", "BGRA16"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.pixels);
        MakeClip("in.mkv", {"-c:v", "ffv1", "-pix_fmt", c.pixels, "-an", "-frames:v", "4"});
        const Outcome run = RenderClip(
            "in.mkv", "out.mkv", VividOptions() + Words{"--codec", "ffv1", "--pix-fmt", c.pixels});
        EXPECT_NE(run.out.find(std::string("as ") + c.way + "\n"), std::string::npos) << run.out;
        const Words layout{"-pix_fmt", std::string(c.samples) == "rgb24" ? "rgb24" : "rgb48be"};
        for (const char* clip : {"in", "out"})
            Ffmpeg(Words{"-i", std::string(clip) + ".mkv"} + layout +
                   Words{std::string(clip) + "%d.png"});
        for (const std::string n : {"1", "2", "3", "4"}) {
            RenderClip("in" + n + ".png", "picture" + n + ".png", VividOptions());
            EXPECT_EQ(Samples<std::uint16_t>("out" + n + ".png", "rgb48le"),
                      Samples<std::uint16_t>("picture" + n + ".png", "rgb48le"))
                << "frame " << n;
        }
    }
}

TEST_F(Video, EveryFormatOfTheEffectGivesThePixels) {
    MakeClip("in.mkv", {"-c:v", "ffv1", "-pix_fmt", "bgra", "-an", "-frames:v", "2"});
    const Words lossless{"--codec", "ffv1", "--pix-fmt", "bgra"};
    RenderClip("in.mkv", "bgra8.mkv", VividOptions() + lossless);
    const auto wanted = Samples<std::uint8_t>("bgra8.mkv", "bgra");
    const std::string formats = Zelfx({"describe", "color_balance"}).out;
    for (const std::string format : {"ARGB8", "BGRA16", "BGRA32f", "ARGB32f"}) {
        if (formats.find(format) == std::string::npos) continue;
        SCOPED_TRACE(format);
        RenderClip("in.mkv", "other.mkv", VividOptions() + lossless + Words{"--format", format});
        const auto got = Samples<std::uint8_t>("other.mkv", "bgra");
        ASSERT_EQ(got.size(), wanted.size());
        // Whole codes of 10 bits are left of the 8 with the deeper ones: one step of 255.
        for (std::size_t i = 0; i < got.size(); ++i)
            ASSERT_LE(std::abs(got[i] - wanted[i]), format == "ARGB8" ? 0 : 1) << i;
    }
}

TEST_F(Video, AlphaIsCarriedWhereItCanBe) {
    MakeClip("in.mov",
             {"-c:v", "qtrle", "-pix_fmt", "argb", "-an", "-vf",
              "format=rgba,geq=r='r(X,Y)':g='g(X,Y)':b='b(X,Y)':a=X*2", "-frames:v", "2"});
    const Outcome with = RenderClip("in.mov", "out.mov");
    EXPECT_EQ(with.err.find("alpha"), std::string::npos) << with.err;
    EXPECT_EQ(VideoOf("out.mov")["profile"], "4444");
    const auto in = Samples<std::uint8_t>("in.mov", "bgra");
    const auto out = Samples<std::uint8_t>("out.mov", "bgra");
    ASSERT_EQ(in.size(), out.size());
    for (std::size_t i = 3; i < in.size(); i += 4) ASSERT_NEAR(out[i], in[i], 1) << i / 4;

    const Outcome without = RenderClip("in.mov", "out.mp4");
    EXPECT_NE(without.err.find("no alpha: it was left out"), std::string::npos) << without.err;
}

TEST_F(Video, SameBytesWhateverTheJobs) {
    MakePlainClip("in.mp4");
    for (const std::string suffix : {".mp4", ".mov", ".mkv"}) {
        RenderClip("in.mp4", "one" + suffix, {"--jobs", "1"});
        RenderClip("in.mp4", "four" + suffix, {"--jobs", "4"});
        EXPECT_EQ(ReadFile(In("one" + suffix)), ReadFile(In("four" + suffix))) << suffix;
    }
}

TEST_F(Video, NamesAreTakenAsTheyAre) {
    fs::create_directory(In("a folder"));
    for (const std::string name : {"-i.mp4", "a: b.mp4", "http:x.mp4", "100%d.mp4",
                                   "it's $HOME; `id`.mp4", "a folder/\xC3\xA4\n.mp4"}) {
        SCOPED_TRACE(name);
        MakePlainClip("plain.mp4");
        fs::rename(In("plain.mp4"), In(name));
        const std::string out = name.substr(0, name.size() - 4) + " out.mkv";
        const Outcome run = Zelfx({"render", "-e", "color_balance", "--", name, out});
        EXPECT_EQ(run.status, 0) << run.err;
        EXPECT_EQ(VideoOf(out)["nb_read_frames"], "25");
    }
}

TEST_F(Video, ChoicesArePassedOn) {
    MakePlainClip("in.mp4");
    RenderClip("in.mp4", "fine.mp4", {"--crf", "10"});
    RenderClip("in.mp4", "coarse.mp4", {"--crf", "45"});
    EXPECT_GT(fs::file_size(In("fine.mp4")), fs::file_size(In("coarse.mp4")));
    RenderClip("in.mp4", "lossless.mkv", {"--codec", "ffv1", "--pix-fmt", "yuv422p"});
    EXPECT_EQ(VideoOf("lossless.mkv")["codec_name"], "ffv1");
    EXPECT_EQ(VideoOf("lossless.mkv")["pix_fmt"], "yuv422p");
    RenderClip("in.mp4", "hevc.mp4", {"--codec", "libx265", "--crf", "30"});
    EXPECT_EQ(VideoOf("hevc.mp4")["codec_name"], "hevc");
}

TEST_F(Video, TurnedClipsStandUpright) {
    MakePlainClip("plain.mp4");
    Ffmpeg({"-i", "plain.mp4", "-c", "copy", "-metadata:s:v:0", "rotate=90", "turned.mp4"});
    RenderClip("turned.mp4", "out.mp4");
    EXPECT_EQ(VideoOf("out.mp4")["width"], 64);
    EXPECT_EQ(VideoOf("out.mp4")["height"], 96);
}

TEST_F(Video, SoundStaysInStepWithALatePicture) {
    MakePlainClip("plain.mp4");
    Ffmpeg({"-itsoffset", "0.4", "-i", "plain.mp4", "-i", "plain.mp4", "-map", "0:v", "-map", "1:a",
            "-c", "copy", "late.mkv"});
    RenderClip("late.mkv", "out.mkv");
    const auto start = [&](const char* file) {
        return std::stod(VideoOf(file)["start_time"].get<std::string>());
    };
    EXPECT_GE(start("late.mkv"), 0.4);
    EXPECT_NEAR(start("out.mkv"), start("late.mkv"), 0.5 / 25);  // frames fall on the rate
    EXPECT_EQ(Sound("out.mkv"), Sound("late.mkv"));
}

TEST_F(Video, FramesOfDifferentLengthsBecomeEven) {
    MakePlainClip("plain.mp4");
    // Of the first twelve frames four are left out.
    Ffmpeg({"-i", "plain.mp4", "-vf", "select='gte(n\\,12)+gt(mod(n\\,3)\\,0)'", "-fps_mode", "vfr",
            "-c:v", "libx264", "-preset", "ultrafast", "uneven.mp4"});
    const Outcome run = RenderClip("uneven.mp4", "out.mp4");
    EXPECT_NE(run.err.find("different lengths"), std::string::npos) << run.err;
    const double in = std::stod(VideoOf("uneven.mp4")["duration"].get<std::string>());
    const double out = std::stod(VideoOf("out.mp4")["duration"].get<std::string>());
    EXPECT_NEAR(in, out, 0.5 / 25);
    EXPECT_EQ(VideoOf("out.mp4")["avg_frame_rate"], "25/1");
    EXPECT_EQ(VideoOf("out.mp4")["nb_read_frames"], "24");
}

TEST_F(Video, TimecodeIsCarriedOver) {
    MakePlainClip("plain.mp4");
    Ffmpeg({"-i", "plain.mp4", "-c", "copy", "-timecode", "01:02:03:04", "in.mov"});
    RenderClip("in.mov", "out.mov");
    EXPECT_EQ(VideoOf("out.mov")["tags"]["timecode"], "01:02:03:04");
}

}  // namespace
