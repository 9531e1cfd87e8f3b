/// RENDER and RenderLocal on subclasses that no module has: what is gathered, what is
/// passed on, what is released.

#include "effects/CAEFxLutBalance.h"
#include "host/CAEFxLut.h"
#include "ip/Ip.h"
#include "lut/CUtilLut.h"
#include "tests/host/CurveHeap.h"
#include "tests/host/Pixels.h"
#include "tests/support/Bits.h"
#include "tests/support/HostFrame.h"
#include "tests/support/RecordingHost.h"

#include <gtest/gtest.h>

#include <cstring>
#include <limits>
#include <new>
#include <stdexcept>
#include <vector>

namespace zel::test {
namespace {

/// Notes what RenderLocal is given.
struct Probe : CAEFx {
    std::vector<PrPixelFormat> formats{PrPixelFormat_ARGB_4444_8u};
    std::vector<int> formatsAsked;

    int renders = 0;
    std::vector<float> values;
    int count = -1;
    PrPixelFormat format{};
    void *dst = nullptr, *src = nullptr;
    int dstRowBytes = 0, srcRowBytes = 0, width = 0, height = 0;

    int QueryPixelFormatCount() override { return static_cast<int>(formats.size()); }
    PrPixelFormat QueryPixelFormat(int i) override {
        formatsAsked.push_back(i);
        return formats.at(static_cast<std::size_t>(i));
    }
    int RenderLocal(float* v, int n, PrPixelFormat f, void* d, int dRow, void* s, int sRow, int w,
                    int h) override {
        ++renders;
        values.assign(v, v + kAEFxMaxValues);
        count = n, format = f, dst = d, dstRowBytes = dRow, src = s, srcRowBytes = sRow;
        width = w, height = h;
        return 12345;  // reaches nobody
    }
};

class Gathering : public testing::Test {
protected:
    Probe effect;
    RecordingHost host{Personality::Premiere};
    HostFrame source{4, {6, 3}}, frame{4, {5, 2, 3, true}};
    PF_LayerDef output = frame.Layer();

    void SetUp() override { host.frameFormat = PrPixelFormat_ARGB_4444_8u; }

    PF_Err Render(ParamList& params) {
        params.SetLayer(source.Layer());
        host.numParams = params.Count();
        return effect.Main(PF_Cmd_RENDER, host.In(), host.Out(), params.Pointers(), &output,
                           nullptr);
    }
};

TEST_F(Gathering, PassesTheFrameOnAndDropsTheResult) {
    ParamList params(4);
    EXPECT_EQ(Render(params), 0);
    EXPECT_EQ(effect.renders, 1);
    EXPECT_EQ(effect.format, PrPixelFormat_ARGB_4444_8u);
    EXPECT_EQ(effect.dst, frame.Row(0));
    EXPECT_EQ(effect.dstRowBytes, -23);
    EXPECT_EQ(effect.src, source.Row(0));
    EXPECT_EQ(effect.srcRowBytes, 24);
    EXPECT_EQ(effect.width, 5);
    EXPECT_EQ(effect.height, 2);
}

TEST_F(Gathering, ThreeParametersGiveTwoValues) {
    ParamList params(3);
    params.SetSlider(1, 1.5);
    params.SetSlider(2, -2.5);
    EXPECT_EQ(Render(params), 0);  // the slot behind the list is unreadable
    EXPECT_EQ(effect.count, 3);
    std::vector<float> expected(128);
    expected[0] = 1.5f;
    expected[1] = -2.5f;
    EXPECT_EQ(effect.values, expected);
}

TEST_F(Gathering, CountIsAtMost128AndTheRestStaysZero) {
    for (const int params : {1, 2, 127, 128, 129, 130, 200, 1000}) {
        ParamList list(params);
        for (int i = 1; i < params; ++i) list.SetSlider(i, i);
        EXPECT_EQ(Render(list), 0);
        EXPECT_EQ(effect.count, std::min(params, 128)) << params;
        for (int i = 0; i < 128; ++i)
            ASSERT_EQ(effect.values[static_cast<std::size_t>(i)],
                      i + 1 < params ? static_cast<float>(i + 1) : 0.0f)
                << params << " parameters, element " << i;
    }
}

TEST_F(Gathering, NoParameterAtAll) {
    ParamList params(1);
    params.SetLayer(source.Layer());
    for (const int count : {0, -1, std::numeric_limits<int>::min()}) {
        host.numParams = count;
        EXPECT_EQ(
            effect.Main(PF_Cmd_RENDER, host.In(), host.Out(), params.Pointers(), &output, nullptr),
            0);
        EXPECT_EQ(effect.count, count);
        EXPECT_EQ(effect.values, std::vector<float>(128));
    }
}

TEST_F(Gathering, ValueOfEachType) {
    ParamList params(14);
    const double third = 1.0 / 3.0;
    params.SetCheckBox(1, 1);
    params.SetCheckBox(2, 0);
    params.SetCheckBox(3, 7);
    params.SetCheckBox(4, -1);
    params.SetCheckBox(5, 16777217);  // not a float: rounded
    params.SetSlider(6, third);
    params.SetSlider(7, -100.0);
    params.SetSlider(8, 1e300);
    params.Pointer(9) = nullptr;
    for (const int i : {10, 11, 12, 13}) params.SetSlider(i, 55.0);
    params[10].param_type = PF_Param_GROUP_START;
    params[11].param_type = PF_Param_GROUP_END;
    params[12].param_type = 1;  // a slider of the fixed-point kind
    params[13].param_type = PF_Param_LAYER;
    EXPECT_EQ(Render(params), 0);
    const float expected[] = {1,        0,
                              7,        -1,
                              16777216, static_cast<float>(third),
                              -100,     std::numeric_limits<float>::infinity(),
                              0,        0,
                              0,        0,
                              0};
    for (std::size_t i = 0; i < std::size(expected); ++i)
        EXPECT_EQ(Bits{effect.values[i]}, Bits{expected[i]}) << "parameter " << i + 1;
}

TEST_F(Gathering, FormatIsLookedUpInOrderUntilFound) {
    effect.formats = {PrPixelFormat_BGRA_4444_8u, PrPixelFormat_ARGB_4444_8u,
                      PrPixelFormat_VUYA_4444_8u};
    ParamList params(2);
    EXPECT_EQ(Render(params), 0);
    EXPECT_EQ(effect.formatsAsked, (std::vector{0, 1}));

    host.frameFormat = PrPixelFormat_ARGB_4444_16u;
    effect.formatsAsked.clear();
    EXPECT_EQ(Render(params), 514);
    EXPECT_EQ(effect.formatsAsked, (std::vector{0, 1, 2}));
    EXPECT_EQ(effect.renders, 1);
}

TEST_F(Gathering, AnEffectThatListsNoFormatRendersNothing) {
    effect.formats.clear();
    ParamList params(2);
    EXPECT_EQ(Render(params), 514);
    EXPECT_EQ(effect.renders, 0);
}

TEST(GatheringInAfterEffects, DepthComesFromTheOutputsLowestFlag) {
    const struct {
        PF_WorldFlags input, output;
        PrPixelFormat format;
    } cases[] = {
        {1, 0, PrPixelFormat_ARGB_4444_8u},
        {0, 1, PrPixelFormat_ARGB_4444_16u},
        {0, 2, PrPixelFormat_ARGB_4444_8u},
        {0, 3, PrPixelFormat_ARGB_4444_16u},
        {0, static_cast<PF_WorldFlags>(0xFF000000), PrPixelFormat_ARGB_4444_8u},
    };
    for (const auto& c : cases) {
        Probe effect;
        effect.formats.push_back(PrPixelFormat_ARGB_4444_16u);
        RecordingHost host(Personality::AfterEffects);
        HostFrame frame(8, {2, 2});
        PF_LayerDef output = frame.Layer(c.output);
        ParamList params(1);
        params.SetLayer(frame.Layer(c.input));
        EXPECT_EQ(
            effect.Main(PF_Cmd_RENDER, host.In(), host.Out(), params.Pointers(), &output, nullptr),
            516);
        EXPECT_EQ(effect.format, c.format) << std::hex << c.output;
    }
}

// An effect that does not list what After Effects hands over is refused, and 514 counts
// for more than the acquire's 516.
TEST(GatheringInAfterEffects, UnlistedDepthGives514) {
    Probe effect;
    RecordingHost host(Personality::AfterEffects);
    HostFrame frame(8, {2, 2});
    PF_LayerDef output = frame.Layer(PF_WorldFlag_DEEP);
    ParamList params(1);
    params.SetLayer(frame.Layer());
    EXPECT_EQ(
        effect.Main(PF_Cmd_RENDER, host.In(), host.Out(), params.Pointers(), &output, nullptr),
        514);
    EXPECT_EQ(effect.renders, 0);
}

// --- RenderLocal and ApplyLut --------------------------------------------------------------

class LocalRender : public testing::Test {
protected:
    void SetUp() override { IpInitialize(); }
    float values[kAEFxMaxValues] = {};
};

template <class Effect>
int RenderInto(Effect& effect, float* values, const FrameFormat& format, HostFrame& source,
               HostFrame& frame) {
    const PF_LayerDef from = source.Layer(), to = frame.Layer();
    return effect.RenderLocal(values, 3, format.code, to.data, to.rowbytes, from.data,
                              from.rowbytes, to.width, to.height);
}

TEST_F(LocalRender, BaseIsTheIdentityInEveryFormat) {
    CAEFxLut effect;
    for (const FrameFormat& format : kFrameFormats) {
        HostFrame source(format.PixelBytes(), {256, 256}), frame = source, expected = source;
        FillWithSamples(format, source);
        Map(format, IdentityCurve(), source, expected);
        EXPECT_EQ(RenderInto(effect, values, format, source, frame), 0);
        EXPECT_TRUE(Same(format, expected, frame));
    }
}

/// Notes what it is given, and shapes the curve by hand.
struct Shaper : CAEFxLut {
    CUtilLut* lut = nullptr;
    float* values = nullptr;
    bool identity = false;
    int live = 0;
    void BuildLut(CUtilLut* given, float* v) override {
        lut = given, values = v, live = LiveCurves();
        identity = true;
        for (int i = 0; i < 3072; ++i)
            identity = identity && given->m_pLut[i] == static_cast<float>(i % 1024);
        for (int i = 0; i < 1024; ++i) {  // red inverted, green halved, blue fixed
            given->m_pLut[i] = static_cast<float>(1023 - i);
            given->m_pLut[1024 + i] = static_cast<float>(i) * 0.5f;
            given->m_pLut[2048 + i] = 700.75f;
        }
    }
};

TEST_F(LocalRender, ChannelsReachTheirColoursInEveryFormat) {
    Curve curve;
    for (std::size_t i = 0; i < 1024; ++i) {
        curve[0][i] = static_cast<float>(1023 - static_cast<int>(i));
        curve[1][i] = static_cast<float>(i) * 0.5f;
        curve[2][i] = 700.75f;
    }
    for (const FrameFormat& format : kFrameFormats) {
        Shaper effect;
        HostFrame source(format.PixelBytes(), {256, 256}), frame = source, expected = source;
        FillWithSamples(format, source);
        Map(format, curve, source, expected);
        EXPECT_EQ(RenderInto(effect, values, format, source, frame), 0);
        EXPECT_TRUE(Same(format, expected, frame));
        EXPECT_TRUE(effect.identity) << "the curve given was no fresh identity";
        EXPECT_EQ(effect.values, values);
        EXPECT_EQ(effect.live, 1);
        EXPECT_EQ(LiveCurves(), 0) << "the curve outlived the render";
    }
}

TEST_F(LocalRender, CurveIsReleasedWhenBuildLutThrows) {
    struct Thrower : Shaper {
        void BuildLut(CUtilLut* given, float* v) override {
            Shaper::BuildLut(given, v);
            throw std::runtime_error("no curve today");
        }
    } effect;
    HostFrame source(4, {4, 4}), frame = source;
    const std::vector<std::uint8_t> before = frame.memory;
    EXPECT_THROW(RenderInto(effect, values, kFrameFormats[0], source, frame), std::runtime_error);
    EXPECT_EQ(effect.live, 1);
    EXPECT_EQ(LiveCurves(), 0);
    EXPECT_EQ(frame.memory, before);
}

TEST_F(LocalRender, CurveIsReleasedWhenApplyLutThrows) {
    struct Thrower : Shaper {
        int ApplyLut(CUtilLut*, PrPixelFormat, void*, int, void*, int, int, int) override {
            throw std::runtime_error("no frame today");
        }
    } effect;
    HostFrame source(4, {4, 4}), frame = source;
    EXPECT_THROW(RenderInto(effect, values, kFrameFormats[0], source, frame), std::runtime_error);
    EXPECT_EQ(effect.live, 1);
    EXPECT_EQ(LiveCurves(), 0);
}

TEST_F(LocalRender, FailedAllocationLeavesThroughMain) {
    const NoMemoryForCurves none;
    CAEFxLutBalance effect;
    RecordingHost host(Personality::Premiere);
    HostFrame source(4, {4, 4}), frame = source;
    const std::vector<std::uint8_t> before = frame.memory;
    PF_LayerDef output = frame.Layer();
    ParamList params(26);
    params.SetLayer(source.Layer());
    host.numParams = 26;
    EXPECT_THROW(
        effect.Main(PF_Cmd_RENDER, host.In(), host.Out(), params.Pointers(), &output, nullptr),
        std::bad_alloc);
    EXPECT_EQ(frame.memory, before);
    EXPECT_EQ(host.calls.back(), "ReleaseSuite PF Pixel Format Suite 1");
}

TEST_F(LocalRender, ResultOfApplyLutIsDropped) {
    struct Loud : CAEFxLut {
        int ApplyLut(CUtilLut*, PrPixelFormat, void*, int, void*, int, int, int) override {
            return 4711;
        }
    } effect;
    HostFrame source(4, {4, 4}), frame = source;
    EXPECT_EQ(RenderInto(effect, values, kFrameFormats[0], source, frame), 0);
}

TEST_F(LocalRender, FormatsOutsideTheMapAreCopiedThrough) {
    struct Video : CAEFxLut {
        int QueryPixelFormatCount() override { return 1; }
        PrPixelFormat QueryPixelFormat(int) override { return PrPixelFormat_VUYA_4444_8u; }
        void BuildLut(CUtilLut* lut, float*) override { std::memset(lut->m_pLut, 0, 12288); }
    } effect;
    RecordingHost host(Personality::Premiere);
    host.frameFormat = PrPixelFormat_VUYA_4444_8u;
    HostFrame source(4, {31, 5}), frame(4, {31, 5}), expected(4, {31, 5});
    FillWithSamples(kFrameFormats[0], source);
    FillWithSamples(kFrameFormats[0], expected);
    PF_LayerDef output = frame.Layer();
    ParamList params(2);
    params.SetLayer(source.Layer());
    host.numParams = 2;
    EXPECT_EQ(
        effect.Main(PF_Cmd_RENDER, host.In(), host.Out(), params.Pointers(), &output, nullptr), 0);
    EXPECT_TRUE(Same(kFrameFormats[0], expected, frame));
}

TEST_F(LocalRender, ApplyLutReturns0) {
    CAEFxLut effect;
    CUtilLut lut;
    lut.Open();
    lut.Reset();
    HostFrame source(16, {2, 2}), frame = source;
    for (const PrPixelFormat format :
         {PrPixelFormat_BGRA_4444_8u, PrPixelFormat_BGRA_4444_32f, PrPixelFormat_VUYA_4444_8u}) {
        const PF_LayerDef from = source.Layer(), to = frame.Layer();
        EXPECT_EQ(
            effect.ApplyLut(&lut, format, to.data, to.rowbytes, from.data, from.rowbytes, 2, 2), 0);
    }
}

TEST(FormatMap, Rows) {
    const struct {
        std::uint32_t format;
        IpFrameLutFn* routine;
        bool wide;
    } rows[] = {
        {0x61726762, IpFrame_Lut_BGRA8, false}, {0x62677261, IpFrame_Lut_ARGB8, false},
        {0x61726742, IpFrame_Lut_BGRA16, true}, {0x61724742, IpFrame_Lut_BGRAFloat, true},
        {0x62677241, IpFrame_Lut_ARGB16, true},
    };
    for (std::size_t i = 0; i < std::size(rows); ++i) {
        EXPECT_EQ(AEFxLutFormatMap[i].format, rows[i].format) << i;
        EXPECT_EQ(AEFxLutFormatMap[i].routine, rows[i].routine) << i;
        EXPECT_EQ((AEFxLutFormatMap[i].wideTables & 0xFF) != 0, rows[i].wide) << i;
    }
}

}  // namespace
}  // namespace zel::test
