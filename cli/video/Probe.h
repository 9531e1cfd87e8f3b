#pragma once

/// What a video file is, asked of ffprobe.

#include "cli/video/Colour.h"

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace zel {

/// How ffmpeg stores pixels.
struct PixelLayout {
    std::string name;  // "yuv420p10le"
    int bits = 0;      // of the deepest component
    bool rgb = false, alpha = false;
    int chromaWidth = 0, chromaHeight = 0;  // powers of two that Cb and Cr are coarser by
};

struct VideoFacts {
    std::filesystem::path file;
    int stream = 0;             // index in the file
    int width = 0, height = 0;  // as shown: turned where the file says so
    std::string rate;           // frames per second as a fraction: "24000/1001"
    bool variable = false;      // frames of different lengths, to be made even
    std::string sampleAspect;   // "64:45"; empty where there is none
    PixelLayout pixels;
    ColourTags colour;
    bool interlaced = false;
    std::string timecode;    // of the first frame; empty where there is none
    double offset = 0;       // seconds from the file's first sound or frame to its first frame
    std::int64_t total = 0;  // frames, about; 0 when not known
    int otherVideos = 0, subtitles = 0;
    std::vector<PixelLayout> layouts;  // all that ffmpeg has

    /// Null when ffmpeg has none of that name.
    const PixelLayout* LayoutNamed(const std::string& name) const;
};

/// Throws Error(Input) when the file is missing or no video that can be read,
/// Error(Other) when ffprobe is not there.
VideoFacts ProbeVideo(const std::filesystem::path& file);

/// As ffmpeg takes the name of a file, whatever is in it: "file:-a:b.mov".
std::string FfmpegName(const std::filesystem::path& file);

}  // namespace zel
