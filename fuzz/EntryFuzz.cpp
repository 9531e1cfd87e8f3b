/// The entry point of the real modules under a host that breaks every habit but not the
/// interface: any command in any order, suites that fail, any parameter bits, any frame.

#include "fuzz/Check.h"
#include "fuzz/Feed.h"
#include "tests/support/GuardedBuffer.h"
#include "tests/support/HostFrame.h"
#include "tests/support/LoadedModule.h"
#include "tests/support/RecordingHost.h"

#include <algorithm>
#include <cstring>
#include <iterator>
#include <memory>
#include <optional>
#include <string>

namespace {

using namespace zel::fuzz;
using namespace zel::test;

constexpr const char* kModules[] = {ZEL_FUZZ_MODULES};

/// Loaded once: what is under test is use, not loading.
LoadedModule& ModuleOf(int index) {
    static std::optional<LoadedModule> modules[std::size(kModules)];
    auto& module = modules[index];
    if (!module) module.emplace(kModules[index]);
    return *module;
}

Misbehaviour AnyMisbehaviour(Feed& feed) {
    Misbehaviour wrong;
    if (feed.Flag()) {
        wrong.addParamFailsAt = feed.Below(64);
        wrong.addParamError = feed.Any<PF_Err>();
    }
    const int bits = feed.Any<std::uint8_t>();
    wrong.noBasicSuite = bits % 8 == 1;
    wrong.suiteStaysNull = bits / 8 % 4 == 1;
    wrong.noDisposeHandle = bits & 32;
    wrong.formatLeftAlone = bits & 64;
    if (bits & 128) {
        wrong.acquireResult = feed.Any<SPErr>();
        wrong.releaseResult = feed.Any<SPErr>();
        wrong.formatResult = feed.Any<PF_Err>();
    }
    return wrong;
}

// clang-format off
constexpr struct { PrPixelFormat format; int pixelBytes; } kFormats[] = {
    {PrPixelFormat_BGRA_4444_8u,   4},
    {PrPixelFormat_BGRA_4444_16u,  8},
    {PrPixelFormat_BGRA_4444_32f, 16},
    {PrPixelFormat_ARGB_4444_8u,   4},
    {PrPixelFormat_ARGB_4444_16u,  8},
};
// clang-format on

int PixelBytes(PrPixelFormat format) {
    for (const auto& known : kFormats)
        if (known.format == format) return known.pixelBytes;
    return 4;
}

PF_LayerDef LayerOf(const GuardedFrame& frame, int width, int height, A_long flags) {
    PF_LayerDef layer{};
    layer.world_flags = static_cast<PF_WorldFlags>(flags);
    layer.data = static_cast<PF_PixelPtr>(frame.base());
    layer.rowbytes = frame.rowBytes();
    layer.width = width;
    layer.height = height;
    return layer;
}

void FillParameters(Feed& feed, ParamList& params) {
    for (int i = 1; i < params.Count(); ++i) {
        PF_ParamDef& def = params[i];
        switch (feed.Below(8)) {
            case 0: def.param_type = feed.Any<PF_ParamType>(); break;
            case 1: params.Pointer(i) = nullptr; break;
            case 2: params.SetCheckBox(i, feed.Any<A_long>()); break;
            case 3: params.SetSlider(i, feed.Any<double>()); break;
            case 4: params.SetSlider(i, feed.Setting()); break;
            default: params.SetSlider(i, 0.0); break;
        }
        if (feed.Ended()) return;
    }
}

/// Only its own rows of the output were written, and nothing of the input.
struct Frames {
    GuardedFrame output, input;
    Bytes outputBefore = output.content(), inputBefore = input.content();
    std::size_t rowBytes;
    int height;

    Frames(Feed& feed, std::size_t bytes, int rows)
        : output({bytes, rows, feed.Flag(), static_cast<std::size_t>(feed.Below(9)), 0},
                 feed.Flag() ? Place::atBack : Place::atFront, 1),
          input({bytes, rows, feed.Flag(), static_cast<std::size_t>(feed.Below(9)), 0},
                feed.Flag() ? Place::atBack : Place::atFront, 2),
          rowBytes(bytes),
          height(rows) {}

    void CheckGuards() {
        Bytes expected = outputBefore;
        for (int r = 0; r < height; ++r)
            std::memcpy(&expected[output.Offset(r)], output.row(r).data(), rowBytes);
        CheckNone(output.Difference(expected), "render");
        CheckNone(input.Difference(inputBefore), "render, input");
    }
};

void CheckOut(const PF_OutData& out) {
    PF_OutData expected = RecordingHost::UntouchedOut();
    expected.my_version = out.my_version;
    expected.num_params = out.num_params;
    expected.sequence_data = out.sequence_data;
    expected.out_flags = out.out_flags;
    std::memcpy(expected.return_msg, out.return_msg, sizeof expected.return_msg);
    CheckNone(Difference(expected, out), "command");
}

void Send(LoadedModule& module, RecordingHost& host, PF_Cmd command, PF_ParamDef** params,
          PF_LayerDef* output) {
    try {
        module.Entry()(command, host.In(), host.Out(), params, output, nullptr);
    } catch (int thrown) {
        Check(thrown == PF_Err_BAD_CALLBACK_PARAM, "something else than 516 was thrown");
    }
    CheckOut(*host.Out());
}

void Render(Feed& feed, LoadedModule& module, RecordingHost& host) {
    host.frameFormat = feed.Below(8) == 0
                           ? feed.Any<PrPixelFormat>()
                           : kFormats[static_cast<std::size_t>(feed.Below(5))].format;
    const A_long flags = feed.Any<std::uint8_t>();
    const bool formatAsked = host.personality == Personality::Premiere;
    // Whatever the host answers, no render takes more than the larger of the two.
    const int pixelBytes =
        std::max(formatAsked ? PixelBytes(host.frameFormat) : 4, flags & PF_WorldFlag_DEEP ? 8 : 4);
    const int width = feed.Below(72) - 2, height = feed.Below(7) - 1;
    Frames frames(feed, static_cast<std::size_t>(std::max(width, 0) * pixelBytes),
                  std::max(height, 0));

    ParamList params(1 + feed.Below(140));
    PF_LayerDef input = LayerOf(frames.input, width, height, flags);
    PF_LayerDef output = LayerOf(frames.output, width, height, flags);
    const int absent = feed.Any<std::uint8_t>();
    if (absent % 16 == 1) input.data = nullptr;
    if (absent % 16 == 2) output.data = nullptr;
    params.SetLayer(input);
    if (absent % 16 == 3) params.Pointer(0) = nullptr;
    host.numParams =
        feed.Below(16) == 0 ? -feed.Any<std::uint16_t>() : feed.Below(params.Count() + 1);
    FillParameters(feed, params);
    Send(module, host, PF_Cmd_RENDER, params.Pointers(), absent % 16 == 4 ? nullptr : &output);
    frames.CheckGuards();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Feed feed(data, size);
    LoadedModule& module = ModuleOf(feed.Below(static_cast<int>(std::size(kModules))));
    const auto host = std::make_unique<RecordingHost>(feed.Flag() ? Personality::Premiere
                                                                  : Personality::AfterEffects);
    host->wrong = AnyMisbehaviour(feed);
    char block[8] = {};
    void* pointer = block;
    for (int i = 0; i < 6 && !feed.Ended(); ++i) {
        const int kind = feed.Below(32);
        const PF_Cmd command = kind == 31 ? feed.Any<PF_Cmd>() : static_cast<PF_Cmd>(kind % 16);
        host->Reset();
        host->sequenceData = feed.Flag() ? &pointer : nullptr;
        if (command == PF_Cmd_RENDER)
            Render(feed, module, *host);
        else
            Send(module, *host, command, nullptr, nullptr);
    }
    return 0;
}
