#include "cli/video/Encoding.h"

#include "cli/Choice.h"
#include "headless/Error.h"
#include "headless/Text.h"

#include <algorithm>
#include <bit>
#include <charconv>
#include <iterator>
#include <string_view>

namespace zel {

namespace fs = std::filesystem;
using Words = std::vector<std::string>;

namespace {

struct Container {
    const char *suffix, *muxer, *codec;
};

struct Codec {
    const char* name;
    bool hasCrf;
    Words settings;  // where nothing is wished for
};

// clang-format off
constexpr Container kContainers[] = {
    {".mov",  "mov",      "prores_ks"},
    {".mp4",  "mp4",      "libx264"},
    {".m4v",  "mp4",      "libx264"},
    {".mkv",  "matroska", "libx264"},
    {".webm", "webm",     "libvpx-vp9"},
};

const Codec kCodecs[] = {
    {"prores_ks",  false, {}},
    {"prores",     false, {}},
    {"prores_aw",  false, {}},
    {"libx264",    true,  {"-crf", "18"}},
    {"libx265",    true,  {"-crf", "20", "-x265-params", "log-level=error"}},
    {"libvpx-vp9", true,  {"-crf", "24", "-b:v", "0", "-row-mt", "1"}},
};
// clang-format on

const Container* ContainerOf(const fs::path& file) {
    const std::string suffix = Lower(file.extension().string());
    const auto* found =
        std::ranges::find_if(kContainers, [&](const Container& c) { return suffix == c.suffix; });
    return found == std::end(kContainers) ? nullptr : found;
}

const Codec* CodecNamed(const std::string& name) {
    const auto* found =
        std::ranges::find_if(kCodecs, [&](const Codec& c) { return name == c.name; });
    return found == std::end(kCodecs) ? nullptr : found;
}

bool IsProRes(const std::string& codec) { return codec.starts_with("prores"); }

/// Players know the pixels of the source best; encoders of 4:2:0 want even sides.
std::string PixelsByDefault(const VideoFacts& facts, const std::string& codec) {
    const PixelLayout& source = facts.pixels;
    const bool colours = source.rgb || source.chromaHeight + source.chromaWidth == 0;
    const bool full = colours && !source.rgb && !source.name.starts_with("gray");
    if (IsProRes(codec))
        return source.alpha ? "yuva444p10le" : full ? "yuv444p10le" : "yuv422p10le";
    std::string chroma = full ? "444" : !colours && source.chromaHeight == 0 ? "422" : "420";
    if (facts.width % 2 != 0 || (chroma == "420" && facts.height % 2 != 0)) chroma = "444";
    return "yuv" + chroma + (source.bits > 8 ? "p10le" : "p");
}

Words SettingsFor(const std::string& codec, const PixelLayout& pixels,
                  const EncodingWishes& wishes) {
    const Codec* known = CodecNamed(codec);
    Words settings = known ? known->settings : Words{};
    if (codec == "prores_ks") settings = {"-profile:v", pixels.chromaWidth == 0 ? "4444" : "hq"};
    if (!wishes.crf) return settings;
    double value = 0;
    const char* end = wishes.crf->data() + wishes.crf->size();
    const auto [at, error] = std::from_chars(wishes.crf->data(), end, value);
    if (error != std::errc() || at != end || !(value >= 0 && value <= 63))
        RejectOption("crf", *wishes.crf, "a number from 0 (largest, best) to 63");
    if (known && !known->hasCrf)
        throw Error(ErrorKind::Usage,
                    "--crf is not for " + codec + ", whose quality goes by its profile");
    const auto crf = std::ranges::find(settings, "-crf");
    if (crf != settings.end())
        *std::next(crf) = *wishes.crf;
    else
        settings.insert(settings.end(), {"-crf", *wishes.crf});
    return settings;
}

/// Rounding and sampling as good as ffmpeg's own scaler does them.
constexpr const char* kScalerFlags = "flags=bicubic+accurate_rnd+full_chroma_int+full_chroma_inp";

std::string ScaleFilter(const VideoFacts& facts, const std::string& colours) {
    return "scale=" + std::to_string(facts.width) + ":" + std::to_string(facts.height) + ":" +
           kScalerFlags + (colours.empty() ? "" : ":" + colours);
}

const char* RawFormat(bool eightBits) {
    if (eightBits) return "bgra";
    return std::endian::native == std::endian::little ? "bgra64le" : "bgra64be";
}

void Append(Words& words, const Words& more) {
    words.insert(words.end(), more.begin(), more.end());
}

const Words kQuietly{"ffmpeg", "-nostdin", "-hide_banner", "-v", "error"};

/// What the written stream is marked with: the tags of the source, but what its Y, Cb, Cr
/// were made by when it had none.
ColourTags TagsToWrite(const VideoFacts& facts, const ColourReading& reading,
                       const Encoding& encoding) {
    ColourTags tags = facts.colour;
    if (facts.pixels.rgb == encoding.pixels.rgb) return tags;
    tags.range = encoding.pixels.rgb ? "pc" : reading.range;
    tags.matrix = encoding.pixels.rgb ? "gbr" : reading.matrix;
    tags.chroma.clear();
    return tags;
}

}  // namespace

bool IsVideoName(const fs::path& file) { return ContainerOf(file) != nullptr; }

std::string VideoSuffixes() {
    Words suffixes;
    for (const Container& c : kContainers) suffixes.emplace_back(c.suffix);
    return Alternatives(suffixes);
}

Encoding EncodingFor(const VideoFacts& facts, const EncodingWishes& wishes, const fs::path& out) {
    const Container* container = ContainerOf(out);
    if (!container)
        throw Error(ErrorKind::Usage,
                    "cannot write '" + out.string() + "': the suffix must be " + VideoSuffixes());
    Encoding encoding;
    encoding.muxer = container->muxer;
    encoding.codec = wishes.codec.value_or(container->codec);
    const std::string pixels = wishes.pixelFormat.value_or(PixelsByDefault(facts, encoding.codec));
    const PixelLayout* layout = facts.LayoutNamed(pixels);
    if (!layout) {
        Words names;
        for (const PixelLayout& l : facts.layouts) names.push_back(l.name);
        throw Error(ErrorKind::Usage, "--pix-fmt cannot be '" + pixels +
                                          "': ffmpeg has no such pixels" +
                                          DidYouMean(pixels, names));
    }
    encoding.pixels = *layout;
    encoding.exactly = wishes.pixelFormat.has_value();
    encoding.settings = SettingsFor(encoding.codec, encoding.pixels, wishes);
    encoding.subtitles = Lower(facts.file.extension().string()) == container->suffix;
    return encoding;
}

Words DecoderCommand(const VideoFacts& facts, const ColourReading& reading, bool eightBits) {
    Words words = kQuietly;
    Append(words, {"-i", FfmpegName(facts.file), "-map", "0:" + std::to_string(facts.stream)});
    const std::string colours = facts.pixels.rgb ? "" : ScaleArguments(reading, "in");
    // Every frame once, unless their lengths differ: then as many as keep the sound in step.
    const std::string even = facts.variable ? "fps=" + facts.rate + "," : "";
    Append(words, {"-fps_mode", "passthrough", "-vf",
                   even + ScaleFilter(facts, colours) + ",format=" + RawFormat(eightBits)});
    Append(words, {"-f", "rawvideo", "pipe:1"});
    return words;
}

Words EncoderCommand(const VideoFacts& facts, const ColourReading& reading,
                     const Encoding& encoding, bool eightBits, const fs::path& to) {
    Words words = kQuietly;
    if (facts.offset > 0) Append(words, {"-itsoffset", std::to_string(facts.offset)});
    Append(words, {"-f", "rawvideo", "-pixel_format", RawFormat(eightBits), "-video_size",
                   std::to_string(facts.width) + "x" + std::to_string(facts.height), "-framerate",
                   facts.rate, "-i", "pipe:0"});
    Append(words, {"-i", FfmpegName(facts.file), "-map", "0:v", "-map", "1:a?", "-c:a", "copy"});
    if (encoding.subtitles) Append(words, {"-map", "1:s?", "-c:s", "copy"});
    Append(words, {"-map_metadata", "1", "-map_chapters", "1"});
    if (!facts.timecode.empty()) Append(words, {"-timecode", facts.timecode});

    const ColourTags tags = TagsToWrite(facts, reading, encoding);
    std::string filters =
        ScaleFilter(facts, encoding.pixels.rgb ? "" : ScaleArguments(reading, "out"));
    filters += ",format=" + encoding.pixels.name;
    if (!facts.sampleAspect.empty()) {
        std::string aspect = facts.sampleAspect;
        std::ranges::replace(aspect, ':', '/');
        filters += ",setsar=" + aspect;
    }
    if (const std::string marks = MarkingFilter(tags); !marks.empty()) filters += "," + marks;
    Append(words, {"-fps_mode", "passthrough", "-vf", filters, "-pix_fmt",
                   (encoding.exactly ? "+" : "") + encoding.pixels.name, "-c:v", encoding.codec});
    Append(words, encoding.settings);
    Append(words, MarkingOptions(tags));
    if (encoding.muxer == "mp4") Append(words, {"-movflags", "+faststart"});
    // No time of day, no chance: the same bytes every time.
    Append(words, {"-fflags", "+bitexact", "-flags:v", "+bitexact"});
    Append(words, {"-f", encoding.muxer, "-y", FfmpegName(to)});
    return words;
}

}  // namespace zel
