#pragma once

/// A video through a chain of effects into another video, with its sound.

#include "cli/Chain.h"
#include "cli/frames/RenderFrames.h"
#include "cli/video/Encoding.h"

#include <filesystem>
#include <functional>
#include <string>

namespace zel {

struct VideoReport {
    FramesReport frames{};
    std::string rate, codec, pixels;  // of the output: "24000/1001", "libx264", "yuv420p"
};

/// `note` is told what was assumed and what was left out, before the first frame. Throws
/// what RenderFrames throws; there is no output then.
VideoReport RenderVideo(const Chain& chain, const std::filesystem::path& in,
                        const std::filesystem::path& out, const EncodingWishes& wishes,
                        FramesOptions options, const std::function<void(std::string)>& note);

}  // namespace zel
