#pragma once

/// How a video is written: what is chosen by the suffix of its name and by its source,
/// and the command lines of ffmpeg that read and write raw frames.

#include "cli/video/Probe.h"

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace zel {

/// What a person may choose instead.
struct EncodingWishes {
    std::optional<std::string> codec, crf, pixelFormat;
};

struct Encoding {
    std::string muxer, codec;
    PixelLayout pixels;
    bool exactly = false;               // the encoder must take these pixels, or fail
    std::vector<std::string> settings;  // of the encoder
    bool subtitles = false;             // are carried over
};

/// True for the suffixes of videos that can be written.
bool IsVideoName(const std::filesystem::path& file);
/// ".mov, .mp4 or .mkv", all of those.
std::string VideoSuffixes();

/// ProRes for .mov, H.264 for .mp4 and .mkv, VP9 for .webm, unless another is wished for;
/// Cb and Cr as coarse as the source has them, 10 bits where it has more than 8. Throws
/// Error(Usage) for wishes that cannot be met.
Encoding EncodingFor(const VideoFacts& facts, const EncodingWishes& wishes,
                     const std::filesystem::path& out);

/// ffmpeg from the video to raw frames on its standard output.
std::vector<std::string> DecoderCommand(const VideoFacts& facts, const ColourReading& reading,
                                        bool eightBits);

/// ffmpeg from raw frames on its standard input, with the sound of the video, to `to`.
std::vector<std::string> EncoderCommand(const VideoFacts& facts, const ColourReading& reading,
                                        const Encoding& encoding, bool eightBits,
                                        const std::filesystem::path& to);

}  // namespace zel
