#pragma once

/// Frames in a row: where they come from, where they go, and one of them on its way.
/// Files of a sequence and videos are both behind these interfaces.

#include "cli/RenderPicture.h"
#include "cli/frames/Manifest.h"
#include "cli/picture/Picture.h"

#include <cstdint>
#include <memory>
#include <optional>

namespace zel {

/// What becomes of a frame. Those kept or missing pass through without a picture.
enum class Fate {
    Rendered,
    Nearest,  // rendered from another frame, the nearest to one that is not there
    Kept,     // its output was there from an earlier run
    Missing,  // there is nothing to read
};

/// One frame on its way from source to sink.
struct Shot {
    std::int64_t number = 0;                 // in its sequence, or counted from 0 in a video
    std::filesystem::path in, out;           // files; empty where there are none
    Fate fate = Fate::Rendered;              // settled by Next or Load
    std::unique_ptr<PictureSource> picture;  // null until Load, where opening takes time
    std::unique_ptr<Frame> frame;            // pixels read, then rendered
    RenderReport report{};
    double milliseconds = 0;         // reading, rendering and encoding
    std::optional<FileFacts> facts;  // of its output, where a manifest is written or asked

    bool IsRendered() const { return fate == Fate::Rendered || fate == Fate::Nearest; }
};

class FrameSource {
public:
    virtual ~FrameSource() = default;

    /// The next frame, null at the end. Called by one thread at a time, in order.
    virtual std::optional<Shot> Next() = 0;

    /// What reading costs beside that: opens shot.picture where Next has not. Called by
    /// several threads at once, each with its own shot.
    virtual void Load(Shot&) {}
};

class FrameSink {
public:
    virtual ~FrameSink() = default;

    /// What can be done to a rendered frame alone, such as writing its file. Called by
    /// several threads at once, each with its own shot.
    virtual void Encode(Shot&) {}

    /// What must be done in order, such as feeding an encoder. One thread at a time, in
    /// the order in which the source gave the frames.
    virtual void Deliver(Shot&) {}

    /// After the last frame, when nothing failed: makes the output final. A sink that is
    /// destroyed without leaves no output that looks finished.
    virtual void Finish() {}
};

}  // namespace zel
