#pragma once

/// A picture through a chain of effects: what becomes of its pixels and of its file.

#include "cli/Chain.h"
#include "cli/picture/Picture.h"

#include <cstdint>
#include <filesystem>
#include <memory>
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
    RenderResult effect;         // the last one that was not 0
};

/// The format in which a picture of that depth is handed to the effect.
const FormatFacts& FormatFor(const EffectSession& session, Depth depth);

/// A format that holds pictures of that depth, for work without an effect: BGRA.
PrPixelFormat FormatHolding(Depth depth);

/// The format for all of the chain: `wish`, or what the first effect takes pictures of
/// that depth in. Throws Error(Module) when one of them does not take it.
const FormatFacts& FormatFor(const Chain& chain, Depth depth, const FormatFacts* wish);

/// Takes `source` through the chain by way of `other`, a frame like it, back and forth.
/// Returns the frame that holds the result, with the alpha of the source unless the
/// modules' is asked for. Throws Error(Module) when an effect refuses.
Frame& RenderChain(const Chain& chain, Frame& source, Frame& other, bool moduleAlpha,
                   RenderResult& result);

/// The three steps of a render, for whoever takes them on threads of its own; each notes
/// in `report` what it knows. Throw Error.
///   ReadForChain   a frame in the format of the chain, filled from `picture`
///   RenderFrame    replaces the frame by the result; holds two frames meanwhile
///   WriteRendered  writes a result as a file; throws without leaving one
std::unique_ptr<Frame> ReadForChain(const Chain& chain, PictureSource& picture,
                                    const RenderOptions& options, RenderReport& report);
void RenderFrame(const Chain& chain, std::unique_ptr<Frame>& frame, const RenderOptions& options,
                 RenderReport& report);
void WriteRendered(const std::filesystem::path& out, const Frame& frame,
                   const PictureHeader& source, const RenderOptions& options, RenderReport& report);

/// The shape that a picture file gets from a source.
PictureShape ExpectedPicture(const std::filesystem::path& out, const PictureHeader& source,
                             const RenderOptions& options);

}  // namespace zel
