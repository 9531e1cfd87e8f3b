#pragma once

/// Frames from a source through a chain of effects into a sink: the pipeline with
/// everything that a person or a farm wants around it.

#include "cli/frames/Shot.h"

#include <cstdint>
#include <filesystem>

namespace zel {

struct FramesOptions {
    RenderOptions render{};
    int jobs = 1;
    std::int64_t total = 0;       // frames to come, 0 when that is not known
    bool quiet = false;           // no progress
    bool verbose = false;         // what is done with every frame, and the memory it takes
    std::filesystem::path log{};  // a line of JSON per frame; empty for none
};

struct FramesReport {
    RenderReport picture{};  // of the first frame; what is counted, over all frames
    std::int64_t rendered = 0, kept = 0, missing = 0, nearest = 0;
    double seconds = 0;
};

/// Runs until the source ends, then calls sink.Finish(). Throws what the earliest frame
/// failed with, after the frames in flight; what others failed with is printed. Throws
/// Interrupted when a signal ended it early; an InterruptGuard catches them meanwhile.
/// Standard error is closed to libraries as long as it runs (QuietLibraries).
FramesReport RenderFrames(FrameSource& source, FrameSink& sink, const Chain& chain,
                          const FramesOptions& options);

/// Throws Error(Usage) unless `text` is a number of jobs, 1 to 256.
int JobsFrom(const std::string& text);

/// One for every processor that this process may use.
int JobsByDefault();

}  // namespace zel
