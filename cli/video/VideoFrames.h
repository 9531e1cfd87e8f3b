#pragma once

/// The frames of a video as source and sink of a run, through ffmpeg.

#include "cli/frames/Shot.h"
#include "cli/picture/TemporaryFile.h"
#include "cli/video/Encoding.h"
#include "cli/video/Probe.h"
#include "cli/video/Process.h"

#include <cstdint>
#include <filesystem>
#include <optional>

namespace zel {

class VideoSource : public FrameSource {
public:
    /// Frames for effects that take samples of that type: 8 bits, or 16 for the others.
    VideoSource(const VideoFacts& facts, const ColourReading& reading, SampleType sample);

    /// Throws Error(Input) as soon as ffmpeg has found something wrong with the video.
    std::optional<Shot> Next() override;

private:
    void RequireGoodEnd(bool betweenFrames);

    PictureHeader m_header;
    std::size_t m_pixelBytes;
    std::int64_t m_next = 0;
    Process m_ffmpeg;
};

class VideoSink : public FrameSink {
public:
    /// Throws Error(Other) when no file can be made at `out`; so do the others when ffmpeg
    /// cannot write it.
    VideoSink(const VideoFacts& facts, const ColourReading& reading, const Encoding& encoding,
              SampleType sample, const std::filesystem::path& out);

    void Encode(Shot& shot) override;
    void Deliver(Shot& shot) override;
    void Finish() override;

private:
    [[noreturn]] void Fail();

    std::filesystem::path m_in, m_out;
    TemporaryFile m_temporary;
    Process m_ffmpeg;
};

}  // namespace zel
