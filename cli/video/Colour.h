#pragma once

/// What a video says of its colours, and what is taken for granted where it is silent.

#include <string>
#include <vector>

namespace zel {

/// In the words of ffprobe; empty where the video does not say.
struct ColourTags {
    std::string range;      // "tv": black is 16 of 255; "pc": it is 0
    std::string matrix;     // from Y, Cb, Cr to red, green, blue: "bt709", ...
    std::string primaries;  // what red, green and blue are
    std::string transfer;   // from code to light
    std::string chroma;     // where Cb and Cr are sampled: "left", ...
};

/// How Y, Cb, Cr and codes are to be read and written again.
struct ColourReading {
    std::string range, matrix;         // never empty
    std::vector<std::string> assumed;  // for a person: what the video did not say
};

/// A matrix goes by the height where none is named: 720 lines and more are bt709, as
/// players take them. `rgb`: the video has no Y, Cb, Cr; then range and matrix are those
/// to write. Throws Error(Input), naming `file`, for a matrix that cannot be undone.
ColourReading ReadingOf(const ColourTags& tags, int height, bool rgb, const std::string& file);

/// The arguments of ffmpeg's filter `scale` that read or write by it: "in_range=tv:...".
std::string ScaleArguments(const ColourReading& reading, const char* direction);

/// The filter that marks frames with the tags, and the options that mark the stream: with
/// nothing that is not said.
std::string MarkingFilter(const ColourTags& tags);
std::vector<std::string> MarkingOptions(const ColourTags& tags);

}  // namespace zel
