/// The classes' defaults, the dispatch of commands, and the order of the virtual
/// functions, on subclasses that no module has.

#include "effects/CAEFxLutBalance.h"
#include "host/CAEFx.h"
#include "host/CAEFxLut.h"
#include "lut/CUtilLut.h"
#include "tests/support/RecordingHost.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <iterator>
#include <new>
#include <string>

namespace zel::test {
namespace {

/// Notes which function a call through the base class reached.
struct Recorder : CAEFxLut {
    const char* called = "";
    PF_Err Note(const char* name, PF_Err result) { return called = name, result; }

    using In = PF_InData*;
    using Out = PF_OutData*;
    using Params = PF_ParamDef**;
    using World = PF_LayerDef*;

    // clang-format off
    PF_Err About          (In, Out, Params, World, void*) override { return Note("About", 1001); }
    PF_Err GlobalSetup    (In, Out, Params, World, void*) override { return Note("GlobalSetup", 1002); }
    PF_Err GlobalSetdown  (In, Out, Params, World, void*) override { return Note("GlobalSetdown", 1003); }
    PF_Err ParamsSetup    (In, Out, Params, World, void*) override { return Note("ParamsSetup", 1004); }
    PF_Err SequenceSetup  (In, Out, Params, World, void*) override { return Note("SequenceSetup", 1005); }
    PF_Err SequenceSetdown(In, Out, Params, World, void*) override { return Note("SequenceSetdown", 1006); }
    PF_Err SequenceResetup(In, Out, Params, World, void*) override { return Note("SequenceResetup", 1007); }
    PF_Err Render         (In, Out, Params, World, void*) override { return Note("Render", 1008); }
    // clang-format on
};

TEST(Dispatch, EachCommandReachesItsHandlerAndReturnsItsResult) {
    const struct {
        int command;
        const char* handler;
        PF_Err result;
    } cases[] = {
        {0, "About", 1001},           {1, "GlobalSetup", 1002},   {3, "GlobalSetdown", 1003},
        {4, "ParamsSetup", 1004},     {5, "SequenceSetup", 1005}, {8, "SequenceSetdown", 1006},
        {6, "SequenceResetup", 1007}, {11, "Render", 1008},
    };
    Recorder effect;
    for (const auto& c : cases) {
        effect.called = "";
        EXPECT_EQ(effect.Main(c.command, nullptr, nullptr, nullptr, nullptr, nullptr), c.result);
        EXPECT_STREQ(effect.called, c.handler) << "command " << c.command;
    }
}

TEST(Dispatch, EveryOtherCommandReachesNoneAndReturns0) {
    Recorder effect;
    for (int command = -300; command < 300; ++command) {
        if ((command >= 0 && command <= 6) || command == 8 || command == 11)
            if (command != 2) continue;
        EXPECT_EQ(effect.Main(command, nullptr, nullptr, nullptr, nullptr, nullptr), 0) << command;
        EXPECT_STREQ(effect.called, "") << command;
    }
}

TEST(Dispatch, PassesTheSixArgumentsOn) {
    struct Arguments : CAEFx {
        void* seen[5] = {};
        PF_Err Render(PF_InData* in, PF_OutData* out, PF_ParamDef* params[], PF_LayerDef* world,
                      void* extra) override {
            void* const all[] = {in, out, params, world, extra};
            std::copy(std::begin(all), std::end(all), seen);
            return 0;
        }
    } effect;
    PF_InData in{};
    PF_OutData out{};
    PF_ParamDef* params[1] = {};
    PF_LayerDef world{};
    int extra = 0;
    effect.Main(PF_Cmd_RENDER, &in, &out, params, &world, &extra);
    void* const expected[] = {&in, &out, params, &world, &extra};
    for (int i = 0; i < 5; ++i) EXPECT_EQ(effect.seen[i], expected[i]) << "argument " << i + 1;
}

TEST(Dispatch, CatchesNothing) {
    struct Thrower : CAEFx {
        PF_Err About(PF_InData*, PF_OutData*, PF_ParamDef*[], PF_LayerDef*, void*) override {
            throw 4711;
        }
    } effect;
    EXPECT_THROW(effect.Main(PF_Cmd_ABOUT, nullptr, nullptr, nullptr, nullptr, nullptr), int);
}

// --- constructors and defaults ----------------------------------------------------------

/// An effect object in memory that was full of another byte before.
template <class Effect>
struct InDirtyMemory {
    alignas(Effect) unsigned char memory[sizeof(Effect)];
    Effect* effect;
    InDirtyMemory() {
        std::memset(memory, 0x77, sizeof memory);
        effect = new (memory) Effect;
    }
    ~InDirtyMemory() { effect->~Effect(); }
};

template <class Effect>
void ExpectTexts(const Effect& effect, const char* name, const char* description, const char* major,
                 const char* minor) {
    EXPECT_STREQ(effect.m_szName, name);
    EXPECT_STREQ(effect.m_szDescription, description);
    EXPECT_STREQ(effect.m_szMajorVersion, major);
    EXPECT_STREQ(effect.m_szMinorVersion, minor);
}

TEST(Defaults, CAEFx) {
    InDirtyMemory<CAEFx> dirty;
    CAEFx& effect = *dirty.effect;
    ExpectTexts(effect, "", "", "", "");
    EXPECT_EQ(effect.m_szName[1], 0x77) << "only the first byte is written";
    EXPECT_EQ(effect.m_nVersion, 0);
    EXPECT_EQ(effect.m_nSubVersion, 0);
    EXPECT_EQ(effect.m_nBugVersion, 0);
    EXPECT_EQ(effect.m_nStage, 0);
    EXPECT_EQ(effect.m_nBuild, 1);
    EXPECT_EQ(effect.QueryGuiElementCount(), 0);
    EXPECT_EQ(effect.QueryPixelFormatCount(), 0);
    for (const int i : {-1, 0, 4, 1000}) {
        EXPECT_EQ(effect.QueryGuiElement(i), nullptr);
        EXPECT_EQ(effect.QueryPixelFormat(i), 0x66646162u);
    }
    unsigned char pixels[8] = {1, 2, 3, 4, 5, 6, 7, 8};
    float values[kAEFxMaxValues] = {};
    EXPECT_EQ(
        effect.RenderLocal(values, 128, PrPixelFormat_BGRA_4444_8u, pixels, 4, pixels + 4, 4, 1, 1),
        0);
    EXPECT_EQ(pixels[0], 1);
}

TEST(Defaults, CAEFxLut) {
    InDirtyMemory<CAEFxLut> dirty;
    CAEFxLut& effect = *dirty.effect;
    ExpectTexts(effect, "", "", "4", "0");
    EXPECT_EQ(effect.m_nVersion, 4);
    EXPECT_EQ(effect.m_nSubVersion, 0);
    EXPECT_EQ(effect.m_nBugVersion, 0);
    EXPECT_EQ(effect.m_nStage, 0);
    EXPECT_EQ(effect.m_nBuild, 1);
    EXPECT_EQ(effect.m_nElementCount, 0);
    EXPECT_EQ(effect.m_pElements, nullptr);
    EXPECT_EQ(effect.QueryGuiElementCount(), 0);
    EXPECT_EQ(effect.QueryPixelFormatCount(), 5);
    const std::uint32_t formats[] = {0x61726762, 0x62677261, 0x61726742, 0x61724742, 0x62677241};
    for (int i = 0; i < 5; ++i) EXPECT_EQ(effect.QueryPixelFormat(i), formats[i]) << i;
}

TEST(Defaults, FieldsFollowTheVirtualTableInOrder) {
    CAEFxLut effect;
    const auto at = [&](const void* field) {
        return static_cast<const char*>(field) - reinterpret_cast<const char*>(&effect);
    };
    const std::ptrdiff_t first = sizeof(void*);
    EXPECT_EQ(at(effect.m_szName), first);
    EXPECT_EQ(at(effect.m_szDescription), first + 128);
    EXPECT_EQ(at(effect.m_szMajorVersion), first + 256);
    EXPECT_EQ(at(effect.m_szMinorVersion), first + 384);
    EXPECT_EQ(at(&effect.m_nVersion), first + 512);
    EXPECT_EQ(at(&effect.m_nSubVersion), first + 516);
    EXPECT_EQ(at(&effect.m_nBugVersion), first + 520);
    EXPECT_EQ(at(&effect.m_nStage), first + 524);
    EXPECT_EQ(at(&effect.m_nBuild), first + 528);
    EXPECT_EQ(at(&effect.m_nElementCount), first + 532);
    EXPECT_EQ(at(&effect.m_pElements), first + 536);
}

TEST(Defaults, CAEFxLutBalance) {
    CAEFxLutBalance effect;
    ExpectTexts(effect, "ZEL Color Balance", "Color Balance", "4", "0");
    EXPECT_EQ(effect.QueryGuiElementCount(), 25);
    EXPECT_STREQ(effect.QueryGuiElement(24)->name, "ForceRender");
    EXPECT_EQ(effect.QueryGuiElement(24)->type, 2);
    EXPECT_EQ(effect.QueryGuiElement(24)->id, 24);
    float values[kAEFxMaxValues] = {};
    effect.BuildLut(nullptr, values);  // must do nothing
    EXPECT_EQ(sizeof effect, sizeof(CAEFxLut));
}

TEST(Defaults, BalanceMakesOneCallWithTheWholeArray) {
    struct Engine : CUtilLut {
        int calls = 0;
        float* seen = nullptr;
        void Reset() override { calls += 100; }
        void ApplyBalance2(float* values) override { ++calls, seen = values; }
    } engine;
    CAEFxLutBalance effect;
    float values[kAEFxMaxValues] = {};
    effect.BuildLut(&engine, values);
    EXPECT_EQ(engine.calls, 1);
    EXPECT_EQ(engine.seen, values);
}

TEST(Defaults, BuildLutOfTheBaseResetsAndTakesNull) {
    struct Engine : CUtilLut {
        int resets = 0;
        void Reset() override { ++resets; }
    } engine;
    CAEFxLut effect;
    effect.BuildLut(&engine, nullptr);
    EXPECT_EQ(engine.resets, 1);
    effect.BuildLut(nullptr, nullptr);
}

// --- version and about -------------------------------------------------------------------

TEST(GlobalSetup, PacksEachFieldOfTheVersionIntoItsBits) {
    const struct {
        const char* name;
        std::int32_t version, sub, bug, stage, build;
        A_u_long packed;
    } cases[] = {
        {"4.0.0 develop 1", 4, 0, 0, 0, 1, 0x200001},
        {"version keeps three bits", 15, 0, 0, 0, 0, 7u << 19},
        {"subversion keeps four", 0, 31, 0, 0, 0, 15u << 15},
        {"bug fix keeps four", 0, 0, 31, 0, 0, 15u << 11},
        {"stage keeps two", 0, 0, 0, 7, 0, 3u << 9},
        {"build keeps nine", 0, 0, 0, 0, 1023, 511},
        {"all ones", -1, -1, -1, -1, -1, 0x3FFFFF},
    };
    for (const auto& c : cases) {
        CAEFxLut effect;
        effect.m_nVersion = c.version;
        effect.m_nSubVersion = c.sub;
        effect.m_nBugVersion = c.bug;
        effect.m_nStage = c.stage;
        effect.m_nBuild = c.build;
        RecordingHost host(Personality::AfterEffects);
        EXPECT_EQ(
            effect.Main(PF_Cmd_GLOBAL_SETUP, host.In(), host.Out(), nullptr, nullptr, nullptr), 0);
        EXPECT_EQ(host.Out()->my_version, c.packed) << c.name;
    }
}

TEST(GlobalSetup, DeclaresTheFormatsThatTheSubclassLists) {
    struct TwoFormats : CAEFx {
        int QueryPixelFormatCount() override { return 2; }
        PrPixelFormat QueryPixelFormat(int i) override {
            return i ? PrPixelFormat_BGRX_4444_8u : PrPixelFormat_VUYA_4444_8u;
        }
    } effect;
    RecordingHost host(Personality::Premiere);
    effect.Main(PF_Cmd_GLOBAL_SETUP, host.In(), host.Out(), nullptr, nullptr, nullptr);
    EXPECT_EQ(host.calls, (std::vector<std::string>{
                              "AcquireSuite PF Pixel Format Suite 1", "ClearSupportedPixelFormats",
                              "AddSupportedPixelFormat vuya", "AddSupportedPixelFormat bgrx",
                              "ReleaseSuite PF Pixel Format Suite 1"}));
}

// docs/quirks.md, "About numbers".
TEST(About, NumbersAreTheLow32BitsOfTheAddressesOfTheVersionTexts) {
    CAEFxLutBalance effect;
    RecordingHost host(Personality::Premiere);
    effect.Main(PF_Cmd_ABOUT, host.In(), host.Out(), nullptr, nullptr, nullptr);
    const auto number = [](const char* text) {
        const auto address = reinterpret_cast<std::uintptr_t>(text);
        return std::to_string(static_cast<std::int32_t>(static_cast<std::uint32_t>(address)));
    };
    EXPECT_EQ(host.Out()->return_msg, "ZEL Color Balance, v" + number(effect.m_szMajorVersion) +
                                          "." + number(effect.m_szMinorVersion) +
                                          "\rColor Balance");
}

// --- sequence data, for subclasses that have some ------------------------------------------

struct WithSequenceData : CAEFx {
    void* block = nullptr;
    int setups = 0;
    PF_Err SequenceSetup(PF_InData*, PF_OutData* out, PF_ParamDef*[], PF_LayerDef*,
                         void*) override {
        ++setups;
        out->sequence_data = &block;
        return 77;
    }
};

TEST(SequenceData, ResetupSetsUpOnlyWhereThereIsNone) {
    WithSequenceData effect;
    RecordingHost host(Personality::AfterEffects);
    const auto resetup = [&] {
        return effect.Main(PF_Cmd_SEQUENCE_RESETUP, host.In(), host.Out(), nullptr, nullptr,
                           nullptr);
    };
    EXPECT_EQ(resetup(), 77) << "the result of SequenceSetup";
    EXPECT_EQ(effect.setups, 1);
    EXPECT_EQ(host.Out()->sequence_data, &effect.block);

    host.sequenceData = host.Out()->sequence_data;
    host.Reset();
    EXPECT_EQ(resetup(), 0);
    EXPECT_EQ(effect.setups, 1);
    EXPECT_EQ(Difference(RecordingHost::UntouchedOut(), *host.Out()), "");
}

TEST(SequenceData, SetdownReturnsItToTheHost) {
    WithSequenceData effect;
    RecordingHost host(Personality::AfterEffects);
    effect.Main(PF_Cmd_SEQUENCE_SETUP, host.In(), host.Out(), nullptr, nullptr, nullptr);
    host.sequenceData = host.Out()->sequence_data;
    host.Reset();
    EXPECT_EQ(
        effect.Main(PF_Cmd_SEQUENCE_SETDOWN, host.In(), host.Out(), nullptr, nullptr, nullptr), 0);
    EXPECT_EQ(host.disposed, std::vector<PF_Handle>{&effect.block});
    PF_OutData expected = RecordingHost::UntouchedOut();
    expected.sequence_data = nullptr;
    EXPECT_EQ(Difference(expected, *host.Out()), "");
}

// --- order of the virtual functions ------------------------------------------------------

/// A CAEFxLut of which every virtual function notes its name.
struct EverySlot : Recorder {
    // clang-format off
    PF_Err Main(int, In, Out, Params, World, void*) override { return Note("Main", 0); }
    int QueryGuiElementCount() override { return Note("QueryGuiElementCount", 0); }
    const AEFxGuiElement* QueryGuiElement(int) override { return Note("QueryGuiElement", 0), nullptr; }
    int QueryPixelFormatCount() override { return Note("QueryPixelFormatCount", 0); }
    PrPixelFormat QueryPixelFormat(int) override { return Note("QueryPixelFormat", 0), PrPixelFormat_Any; }
    int RenderLocal(float*, int, PrPixelFormat, void*, int, void*, int, int, int) override { return Note("RenderLocal", 0); }
    void BuildLut(CUtilLut*, float*) override { Note("BuildLut", 0); }
    int ApplyLut(CUtilLut*, PrPixelFormat, void*, int, void*, int, int, int) override { return Note("ApplyLut", 0); }
    // clang-format on
};

TEST(VirtualTable, Order) {
    // Slots 0 and 1 are the two destructors. A virtual function takes the object as its
    // first argument, and superfluous arguments do no harm, so one form calls every slot.
    constexpr const char* kOrder[] = {
        "Main", "About", "GlobalSetup", "GlobalSetdown", "ParamsSetup", "SequenceSetup",
        "SequenceSetdown", "SequenceResetup", "Render", "QueryGuiElementCount", "QueryGuiElement",
        "QueryPixelFormatCount", "QueryPixelFormat", "RenderLocal",
        // of CAEFxLut
        "BuildLut", "ApplyLut"};
    EverySlot effect;
    using Slot = void (*)(CAEFx*, void*, void*, void*, void*, void*, void*, void*, void*, void*);
    Slot* slots;
    CAEFx* const base = &effect;
    std::memcpy(&slots, static_cast<void*>(base), sizeof slots);
    for (std::size_t i = 0; i < std::size(kOrder); ++i) {
        effect.called = "";
        slots[2 + i](base, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                     nullptr);
        EXPECT_STREQ(effect.called, kOrder[i]) << "slot " << 2 + i;
    }
}

}  // namespace
}  // namespace zel::test
