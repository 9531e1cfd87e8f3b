/// RENDER through the loaded modules: which pixels come out, and what the host is told.

#include "tests/host/GradedModule.h"

#include <random>
#include <thread>

namespace zel::test {
namespace {

constexpr unsigned kSeed = 20240611;

class ModuleRender : public GradedModule {
protected:
    /// Renders a frame of `format` and returns it.
    HostFrame RenderFrame(const FrameFormat& format, HostFrame& source, HostFrame::Shape shape) {
        HostFrame frame(format.PixelBytes(), shape);
        params.SetLayer(source.Layer(FlagsFor(format)));
        PF_LayerDef output = frame.Layer(FlagsFor(format));
        host.frameFormat = format.code;
        host.Reset();
        EXPECT_EQ(Render(params, &output), premiere ? 0 : 516) << format.name;
        return frame;
    }

    /// Renders with the present parameters and compares every byte.
    void ExpectCurve(const FrameFormat& format, const Curve& curve, HostFrame::Shape from,
                     HostFrame::Shape to) {
        HostFrame source(format.PixelBytes(), from);
        FillWithSamples(format, source);
        const std::vector<std::uint8_t> before = source.memory;
        HostFrame expected(format.PixelBytes(), to);
        Map(format, curve, source, expected);
        HostFrame got = RenderFrame(format, source, to);
        EXPECT_TRUE(Same(format, expected, got));
        EXPECT_EQ(source.memory, before) << format.name << ": the input frame was written";
    }
};

constexpr HostFrame::Shape kWholeDomain{256, 256};

TEST_P(ModuleRender, DefaultsOverEverySampleValue) {
    const Curve curve = EngineCurve();
    for (const FrameFormat& format : FormatsOf(premiere))
        ExpectCurve(format, curve, kWholeDomain, kWholeDomain);
}

TEST_P(ModuleRender, RandomGradesOverEverySampleValue) {
    std::mt19937 random(kSeed);
    for (int run = 0; run < 8; ++run) {
        Grade(random);
        SCOPED_TRACE("seed " + std::to_string(kSeed) + ", run " + std::to_string(run));
        const Curve curve = EngineCurve();
        for (const FrameFormat& format : FormatsOf(premiere))
            ExpectCurve(format, curve, kWholeDomain, kWholeDomain);
    }
}

TEST_P(ModuleRender, PaddedRowsAndRowsThatRunUpwards) {
    std::mt19937 random(kSeed);
    Grade(random);
    const Curve curve = EngineCurve();
    for (const FrameFormat& format : FormatsOf(premiere))
        for (const int padding : {0, 1, 3, 48})  // 1 and 3 misalign every other row
            for (const bool up : {false, true})
                for (const bool sourceUp : {false, true}) {
                    SCOPED_TRACE(std::string(format.name) + " padding " + std::to_string(padding) +
                                 (up ? " output upwards" : "") +
                                 (sourceUp ? " input upwards" : ""));
                    ExpectCurve(format, curve, {21, 7, 2 * padding, sourceUp},
                                {21, 7, padding, up});
                }
}

TEST_P(ModuleRender, FramesWithoutPixelsAreLeftAlone) {
    const Curve curve = EngineCurve();
    for (const FrameFormat& format : FormatsOf(premiere))
        for (const HostFrame::Shape shape :
             {HostFrame::Shape{0, 5, 16}, HostFrame::Shape{5, 0, 16}})
            ExpectCurve(format, curve, {5, 5}, shape);
}

TEST_P(ModuleRender, ExtentIsTheOutputs) {
    const Curve curve = EngineCurve();
    for (const FrameFormat& format : FormatsOf(premiere))
        ExpectCurve(format, curve, {40, 30, 8}, {17, 11, 4});
}

TEST_P(ModuleRender, InPlace) {
    for (const FrameFormat& format : FormatsOf(premiere)) {
        HostFrame frame(format.PixelBytes(), {64, 64}), source = frame;
        FillWithSamples(format, source);
        HostFrame expected = source;
        Map(format, EngineCurve(), source, expected);
        HostFrame both = source;
        params.SetLayer(both.Layer(FlagsFor(format)));
        PF_LayerDef output = both.Layer(FlagsFor(format));
        host.frameFormat = format.code;
        EXPECT_EQ(Render(params, &output), premiere ? 0 : 516);
        EXPECT_TRUE(Same(format, expected, both));
    }
}

TEST_P(ModuleRender, ForceRenderChangesNoPixel) {
    std::mt19937 random(kSeed);
    Grade(random);
    const int forceRender = params.Count() - 1;
    for (const FrameFormat& format : FormatsOf(premiere)) {
        HostFrame source(format.PixelBytes(), kWholeDomain);
        FillWithSamples(format, source);
        params.SetCheckBox(forceRender, 0);
        HostFrame off = RenderFrame(format, source, kWholeDomain);
        params.SetCheckBox(forceRender, 1);
        HostFrame on = RenderFrame(format, source, kWholeDomain);
        EXPECT_TRUE(Same(format, off, on));
    }
}

// --- one pixel, typed in ------------------------------------------------------------

// docs/quirks.md, "float alpha".
TEST_P(ModuleRender, FloatAlphaTakesTheRedCode) {
    if (!premiere) return;  // float frames come from Premiere only
    const FrameFormat& format = kFrameFormats[3];
    const float source[4] = {0.1f, 0.2f, 0.8f, 0.3f};  // blue, green, red, alpha
    HostFrame in(16, {1, 1});
    std::memcpy(in.Row(0), source, sizeof source);
    HostFrame frame = RenderFrame(format, in, {1, 1});
    float got[4];
    std::memcpy(got, frame.Row(0), sizeof got);
    EXPECT_EQ(got[3], 818.0f * (1.0f / 1023.0f));
}

TEST_P(ModuleRender, SixteenBitAlphaLosesItsSixLowBits) {
    const struct {
        std::uint16_t in, out;
    } cases[] = {{0xFFFF, 0xFFC0}, {0x8000, 0x8000}, {0x003F, 0x0000}, {0x1234, 0x1200}};
    const FrameFormat& format = kFrameFormats[4];
    for (const auto& c : cases) {
        HostFrame in(8, {1, 1});
        const std::uint16_t source[4] = {c.in, 0, 0, 0};  // alpha first
        std::memcpy(in.Row(0), source, sizeof source);
        HostFrame frame = RenderFrame(format, in, {1, 1});
        std::uint16_t got[4];
        std::memcpy(got, frame.Row(0), sizeof got);
        EXPECT_EQ(got[0], c.out) << std::hex << c.in;
    }
}

TEST_P(ModuleRender, EightBitAlphaPasses) {
    const FrameFormat& format = kFrameFormats[1];
    HostFrame in(4, {256, 1});
    for (int x = 0; x < 256; ++x) in.Row(0)[4 * x] = static_cast<std::uint8_t>(x);
    HostFrame frame = RenderFrame(format, in, {256, 1});
    for (int x = 0; x < 256; ++x) EXPECT_EQ(frame.Row(0)[4 * x], x);
}

// --- what the host is told ------------------------------------------------------------

class ModuleRenderOutcome : public ModuleRender {
protected:
    HostFrame source{8, {4, 4}}, frame{8, {4, 4}};
    const std::vector<std::uint8_t> untouched = frame.memory;
    PF_LayerDef output = frame.Layer();

    void SetUp() override {
        FillWithSamples(kFrameFormats[4], source);
        params.SetLayer(source.Layer());
    }
    PF_Err Result() { return Render(params, &output); }
};

TEST_P(ModuleRenderOutcome, CallsAndRecord) {
    host.frameFormat = PrPixelFormat_ARGB_4444_16u;
    PF_OutData expected = RecordingHost::UntouchedOut();
    if (premiere) {
        EXPECT_EQ(Result(), PF_Err_NONE);
        EXPECT_EQ(host.calls, (Calls{kAcquire, "GetPixelFormat", kRelease}));
        EXPECT_EQ(host.worldsAsked, std::vector{&output});
    } else {
        // docs/quirks.md, "516 after a good render".
        EXPECT_EQ(Result(), 516);
        EXPECT_EQ(host.calls, (Calls{kAcquire, kMessage}));
        ExpectAcquireMessage(expected);
    }
    EXPECT_TRUE(Same(expected, *host.Out()));
    EXPECT_NE(frame.memory, untouched);
}

TEST_P(ModuleRenderOutcome, MissingBasicSuiteIsTakenForAfterEffects) {
    host.wrong.noBasicSuite = true;
    EXPECT_EQ(Result(), 516);
    EXPECT_EQ(host.calls, Calls{kMessage});
    EXPECT_NE(frame.memory, untouched);
}

TEST_P(ModuleRenderOutcome, SuitePointerLeftNullIsTakenForAfterEffects) {
    host.wrong.suiteStaysNull = true;
    EXPECT_EQ(Result(), 516);
    EXPECT_EQ(host.calls, (Calls{kAcquire, kMessage}));
    EXPECT_NE(frame.memory, untouched);
}

TEST_P(ModuleRenderOutcome, FailuresOfTheSuiteAndItsReleaseAreIgnored) {
    host.frameFormat = PrPixelFormat_ARGB_4444_16u;
    host.wrong = {.acquireResult = 9, .releaseResult = 9, .formatResult = 512};
    EXPECT_EQ(Result(), premiere ? 0 : 516);
    EXPECT_NE(frame.memory, untouched);
}

TEST_P(ModuleRenderOutcome, FormatsOutsideTheListGive514AndNoPixel) {
    if (!premiere) return;
    for (const PrPixelFormat format :
         {PrPixelFormat_VUYA_4444_8u, PrPixelFormat_ARGB_4444_32f, PrPixelFormat_BGRX_4444_8u,
          PrPixelFormat_V210_422_10u_601, PrPixelFormat_UYVY_422_8u_601, PrPixelFormat_Invalid,
          PrPixelFormat_Any, static_cast<PrPixelFormat>(0x61726763)}) {
        host.Reset();
        host.frameFormat = format;
        EXPECT_EQ(Result(), 514) << FormatText(format);
        EXPECT_EQ(frame.memory, untouched) << FormatText(format);
        EXPECT_EQ(host.calls, (Calls{kAcquire, "GetPixelFormat", kRelease}));
        EXPECT_TRUE(Same(RecordingHost::UntouchedOut(), *host.Out()));
    }
}

TEST_P(ModuleRenderOutcome, FormatThatTheHostLeavesAloneIsNone) {
    if (!premiere) return;
    host.wrong = {.formatResult = 512, .formatLeftAlone = true};
    EXPECT_EQ(Result(), 514);
    EXPECT_EQ(frame.memory, untouched);
}

TEST_P(ModuleRenderOutcome, AbsentFramesBeforeAnySuiteIsAcquired) {
    const auto expect = [&](PF_Err result, const char* name, auto spoil) {
        params.Pointer(0) = &params[0];
        params.SetLayer(source.Layer());
        output = frame.Layer();
        PF_LayerDef* world = &output;
        spoil(world);
        host.Reset();
        EXPECT_EQ(Render(params, world), result) << name;
        EXPECT_EQ(host.calls, Calls{}) << name;
        EXPECT_TRUE(Same(RecordingHost::UntouchedOut(), *host.Out())) << name;
        EXPECT_EQ(frame.memory, untouched) << name;
    };
    using World = PF_LayerDef*&;
    expect(0, "no output", [&](World world) { world = nullptr; });
    expect(0, "no input layer", [&](World) { params.Pointer(0) = nullptr; });
    expect(0, "input without pixels", [&](World) { params[0].u.ld.data = nullptr; });
    expect(514, "output without pixels", [&](World) { output.data = nullptr; });
    expect(0, "neither has pixels", [&](World) { output.data = params[0].u.ld.data = nullptr; });
}

TEST_P(ModuleRenderOutcome, TwoHundredParameters) {
    std::mt19937 random(kSeed);
    Grade(random);
    host.frameFormat = PrPixelFormat_ARGB_4444_16u;
    Result();
    const std::vector<std::uint8_t> plain = frame.memory;

    ParamList many(200);
    for (int i = 0; i < 200; ++i)
        if (i < params.Count())
            many[i] = params[i];
        else
            many.SetSlider(i, 1e9);
    frame.memory = untouched;
    output = frame.Layer();
    EXPECT_EQ(Render(many, &output), premiere ? 0 : 516);
    EXPECT_EQ(frame.memory, plain);
}

/// Renders on several threads at a time, each with a host of its own.
TEST_P(ModuleRenderOutcome, ThreadsRenderIndependently) {
    const FrameFormat& format = kFrameFormats[4];
    const Curve curve = EngineCurve();
    bool good[4] = {};
    const auto work = [&](int id) {
        RecordingHost own(host.personality);
        own.frameFormat = format.code;
        ParamList list(params.Count());
        for (int i = 1; i < params.Count(); ++i) list[i] = params[i];
        own.numParams = list.Count();
        bool same = true;
        for (int run = 0; run < 20; ++run) {
            HostFrame in(8, {33, 9 + id}), out(8, {33, 9 + id}), expected = out;
            FillWithSamples(format, in);
            Map(format, curve, in, expected);
            list.SetLayer(in.Layer());
            PF_LayerDef world = out.Layer(PF_WorldFlag_DEEP);
            module.Entry()(PF_Cmd_RENDER, own.In(), own.Out(), list.Pointers(), &world, nullptr);
            same = same && expected.memory == out.memory;
        }
        good[id] = same;
    };
    std::vector<std::thread> threads;
    for (int id = 0; id < 4; ++id) threads.emplace_back(work, id);
    for (std::thread& thread : threads) thread.join();
    for (int id = 0; id < 4; ++id) EXPECT_TRUE(good[id]) << "thread " << id;
}

INSTANTIATE_TEST_SUITE_P(Modules, ModuleRender, EachModuleInEachHost(), NameOf);
INSTANTIATE_TEST_SUITE_P(Modules, ModuleRenderOutcome, EachModuleInEachHost(), NameOf);

}  // namespace
}  // namespace zel::test
