#include "cli/video/Colour.h"

#include "headless/Error.h"
#include "headless/Text.h"

#include <algorithm>
#include <span>
#include <string_view>

namespace zel {

namespace {

struct MatrixName {
    const char *tag, *filter;  // of the stream, and of ffmpeg's scaler
};

// clang-format off
constexpr MatrixName kMatrices[] = {
    {"bt709",     "bt709"},
    {"smpte170m", "smpte170m"},
    {"bt470bg",   "bt470"},
    {"smpte240m", "smpte240m"},
    {"fcc",       "fcc"},
    {"bt2020nc",  "bt2020"},
};
// clang-format on

const MatrixName* MatrixNamed(const std::string& tag) {
    const auto* row =
        std::ranges::find(kMatrices, tag, [](const MatrixName& m) { return std::string(m.tag); });
    return row == std::end(kMatrices) ? nullptr : row;
}

/// Names of the code points of ITU-T H.273, as ffprobe prints them. By number the filter
/// and the encoders all take them; by name they differ.
struct CodePoint {
    std::string_view name;
    int number;
};

// clang-format off
constexpr CodePoint kPrimaries[] = {
    {"bt709",     1}, {"bt470m",   4},  {"bt470bg",  5},  {"smpte170m", 6},  {"smpte240m", 7},
    {"film",      8}, {"bt2020",   9},  {"smpte428", 10}, {"smpte431",  11}, {"smpte432",  12},
    {"ebu3213",  22},
};
constexpr CodePoint kTransfers[] = {
    {"bt709",         1}, {"bt470m",    4},  {"bt470bg",   5},  {"smpte170m",    6},
    {"smpte240m",     7}, {"linear",    8},  {"log100",    9},  {"log316",       10},
    {"iec61966-2-4", 11}, {"bt1361e",   12}, {"iec61966-2-1", 13}, {"bt2020-10", 14},
    {"bt2020-12",    15}, {"smpte2084", 16}, {"smpte428",  17}, {"arib-std-b67", 18},
};
constexpr CodePoint kSpaces[] = {
    {"gbr",       0}, {"bt709",    1}, {"fcc",      4}, {"bt470bg",   5}, {"smpte170m", 6},
    {"smpte240m", 7}, {"bt2020nc", 9},
};
// clang-format on

struct Mark {
    const char *filter, *option;
    std::string value;
};

/// A row per tag that is there, and one for the range.
std::vector<Mark> MarksOf(const ColourTags& tags) {
    std::vector<Mark> marks;
    const auto add = [&](const char* filter, const char* option, std::span<const CodePoint> points,
                         const std::string& name) {
        const auto point = std::ranges::find(points, name, &CodePoint::name);
        if (point != points.end()) marks.push_back({filter, option, std::to_string(point->number)});
    };
    // The scaler marks what it makes: a range that was assumed is taken off again.
    marks.push_back({"range", "-color_range", tags.range.empty() ? "unknown" : tags.range});
    add("colorspace", "-colorspace", kSpaces, tags.matrix);
    add("color_primaries", "-color_primaries", kPrimaries, tags.primaries);
    add("color_trc", "-color_trc", kTransfers, tags.transfer);
    return marks;
}

}  // namespace

ColourReading ReadingOf(const ColourTags& tags, int height, bool rgb, const std::string& file) {
    ColourReading reading{tags.range, tags.matrix, {}};
    if (rgb) {
        reading.range = "tv";
        reading.matrix.clear();
    }
    if (reading.range.empty()) {
        reading.range = "tv";
        reading.assumed.push_back("a limited range (tv), as it names none");
    }
    if (reading.matrix.empty()) {
        const bool large = height >= 720;
        reading.matrix = large ? "bt709" : "smpte170m";
        reading.assumed.push_back("the matrix " + reading.matrix + ", as it names none and is " +
                                  std::to_string(height) + " lines high");
    }
    if (!MatrixNamed(reading.matrix)) {
        std::vector<std::string> known;
        for (const MatrixName& m : kMatrices) known.emplace_back(m.tag);
        throw Error(ErrorKind::Input, "cannot read '" + file + "': its colour matrix is " +
                                          reading.matrix + ", not " + Alternatives(known));
    }
    return reading;
}

std::string ScaleArguments(const ColourReading& reading, const char* direction) {
    return std::string(direction) + "_range=" + reading.range + ":" + direction +
           "_color_matrix=" + MatrixNamed(reading.matrix)->filter;
}

std::string MarkingFilter(const ColourTags& tags) {
    std::string text;
    for (const Mark& mark : MarksOf(tags))
        text += (text.empty() ? "setparams=" : ":") + std::string(mark.filter) + "=" + mark.value;
    return text;
}

std::vector<std::string> MarkingOptions(const ColourTags& tags) {
    std::vector<std::string> words;
    for (const Mark& mark : MarksOf(tags)) words.insert(words.end(), {mark.option, mark.value});
    if (!tags.chroma.empty()) words.insert(words.end(), {"-chroma_sample_location", tags.chroma});
    return words;
}

}  // namespace zel
