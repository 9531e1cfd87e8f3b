#pragma once

/// One picture file through one effect into another picture file.

#include "cli/picture/Picture.h"
#include "headless/EffectSession.h"

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>

namespace zel {

struct RenderOptions {
    const FormatFacts* format = nullptr;   // default: by the file's depth
    bool moduleAlpha = false;              // write the alpha that the module wrote
    bool editorRange = false;              // 16-bit white is 32768, as in the editors
    std::optional<Depth> depth;            // of the output; default: the input's
    std::optional<bool> bigEndian;         // of a DPX output; default: the input's
    std::optional<std::uint8_t> transfer;  // likewise
};

/// What happened, for whoever reports it.
struct RenderReport {
    const FormatFacts* format;
    int width, height;
    Depth depth;                 // of the output
    std::uint64_t clipped = 0;   // float colour samples outside 0..1
    std::uint64_t samples = 0;   // float colour samples in all
    bool alphaDropped = false;   // the output's type holds none
    bool floatNarrowed = false;  // a float picture was handed over in 16 bits
    RenderResult effect;
};

/// The format in which a picture of that depth is handed to the effect.
const FormatFacts& FormatFor(const EffectSession& session, Depth depth);

/// Holds two frames at a time, the source and the destination. Throws Error; then no
/// output file is left.
RenderReport RenderPicture(const EffectSession& session, const ParameterValues& values,
                           const std::filesystem::path& in, const std::filesystem::path& out,
                           const RenderOptions& options);

}  // namespace zel
