#pragma once

/// Carries frames from a source through a render into a sink, several at a time.

#include "cli/frames/Shot.h"

#include <atomic>
#include <cstdint>
#include <exception>
#include <functional>

namespace zel {

struct PipelineOptions {
    int jobs = 1;                             // renders at a time; at most jobs + 2 frames are held
    const std::atomic<bool>* stop = nullptr;  // once true, no further frame is taken

    // Every frame that was taken, when it is done with: what it failed with, null when
    // nothing did. In order, one thread at a time; may be empty.
    std::function<void(const Shot&, const std::exception_ptr&)> ended = nullptr;
};

/// Runs until the source ends, `stop` is set or a frame fails; frames that were taken
/// before are brought to their end. `render` turns shot.frame into the result and may run
/// on `jobs` threads at once; `load` and the sink's Encode run on up to jobs + 2, so that
/// reading and writing overlap with it. Returns how many frames were delivered; throws
/// what the earliest frame in order failed with. Does not call sink.Finish().
std::int64_t RunPipeline(FrameSource& source, FrameSink& sink, const PipelineOptions& options,
                         const std::function<void(Shot&)>& load,
                         const std::function<void(Shot&)>& render);

}  // namespace zel
