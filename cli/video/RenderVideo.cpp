#include "cli/video/RenderVideo.h"

#include "cli/video/VideoFrames.h"
#include "headless/Text.h"

namespace zel {

namespace {

std::string Count(int number, const char* what) {
    return std::to_string(number) + " " + what + (number == 1 ? "" : "s");
}

void TellWhatIsDone(const VideoFacts& facts, const ColourReading& reading, const Encoding& encoding,
                    const std::function<void(std::string)>& note) {
    const std::string name = "'" + facts.file.string() + "'";
    if (!facts.pixels.rgb && !reading.assumed.empty())
        note(name + " is taken to have " + AllOf(reading.assumed));
    if (facts.pixels.rgb && !encoding.pixels.rgb)
        note(name + " is RGB: written with the matrix " + reading.matrix + " in limited range");
    if (facts.variable)
        note(name + " has frames of different lengths: written with " + facts.rate +
             " a second, some repeated or left out");
    if (facts.interlaced) note(name + " is interlaced: its fields stay woven, and are not marked");
    if (facts.otherVideos > 0)
        note(Count(facts.otherVideos, "further video stream") + " of " + name + " left out");
    if (facts.subtitles > 0 && !encoding.subtitles)
        note(Count(facts.subtitles, "subtitle") + " of " + name + " left out");
}

}  // namespace

VideoReport RenderVideo(const Chain& chain, const std::filesystem::path& in,
                        const std::filesystem::path& out, const EncodingWishes& wishes,
                        FramesOptions options, const std::function<void(std::string)>& note) {
    const VideoFacts facts = ProbeVideo(in);
    const Encoding encoding = EncodingFor(facts, wishes, out);
    const ColourReading reading =
        ReadingOf(facts.colour, facts.height, facts.pixels.rgb, in.string());
    const Depth depth = facts.pixels.bits <= 8 ? Depth::U8 : Depth::U16;
    const SampleType sample = FormatFor(chain, depth, options.render.format).sample;
    TellWhatIsDone(facts, reading, encoding, note);

    options.total = facts.total;
    VideoSource source(facts, reading, sample);
    VideoSink sink(facts, reading, encoding, sample, out);
    VideoReport report{RenderFrames(source, sink, chain, options), facts.rate, encoding.codec,
                       encoding.pixels.name};
    const bool wantsAlpha = facts.pixels.alpha || options.render.moduleAlpha;
    report.frames.picture.alphaDropped = wantsAlpha && !encoding.pixels.alpha;
    return report;
}

}  // namespace zel
