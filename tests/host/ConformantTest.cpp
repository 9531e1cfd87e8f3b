/// The modules for present-day hosts: each difference from the others, and that there is
/// no other.

#include "abi/PluginData.h"
#include "tests/host/GradedModule.h"
#include "tests/support/Thrown.h"

#include <cmath>

namespace zel::test {
namespace {

constexpr unsigned kSeed = 20261121;

class Conformant : public GradedModule {
protected:
    HostFrame source{8, {256, 256}}, frame{8, {256, 256}};

    PF_Err RenderDeep() {
        params.SetLayer(source.Layer(PF_WorldFlag_DEEP));
        PF_LayerDef output = frame.Layer(PF_WorldFlag_DEEP);
        host.frameFormat = PrPixelFormat_ARGB_4444_16u;
        return Render(params, &output);
    }
};

// --- what the host is told ------------------------------------------------------------

TEST_P(Conformant, GlobalSetupReportsTheSameWithoutAMessage) {
    EXPECT_EQ(Send(PF_Cmd_GLOBAL_SETUP), PF_Err_NONE);
    PF_OutData expected = RecordingHost::UntouchedOut();
    expected.my_version = 0x200001;
    expected.out_flags = premiere ? 0x8400 : 0x2000400;
    EXPECT_TRUE(Same(expected, *host.Out()));
    if (premiere) return;
    EXPECT_EQ(host.calls, Calls{kAcquire});
}

TEST_P(Conformant, CountOfParametersIsWhatWasAddedAndTheLayer) {
    EXPECT_EQ(Send(PF_Cmd_PARAMS_SETUP), PF_Err_NONE);
    PF_OutData expected = RecordingHost::UntouchedOut();
    expected.num_params = static_cast<A_long>(row.controls().size()) + 1;
    EXPECT_TRUE(Same(expected, *host.Out()));
    EXPECT_EQ(host.added.size(), row.controls().size());
}

TEST_P(Conformant, RenderReturns0WithoutAMessage) {
    const std::vector<std::uint8_t> untouched = frame.memory;
    FillWithSamples(kFrameFormats[4], source);
    EXPECT_EQ(RenderDeep(), PF_Err_NONE);
    EXPECT_EQ(host.calls,
              premiere ? (Calls{kAcquire, "GetPixelFormat", kRelease}) : Calls{kAcquire});
    EXPECT_TRUE(Same(RecordingHost::UntouchedOut(), *host.Out()));
    EXPECT_NE(frame.memory, untouched);
}

TEST_P(Conformant, RenderWithoutABasicSuiteReturns0WithoutAMessage) {
    host.wrong.noBasicSuite = true;
    EXPECT_EQ(RenderDeep(), PF_Err_NONE);
    EXPECT_EQ(host.calls, Calls{});
    EXPECT_TRUE(Same(RecordingHost::UntouchedOut(), *host.Out()));
}

TEST_P(Conformant, WhatCannotBeRenderedIsStill514) {
    PF_LayerDef output = frame.Layer();
    params.SetLayer(source.Layer());
    output.data = nullptr;
    EXPECT_EQ(Render(params, &output), 514);
    if (!premiere) return;
    output = frame.Layer();
    host.frameFormat = PrPixelFormat_VUYA_4444_8u;
    EXPECT_EQ(Render(params, &output), 514);
}

TEST_P(Conformant, MissingBasicSuiteIsReturnedNotThrown) {
    host.wrong.noBasicSuite = true;
    for (const PF_Cmd command : {PF_Cmd_GLOBAL_SETUP, PF_Cmd_GLOBAL_SETDOWN}) {
        PF_Err result = 0;
        EXPECT_EQ(ThrownBy([&] { result = Send(command); }), std::nullopt) << command;
        EXPECT_EQ(result, 516) << command;
    }
}

TEST(ConformantEntry, WhateverARenderThrowsIsReturnedAs516) {
    for (const char* const path : {ZEL_THROWS_INT, ZEL_THROWS_IN_SETUP}) {
        const LoadedModule module(path);
        RecordingHost host(Personality::Premiere);
        HostFrame frame(4, {4, 4});
        PF_LayerDef output = frame.Layer();
        ParamList params(1);
        params.SetLayer(frame.Layer());
        const PF_Cmd command =
            path == std::string(ZEL_THROWS_INT) ? PF_Cmd_RENDER : PF_Cmd_GLOBAL_SETUP;
        EXPECT_EQ(
            module.Entry()(command, host.In(), host.Out(), params.Pointers(), &output, nullptr),
            516)
            << path;
    }
}

// --- pixels ---------------------------------------------------------------------------

/// What a 16-bit sample becomes: white is 32768, and a sample stands for the nearest code.
std::uint16_t Mapped(const std::array<float, 1024>& curve, std::uint16_t sample) {
    const double in = std::min<int>(sample, 32768) * 1023.0 / 32768.0;
    const float entry = curve[static_cast<std::size_t>(std::floor(in + 0.5))];
    const double code = std::isnan(entry) ? 0.0 : std::trunc(double{entry});
    return static_cast<std::uint16_t>(std::floor(code * 32768.0 / 1023.0 + 0.5));
}

void MapDeep(const FrameFormat& format, const Curve& curve, HostFrame& from, HostFrame& to) {
    const Curve identity = IdentityCurve();
    const std::array<float, 1024>* tables[4];
    tables[format.red] = &curve[0];
    tables[format.green] = &curve[1];
    tables[format.blue] = &curve[2];
    tables[format.alpha] = &identity[0];
    for (int y = 0; y < to.Height(); ++y)
        for (int e = 0; e < 4 * to.Width(); ++e) {
            std::uint16_t sample;
            std::memcpy(&sample, from.Row(y) + 2 * e, 2);
            sample = Mapped(*tables[e % 4], sample);
            std::memcpy(to.Row(y) + 2 * e, &sample, 2);
        }
}

TEST_P(Conformant, RandomGradesOverEverySampleValue) {
    std::mt19937 random(kSeed);
    for (int run = 0; run < 6; ++run) {
        if (run > 0) Grade(random);
        const Curve curve = EngineCurve();
        for (const FrameFormat& format : FormatsOf(premiere)) {
            SCOPED_TRACE("seed " + std::to_string(kSeed) + ", run " + std::to_string(run));
            HostFrame in(format.PixelBytes(), {256, 256}), got = in, expected = in;
            FillWithSamples(format, in);
            format.channelBytes == 2 ? MapDeep(format, curve, in, expected)
                                     : Map(format, curve, in, expected);
            params.SetLayer(in.Layer(FlagsFor(format)));
            PF_LayerDef output = got.Layer(FlagsFor(format));
            host.frameFormat = format.code;
            EXPECT_EQ(Render(params, &output), PF_Err_NONE);
            EXPECT_TRUE(Same(format, expected, got));
        }
    }
}

TEST_P(Conformant, AlphaOfTheHostsScale) {
    const struct {
        std::uint16_t in, out;
    } cases[] = {{0, 0},         {15, 0},        {17, 32},       {32, 32},
                 {16384, 16400}, {32767, 32768}, {32768, 32768}, {65535, 32768}};
    source = HostFrame(8, {1, 1}), frame = source;
    for (const auto& c : cases) {
        const std::uint16_t argb[4] = {c.in, 0, 0, 0};
        std::memcpy(source.Row(0), argb, sizeof argb);
        EXPECT_EQ(RenderDeep(), PF_Err_NONE);
        std::uint16_t got[4];
        std::memcpy(got, frame.Row(0), sizeof got);
        EXPECT_EQ(got[0], c.out) << c.in;
    }
}

// --- what the module says of itself ---------------------------------------------------

struct Told {
    int calls = 0;
    std::string name, matchName, category, entryPoint, url;
    A_long kind = 0, major = -1, minor = -1, reserved = -1;
};

A_long Note(void* host, const A_u_char* name, const A_u_char* matchName, const A_u_char* category,
            const A_u_char* entryPoint, A_long kind, A_long major, A_long minor, A_long reserved,
            const A_u_char* url) {
    const auto text = [](const A_u_char* t) { return reinterpret_cast<const char*>(t); };
    auto& told = *static_cast<Told*>(host);
    told = {told.calls + 1, text(name), text(matchName), text(category), text(entryPoint),
            text(url),      kind,       major,           minor,          reserved};
    return 77;
}

const char* MenuName(const std::string& target) {
    if (target == "zel_color_balance") return "ZEL Color Balance";
    if (target == "zel_brightness_contrast_pivot") return "ZEL Brightness/Contrast/Pivot";
    if (target == "zel_gamma_gain_offset") return "ZEL Gamma/Gain/Offset";
    return "ZEL Log/Linear Conversion";
}

TEST_P(Conformant, SaysWhatItIs) {
    auto* const entry =
        reinterpret_cast<abi::PluginDataEntry*>(module.Find("PluginDataEntryFunction2"));
    ASSERT_NE(entry, nullptr);
    Told told;
    EXPECT_EQ(entry(&told, Note, nullptr, "a host", "1.0"), 77) << "the callback's own result";
    EXPECT_EQ(told.calls, 1);
    EXPECT_EQ(told.name, MenuName(row.target));
    EXPECT_EQ(told.matchName, "zelfx." + std::string(row.target).substr(4));
    EXPECT_EQ(told.category, "ZEL");
    EXPECT_EQ(told.entryPoint, "main");
    EXPECT_EQ(told.kind, 0x65464B54);  // 'eFKT'
    EXPECT_EQ(told.major, 13);
    EXPECT_EQ(told.minor, 0);
    EXPECT_EQ(told.reserved, 8);
    EXPECT_EQ(told.url, "");
}

INSTANTIATE_TEST_SUITE_P(Modules, Conformant, EachModuleInEachHost(), NameOf);

}  // namespace
}  // namespace zel::test
