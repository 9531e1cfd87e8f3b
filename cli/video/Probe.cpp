#include "cli/video/Probe.h"

#include "cli/video/Process.h"
#include "headless/Error.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdlib>

namespace zel {

namespace fs = std::filesystem;
using nlohmann::json;

namespace {

[[noreturn]] void FailToRead(const fs::path& file, const std::string& why) {
    throw Error(ErrorKind::Input, "cannot read '" + file.string() + "': " + why);
}

/// Empty where it is not said; ffprobe has three words for that.
std::string Text(const json& object, const char* key) {
    const auto found = object.find(key);
    if (found == object.end() || !found->is_string()) return {};
    std::string text = *found;
    return text == "unknown" || text == "unspecified" || text == "N/A" ? std::string() : text;
}

int Integer(const json& object, const char* key) {
    const auto found = object.find(key);
    return found == object.end() || !found->is_number() ? 0 : found->get<int>();
}

/// Numbers that ffprobe writes as text; 0 where there is none.
double Decimal(const json& object, const char* key) {
    const std::string text = Text(object, key);
    double value = 0;
    std::from_chars(text.data(), text.data() + text.size(), value);
    return value;
}

/// "24000/1001"; 0 of "0/0".
double Quotient(const std::string& fraction) {
    const auto slash = fraction.find('/');
    if (slash == std::string::npos) return 0;
    const double below = std::atof(fraction.c_str() + slash + 1);
    return below > 0 ? std::atof(fraction.c_str()) / below : 0;
}

PixelLayout LayoutFrom(const json& format) {
    PixelLayout layout;
    layout.name = Text(format, "name");
    const json& flags = format.at("flags");
    layout.rgb = Integer(flags, "rgb") != 0 || Integer(flags, "palette") != 0;
    layout.alpha = Integer(flags, "alpha") != 0;
    layout.chromaWidth = Integer(format, "log2_chroma_w");
    layout.chromaHeight = Integer(format, "log2_chroma_h");
    for (const json& component : format.value("components", json::array()))
        layout.bits = std::max(layout.bits, Integer(component, "bit_depth"));
    return layout;
}

bool IsPicture(const json& stream) {
    return Integer(stream.value("disposition", json::object()), "attached_pic") != 0;
}

/// True where the file says that its pictures are to be turned by a quarter.
bool IsTurned(const json& stream) {
    for (const json& data : stream.value("side_data_list", json::array()))
        if (data.contains("rotation")) return std::abs(data["rotation"].get<int>()) % 180 == 90;
    return false;
}

void Turn(VideoFacts& facts) {
    std::swap(facts.width, facts.height);
    const auto colon = facts.sampleAspect.find(':');
    if (colon == std::string::npos) return;
    facts.sampleAspect =
        facts.sampleAspect.substr(colon + 1) + ':' + facts.sampleAspect.substr(0, colon);
}

/// The average, which is the rate of videos whose frames are of one length. Else the
/// coarsest rate that has a place for every frame, if it is none that fields or clocks have.
void ReadRate(VideoFacts& facts, const json& stream) {
    facts.rate = Text(stream, "avg_frame_rate");
    const std::string base = Text(stream, "r_frame_rate");
    const double average = Quotient(facts.rate), finest = Quotient(base);
    // Interlaced streams may count fields, and averages are rounded.
    const double ratio = average > 0 ? finest / average : 1;
    facts.variable = std::abs(ratio - 1) > 0.002 && std::abs(ratio - 2) > 0.004;
    if (!(average > 0) || (facts.variable && ratio > 1 && ratio < 2)) facts.rate = base;
}

std::string TimecodeOf(const json& all, const json& video) {
    const json none = json::object();
    std::string text = Text(video.value("tags", none), "timecode");
    for (const json& stream : all.at("streams"))
        if (text.empty()) text = Text(stream.value("tags", none), "timecode");
    return text.empty() ? Text(all.at("format").value("tags", none), "timecode") : text;
}

VideoFacts FactsFrom(const json& all, const fs::path& file) {
    VideoFacts facts;
    facts.file = file;
    for (const json& format : all.at("pixel_formats")) facts.layouts.push_back(LayoutFrom(format));

    const json* video = nullptr;
    for (const json& stream : all.at("streams")) {
        const std::string type = Text(stream, "codec_type");
        facts.subtitles += type == "subtitle";
        if (type != "video" || IsPicture(stream)) continue;
        if (video)
            ++facts.otherVideos;
        else
            video = &stream;
    }
    if (!video) FailToRead(file, "there is no video in it");

    facts.stream = Integer(*video, "index");
    facts.width = Integer(*video, "width");
    facts.height = Integer(*video, "height");
    facts.sampleAspect = Text(*video, "sample_aspect_ratio");
    if (facts.sampleAspect.starts_with("0:")) facts.sampleAspect.clear();
    if (IsTurned(*video)) Turn(facts);
    ReadRate(facts, *video);
    const PixelLayout* pixels = facts.LayoutNamed(Text(*video, "pix_fmt"));
    if (facts.width <= 0 || facts.height <= 0 || !pixels || !(Quotient(facts.rate) > 0))
        FailToRead(file, "it does not say what its frames are; it is damaged or not complete");
    facts.pixels = *pixels;
    facts.colour = {Text(*video, "color_range"), Text(*video, "color_space"),
                    Text(*video, "color_primaries"), Text(*video, "color_transfer"),
                    Text(*video, "chroma_location")};
    // "reserved" and its kin name nothing.
    if (facts.colour.matrix == "reserved") facts.colour.matrix.clear();
    const std::string fields = Text(*video, "field_order");
    facts.interlaced = !fields.empty() && fields != "progressive";
    facts.timecode = TimecodeOf(all, *video);
    facts.offset =
        std::max(0.0, Decimal(*video, "start_time") - Decimal(all.at("format"), "start_time"));

    facts.total = static_cast<std::int64_t>(Decimal(*video, "nb_frames"));
    double seconds = Decimal(*video, "duration");
    if (!(seconds > 0)) seconds = Decimal(all.at("format"), "duration");
    if ((facts.total <= 0 || facts.variable) && seconds > 0 && seconds < 1e7)
        facts.total = std::llround(seconds * Quotient(facts.rate));
    return facts;
}

}  // namespace

const PixelLayout* VideoFacts::LayoutNamed(const std::string& name) const {
    const auto found = std::ranges::find(layouts, name, &PixelLayout::name);
    return found == layouts.end() ? nullptr : &*found;
}

VideoFacts ProbeVideo(const fs::path& file) {
    std::error_code ignored;
    if (!fs::exists(file, ignored)) FailToRead(file, "there is no such file");
    if (fs::is_directory(file, ignored)) FailToRead(file, "it is a folder, not a video");
    const std::string text =
        OutputOf({"ffprobe", "-v", "error", "-of", "json", "-show_pixel_formats", "-show_streams",
                  "-show_format", "-i", FfmpegName(file)},
                 "cannot read '" + file.string() + "': it is damaged or no video");
    // Tags need not be UTF-8.
    const json all = json::parse(text, nullptr, false);
    if (all.is_discarded()) FailToRead(file, "ffprobe tells nothing that can be read");
    return FactsFrom(all, file);
}

std::string FfmpegName(const fs::path& file) { return "file:" + file.string(); }

}  // namespace zel
