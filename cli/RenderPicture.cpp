#include "cli/RenderPicture.h"

#include "abi/HostCodes.h"
#include "cli/picture/Pixels.h"
#include "headless/Error.h"
#include "headless/Text.h"

#include <algorithm>
#include <utility>

namespace zel {

namespace {

SampleType SampleFor(Depth depth) {
    switch (depth) {
        case Depth::U8: return SampleType::U8;
        case Depth::U10:
        case Depth::U12:
        case Depth::U16: return SampleType::U16;
        default: return SampleType::Float;
    }
}

const FormatFacts* PreferredFormat(const EffectSession& session, SampleType sample) {
    for (const PrPixelFormat code : session.Formats())
        for (const FormatFacts& facts : KnownFormats())
            if (facts.code == code && facts.sample == sample) return &facts;
    return nullptr;
}

/// Throws unless the frame was rendered. Under After Effects 516 comes after a good
/// render: the effect reports the suite that After Effects does not have.
void RequireRendered(const EffectSession& session, const RenderResult& result) {
    const bool harmless =
        session.Host() == Personality::AfterEffects && result.code == PF_Err_BAD_CALLBACK_PARAM;
    if (result.code == PF_Err_NONE || harmless) return;
    throw Error(ErrorKind::Module,
                session.Name() + " refused the frame with error " + std::to_string(result.code) +
                    (result.message.empty() ? "" : ": " + OneLine(result.message)));
}

std::optional<DpxTags> TagsFor(const PictureHeader& source, const RenderOptions& options) {
    if (!options.bigEndian && !options.transfer) return std::nullopt;
    DpxTags tags = source.dpx.value_or(DpxTags{});
    tags.bigEndian = options.bigEndian.value_or(tags.bigEndian);
    tags.transfer = options.transfer.value_or(tags.transfer);
    return tags;
}

}  // namespace

const FormatFacts& FormatFor(const EffectSession& session, Depth depth) {
    const SampleType sample = SampleFor(depth);
    if (const FormatFacts* format = PreferredFormat(session, sample)) return *format;
    // After Effects hands this effect no float frames; it narrows them to 16 bits.
    if (sample == SampleType::Float)
        if (const FormatFacts* format = PreferredFormat(session, SampleType::U16)) return *format;
    throw Error(ErrorKind::Module,
                session.Name() + " takes no frames of " + NameOf(depth) + "-bit samples");
}

PrPixelFormat FormatHolding(Depth depth) {
    switch (SampleFor(depth)) {
        case SampleType::U8: return PrPixelFormat_BGRA_4444_8u;
        case SampleType::U16: return PrPixelFormat_BGRA_4444_16u;
        default: return PrPixelFormat_BGRA_4444_32f;
    }
}

const FormatFacts& FormatFor(const Chain& chain, Depth depth, const FormatFacts* wish) {
    const FormatFacts& format = wish ? *wish : FormatFor(chain.front().session, depth);
    for (const ChainLink& link : chain) link.session.RequireFormat(format);
    return format;
}

Frame& RenderChain(const Chain& chain, Frame& source, Frame& other, bool moduleAlpha,
                   RenderResult& result) {
    Frame *from = &source, *to = &other;
    for (const ChainLink& link : chain) {
        RenderResult rendered = link.session.Render(*to, *from, link.values);
        RequireRendered(link.session, rendered);
        if (rendered.code != PF_Err_NONE) result = std::move(rendered);
        if (!moduleAlpha) CopyAlpha(*to, *from);
        std::swap(from, to);
    }
    return *from;
}

std::unique_ptr<Frame> ReadForChain(const Chain& chain, PictureSource& picture,
                                    const RenderOptions& options, RenderReport& report) {
    const PictureHeader& header = picture.Header();
    const FormatFacts& format = FormatFor(chain, header.depth, options.format);
    report.format = &format;
    report.width = header.width;
    report.height = header.height;
    report.floatNarrowed = SampleFor(header.depth) == SampleType::Float && !options.format &&
                           format.sample != SampleType::Float;

    auto frame = std::make_unique<Frame>(format.code, header.width, header.height);
    picture.Read(*frame);
    if (format.sample == SampleType::Float) {
        report.clipped = CountOutsideUnit(*frame);
        report.samples = std::uint64_t{3} * static_cast<std::uint64_t>(header.width) *
                         static_cast<std::uint64_t>(header.height);
    }
    return frame;
}

void RenderFrame(const Chain& chain, std::unique_ptr<Frame>& frame, const RenderOptions& options,
                 RenderReport& report) {
    const bool editorRange = options.editorRange && frame->Format().sample == SampleType::U16;
    if (editorRange) ToEditorScale(*frame);
    auto other = std::make_unique<Frame>(frame->Format().code, frame->Width(), frame->Height());
    Frame& result = RenderChain(chain, *frame, *other, options.moduleAlpha, report.effect);
    if (&result == other.get()) frame = std::move(other);
    if (editorRange) FromEditorScale(*frame);
}

PictureShape ExpectedPicture(const std::filesystem::path& out, const PictureHeader& source,
                             const RenderOptions& options) {
    const bool wantsAlpha = source.hasAlpha || options.moduleAlpha;
    return {source.width, source.height, DepthFor(out, options.depth.value_or(source.depth)),
            wantsAlpha && HoldsAlpha(out)};
}

void WriteRendered(const std::filesystem::path& out, const Frame& frame,
                   const PictureHeader& source, const RenderOptions& options,
                   RenderReport& report) {
    const bool wantsAlpha = source.hasAlpha || options.moduleAlpha;
    const PictureShape shape = ExpectedPicture(out, source, options);
    report.depth = shape.depth;
    report.alphaDropped = wantsAlpha && !shape.alpha;
    WritePicture(out, frame, source,
                 {.depth = shape.depth, .alpha = shape.alpha, .dpx = TagsFor(source, options)});
}

}  // namespace zel
