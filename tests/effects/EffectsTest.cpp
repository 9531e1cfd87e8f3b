#include "effects/CAEFxLutBalance.h"
#include "effects/CAEFxLutBrightness.h"
#include "effects/CAEFxLutGamma.h"
#include "effects/CAEFxLutLog.h"
#include "tests/effects/ElementRows.h"
#include "tests/support/Lut.h"
#include "tests/support/RecordingLut.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstring>
#include <iterator>
#include <memory>
#include <span>
#include <string>
#include <vector>

namespace {

using namespace zel::test;

struct Effect {
    std::unique_ptr<CAEFxLut> object;
    const char* name;
    const char* description;
    std::span<const Row> rows;
    const char* operation;
};

std::vector<Effect> Effects() {
    std::vector<Effect> all;
    all.push_back({std::make_unique<CAEFxLutBalance>(), "ZEL Color Balance", "Color Balance",
                   kBalanceRows, "ApplyBalance2"});
    all.push_back({std::make_unique<CAEFxLutBrightness>(), "Brightness/Contrast/Pivot", "",
                   kBrightnessRows, "ApplyBrightness2"});
    all.push_back(
        {std::make_unique<CAEFxLutGamma>(), "Gamma/Gain/Offset", "", kGammaRows, "ApplyGamma2"});
    all.push_back(
        {std::make_unique<CAEFxLutLog>(), "Log/Linear Conversion", "", kLogRows, "ApplyLog"});
    return all;
}

// Three of them report no "ZEL " and no description.
TEST(Effects, NamesWithoutZel) {
    for (const Effect& effect : Effects()) {
        EXPECT_STREQ(effect.object->m_szName, effect.name);
        EXPECT_STREQ(effect.object->m_szDescription, effect.description) << effect.name;
    }
}

TEST(Effects, VersionStaysAsTheBaseSetIt) {
    const CAEFxLut base;
    for (const Effect& effect : Effects()) {
        const CAEFxLut& object = *effect.object;
        EXPECT_STREQ(object.m_szMajorVersion, base.m_szMajorVersion) << effect.name;
        EXPECT_STREQ(object.m_szMinorVersion, base.m_szMinorVersion) << effect.name;
        EXPECT_EQ(object.m_nVersion, base.m_nVersion) << effect.name;
        EXPECT_EQ(object.m_nBuild, base.m_nBuild) << effect.name;
    }
}

TEST(Effects, ElementCounts) {
    constexpr int kCounts[] = {25, 81, 81, 24};
    std::size_t i = 0;
    for (const Effect& effect : Effects()) {
        EXPECT_EQ(effect.object->QueryGuiElementCount(), kCounts[i]) << effect.name;
        EXPECT_EQ(effect.rows.size(), static_cast<std::size_t>(kCounts[i])) << effect.name;
        ++i;
    }
}

TEST(Effects, EveryRowOfTheElementTables) {
    for (const Effect& effect : Effects())
        for (std::size_t i = 0; i < effect.rows.size(); ++i) {
            const Row& row = effect.rows[i];
            const AEFxGuiElement& element = *effect.object->QueryGuiElement(static_cast<int>(i));
            EXPECT_EQ(element.type, row.type) << effect.name << " row " << i;
            EXPECT_STREQ(element.name, row.name) << effect.name << " row " << i;
            EXPECT_EQ(element.range, row.range) << effect.name << " row " << i;
            EXPECT_EQ(element.id, row.id) << effect.name << " row " << i;
        }
}

TEST(Effects, EmptyNamesAreZeroThroughout) {
    constexpr char kZeros[sizeof(AEFxGuiElement::name)]{};
    for (const Effect& effect : Effects())
        for (int i = 0; i < effect.object->QueryGuiElementCount(); ++i) {
            const AEFxGuiElement& element = *effect.object->QueryGuiElement(i);
            const std::size_t length = std::strlen(element.name);
            EXPECT_EQ(std::memcmp(element.name + length, kZeros, sizeof kZeros - length), 0)
                << effect.name << " row " << i;
        }
}

TEST(Effects, ForceRenderIsTheLastElement) {
    for (const Effect& effect : Effects()) {
        const int last = effect.object->QueryGuiElementCount() - 1;
        EXPECT_STREQ(effect.object->QueryGuiElement(last)->name, "ForceRender") << effect.name;
    }
}

TEST(Effects, BuildLutMakesOneCallWithTheWholeArray) {
    for (const Effect& effect : Effects()) {
        RecordingLut lut;
        Params params{};
        effect.object->BuildLut(&lut, params.data());
        EXPECT_EQ(lut.calls, std::vector<std::string>{effect.operation}) << effect.name;
        EXPECT_EQ(lut.params, params.data()) << effect.name;
    }
}

TEST(Effects, BuildLutWithoutACurveDoesNothing) {
    for (const Effect& effect : Effects()) {
        Params params;
        params.fill(7.0f);
        const Params before = params;
        effect.object->BuildLut(nullptr, params.data());
        EXPECT_EQ(params, before) << effect.name;
        effect.object->BuildLut(nullptr, nullptr);
    }
}

TEST(Effects, ForceRenderChangesNoPixel) {
    for (const Effect& effect : Effects()) {
        const int count = effect.object->QueryGuiElementCount();
        Params params{};
        for (int i = 0; i < count; ++i) {
            const AEFxGuiElement& element = *effect.object->QueryGuiElement(i);
            if (element.type == kSlider)
                params[static_cast<std::size_t>(i)] = AEFxRangeTable[element.range].initial + 0.2f;
        }
        std::vector<unsigned char> source(256 * 4), off(source), on(source);
        for (std::size_t i = 0; i < source.size(); ++i)
            source[i] = static_cast<unsigned char>(i / 4 + i % 4 * 5);
        const auto render = [&](std::vector<unsigned char>& to) {
            effect.object->RenderLocal(params.data(), count, PrPixelFormat_BGRA_4444_8u, to.data(),
                                       256 * 4, source.data(), 256 * 4, 256, 1);
        };
        render(off);
        params[static_cast<std::size_t>(count - 1)] = 1.0f;
        render(on);
        EXPECT_EQ(off, on) << effect.name;
        EXPECT_NE(off, source) << effect.name;
    }
}

TEST(Effects, AddNoDataOfTheirOwn) {
    EXPECT_EQ(sizeof(CAEFxLutBalance), sizeof(CAEFxLut));
    EXPECT_EQ(sizeof(CAEFxLutBrightness), sizeof(CAEFxLut));
    EXPECT_EQ(sizeof(CAEFxLutGamma), sizeof(CAEFxLut));
    EXPECT_EQ(sizeof(CAEFxLutLog), sizeof(CAEFxLut));
}

// --- virtual table ------------------------------------------------------------

/// Slots behind the two destructors.
constexpr const char* kSlots[] = {"Main",
                                  "About",
                                  "GlobalSetup",
                                  "GlobalSetdown",
                                  "ParamsSetup",
                                  "SequenceSetup",
                                  "SequenceSetdown",
                                  "SequenceResetup",
                                  "Render",
                                  "QueryGuiElementCount",
                                  "QueryGuiElement",
                                  "QueryPixelFormatCount",
                                  "QueryPixelFormat",
                                  "RenderLocal",
                                  "BuildLut",
                                  "ApplyLut"};

/// An effect that only notes which of its functions was called.
template <class Base>
struct Recorder : Base {
    const char* called = "";

    using In = PF_InData*;
    using Out = PF_OutData*;
    using Defs = PF_ParamDef**;
    using World = PF_LayerDef*;
    PF_Err Note(const char* name) { return called = name, 0; }

    PF_Err Main(int, In, Out, Defs, World, void*) override { return Note("Main"); }
    PF_Err About(In, Out, Defs, World, void*) override { return Note("About"); }
    PF_Err GlobalSetup(In, Out, Defs, World, void*) override { return Note("GlobalSetup"); }
    PF_Err GlobalSetdown(In, Out, Defs, World, void*) override { return Note("GlobalSetdown"); }
    PF_Err ParamsSetup(In, Out, Defs, World, void*) override { return Note("ParamsSetup"); }
    PF_Err SequenceSetup(In, Out, Defs, World, void*) override { return Note("SequenceSetup"); }
    PF_Err SequenceSetdown(In, Out, Defs, World, void*) override { return Note("SequenceSetdown"); }
    PF_Err SequenceResetup(In, Out, Defs, World, void*) override { return Note("SequenceResetup"); }
    PF_Err Render(In, Out, Defs, World, void*) override { return Note("Render"); }
    int QueryGuiElementCount() override { return Note("QueryGuiElementCount"); }
    const AEFxGuiElement* QueryGuiElement(int) override { return Note("QueryGuiElement"), nullptr; }
    int QueryPixelFormatCount() override { return Note("QueryPixelFormatCount"); }
    PrPixelFormat QueryPixelFormat(int) override {
        return Note("QueryPixelFormat"), PrPixelFormat_Any;
    }
    int RenderLocal(float*, int, PrPixelFormat, void*, int, void*, int, int, int) override {
        return Note("RenderLocal");
    }
    void BuildLut(CUtilLut*, float*) override { Note("BuildLut"); }
    int ApplyLut(CUtilLut*, PrPixelFormat, void*, int, void*, int, int, int) override {
        return Note("ApplyLut");
    }
};

/// As in the engine's own test: every slot can be called with the object first, and
/// superfluous or missing arguments do no harm to functions that look at none.
using Slot = void (*)(CAEFx*, void*, void*, void*, void*, void*);

const Slot* SlotsOf(const CAEFx& object) {
    const Slot* slots;
    std::memcpy(&slots, static_cast<const void*>(&object), sizeof slots);
    return slots;
}

template <class Effect>
class VirtualTable : public testing::Test {};
using EffectClasses =
    testing::Types<CAEFxLutBalance, CAEFxLutBrightness, CAEFxLutGamma, CAEFxLutLog>;
TYPED_TEST_SUITE(VirtualTable, EffectClasses);

TYPED_TEST(VirtualTable, Order) {
    Recorder<TypeParam> recorder;
    const Slot* slots = SlotsOf(recorder);
    for (std::size_t i = 0; i < std::size(kSlots); ++i) {
        slots[2 + i](&recorder, nullptr, nullptr, nullptr, nullptr, nullptr);
        EXPECT_STREQ(recorder.called, kSlots[i]) << "slot " << 2 + i;
    }
}

TYPED_TEST(VirtualTable, OnlyTheDestructorsAndBuildLutAreItsOwn) {
    const CAEFxLut base;
    const TypeParam effect;
    for (std::size_t i = 0; i < std::size(kSlots); ++i) {
        const bool own = SlotsOf(effect)[2 + i] != SlotsOf(base)[2 + i];
        EXPECT_EQ(own, std::strcmp(kSlots[i], "BuildLut") == 0) << kSlots[i];
    }
    for (const std::size_t destructor : {0u, 1u})
        EXPECT_NE(SlotsOf(effect)[destructor], SlotsOf(base)[destructor]);
}

}  // namespace
