#include "tests/video/VideoTests.h"

namespace zel::test {

void VideoTest::Ffmpeg(const Words& arguments) const {
    Tool(Words{"ffmpeg", "-nostdin", "-v", "error", "-y"} + arguments);
}

void VideoTest::MakeClip(const std::string& file, const Words& more, const std::string& size,
                         const std::string& rate, const std::string& seconds) const {
    Ffmpeg(Words{"-f", "lavfi", "-i", "testsrc2=s=" + size + ":r=" + rate + ":d=" + seconds, "-f",
                 "lavfi", "-i", "sine=d=" + seconds} +
           more + Words{"file:" + file});
}

void VideoTest::MakePlainClip(const std::string& file, const std::string& seconds) const {
    MakeClip(file,
             {"-c:v", "libx264", "-preset", "ultrafast", "-pix_fmt", "yuv420p", "-color_range",
              "tv", "-colorspace", "bt709", "-color_primaries", "bt709", "-color_trc", "bt709",
              "-c:a", "aac", "-movflags", "+faststart"},
             "96x64", "25", seconds);
}

Outcome VideoTest::RenderClip(const std::string& in, const std::string& out,
                              const Words& more) const {
    const Outcome run = Zelfx(Words{"render", in, out, "-e", "color_balance"} + more);
    EXPECT_EQ(run.status, 0) << in << " to " << out << ": " << run.err;
    return run;
}

nlohmann::json VideoTest::VideoOf(const std::string& file) const {
    const auto json = nlohmann::json::parse(
        Tool({"ffprobe", "-v", "error", "-of", "json", "-count_frames", "-show_streams",
              "-select_streams", "v:0", "-i", "file:" + file})
            .out);
    return json.at("streams").at(0);
}

std::string VideoTest::Sound(const std::string& file) const {
    const Words streams{"-select_streams", "a", "-show_entries", "stream=index", "-of", "csv"};
    if (Tool(Words{"ffprobe", "-v", "error"} + streams + Words{"-i", "file:" + file}).out.empty())
        return "none";
    return Tool({"ffmpeg", "-nostdin", "-v", "error", "-i", "file:" + file, "-map", "0:a", "-c",
                 "copy", "-f", "streamhash", "-"})
        .out;
}

}  // namespace zel::test
