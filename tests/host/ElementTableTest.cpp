/// PARAMS_SETUP from element tables that no module has, and the table of ranges.

#include "host/CAEFxLut.h"
#include "tests/host/Elements.h"
#include "tests/support/RecordingHost.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

namespace zel::test {
namespace {

AEFxGuiElement Row(std::int32_t type, const char* name, std::int32_t range, std::int32_t id) {
    AEFxGuiElement row{};
    row.type = type;
    std::strcpy(row.name, name);
    row.range = range;
    row.id = id;
    return row;
}

struct TableEffect : CAEFxLut {
    explicit TableEffect(const std::vector<AEFxGuiElement>& table) {
        m_nElementCount = static_cast<std::int32_t>(table.size());
        m_pElements = table.data();
    }
    PF_Err Setup(RecordingHost& host) {
        return Main(PF_Cmd_PARAMS_SETUP, host.In(), host.Out(), nullptr, nullptr, nullptr);
    }
};

TEST(ElementTable, NoElementsGive0Or4Parameters) {
    const std::vector<AEFxGuiElement> none;
    RecordingHost premiere(Personality::Premiere);
    EXPECT_EQ(TableEffect(none).Setup(premiere), 0);
    EXPECT_EQ(premiere.Out()->num_params, 0);
    EXPECT_TRUE(premiere.added.empty());

    RecordingHost afterEffects(Personality::AfterEffects);
    EXPECT_EQ(TableEffect(none).Setup(afterEffects), 0);
    EXPECT_EQ(afterEffects.Out()->num_params, 4);
    EXPECT_TRUE(afterEffects.added.empty());
}

TEST(ElementTable, UnknownTypesAreSkippedButCounted) {
    const std::vector<AEFxGuiElement> table{Row(1, "first", 0, 0), Row(7, "strange", 0, 1),
                                            Row(4, "strange", 0, 2), Row(-1, "strange", 0, 3),
                                            Row(2, "second", 9, 4)};
    RecordingHost host(Personality::Premiere);
    EXPECT_EQ(TableEffect(table).Setup(host), 0);
    EXPECT_EQ(host.Out()->num_params, 5);
    ASSERT_EQ(host.added.size(), 2u);
    EXPECT_STREQ(abi::ParamName(host.added[0].def), "first");
    EXPECT_STREQ(abi::ParamName(host.added[1].def), "second");
    EXPECT_EQ(host.added[1].def.uu.id, 4);
}

TEST(ElementTable, EveryRangeRow) {
    std::vector<AEFxGuiElement> table;
    for (int i = 0; i < 8; ++i) table.push_back(Row(1, "slider", i, i));
    RecordingHost host(Personality::Premiere);
    EXPECT_EQ(TableEffect(table).Setup(host), 0);
    ASSERT_EQ(host.added.size(), 8u);
    for (std::size_t i = 0; i < 8; ++i) {
        const PF_FloatSliderDef& slider = host.added[i].def.u.fs_d;
        EXPECT_EQ(slider.valid_min, kRanges[i].low) << i;
        EXPECT_EQ(slider.slider_min, kRanges[i].low) << i;
        EXPECT_EQ(slider.valid_max, kRanges[i].high) << i;
        EXPECT_EQ(slider.slider_max, kRanges[i].high) << i;
        EXPECT_EQ(slider.dephault, kRanges[i].start) << i;
        EXPECT_EQ(slider.value, static_cast<double>(kRanges[i].start)) << i;
        EXPECT_EQ(slider.precision, 2) << i;
        EXPECT_EQ(slider.display_flags, 0) << i;
        EXPECT_EQ(slider.curve_tolerance, 0.05f) << i;
    }
    // Row 5 starts at the float 0.6, which as a double is a little more.
    EXPECT_EQ(host.added[5].def.u.fs_d.value, 0.60000002384185791015625);
}

TEST(ElementTable, IdsKeepTheirLow16BitsSignExtended) {
    const struct {
        std::int32_t id;
        A_long stored;
    } cases[] = {{1000, 1000}, {0x7FFF, 32767}, {0x8000, -32768},  {0xFFFF, -1},
                 {0x10005, 5}, {-1, -1},        {-0x10000 + 3, 3}, {65536, 0}};
    for (const auto& c : cases)
        for (const std::int32_t type : {0, 1, 2, 3}) {
            RecordingHost host(Personality::Premiere);
            const std::vector<AEFxGuiElement> table{Row(type, "row", 0, c.id)};
            TableEffect(table).Setup(host);
            ASSERT_EQ(host.added.size(), 1u);
            EXPECT_EQ(host.added[0].def.uu.id, c.stored) << "id " << c.id << " type " << type;
        }
}

TEST(ElementTable, LongestLabelFillsTheHostsField) {
    const std::string label(31, 'x');
    const std::vector<AEFxGuiElement> table{Row(0, label.c_str(), 9, 1000)};
    RecordingHost host(Personality::Premiere);
    TableEffect(table).Setup(host);
    EXPECT_EQ(abi::ParamName(host.added[0].def), label);
    EXPECT_EQ(host.added[0].def.flags, 0);
}

TEST(ElementTable, GroupEndHasNoNameWhateverItsRowSays) {
    const std::vector<AEFxGuiElement> table{Row(3, "ignored", 9, 1000)};
    RecordingHost host(Personality::Premiere);
    TableEffect(table).Setup(host);
    EXPECT_STREQ(abi::ParamName(host.added[0].def), "");
    EXPECT_EQ(host.added[0].def.param_type, 14);
    EXPECT_EQ(host.added[0].def.uu.id, 1000);
}

/// The record is cleared afresh for each row: bytes of an earlier one must not shine
/// through, nor what lay on the stack before.
TEST(ElementTable, EveryRecordStartsCleared) {
    const std::vector<AEFxGuiElement> table{Row(1, "a long name of a slider", 5, 0),
                                            Row(3, "", 9, 1000), Row(0, "g", 9, 1000),
                                            Row(2, "c", 9, 3)};
    RecordingHost host(Personality::Premiere);
    TableEffect(table).Setup(host);
    ASSERT_EQ(host.added.size(), 4u);
    for (std::size_t i = 1; i < 4; ++i) {
        PF_ParamDef def = host.added[i].def;
        def.uu.id = def.param_type = def.flags = 0;
        std::memset(abi::ParamName(def), 0, 2);
        def.u.bd.u.nameptr = nullptr;
        unsigned char bytes[sizeof def];
        std::memcpy(bytes, &def, sizeof bytes);
        for (std::size_t b = 0; b < sizeof bytes; ++b)
            EXPECT_EQ(bytes[b], 0) << "record " << i << " byte " << b;
    }
}

TEST(ElementTable, StopsAtANullElement) {
    struct Gap : TableEffect {
        using TableEffect::TableEffect;
        const AEFxGuiElement* QueryGuiElement(int i) override {
            return i == 2 ? nullptr : TableEffect::QueryGuiElement(i);
        }
    };
    const std::vector<AEFxGuiElement> table(5, Row(0, "group", 9, 1000));
    RecordingHost host(Personality::Premiere);
    Gap effect(table);
    EXPECT_EQ(effect.Setup(host), 0);
    EXPECT_EQ(host.added.size(), 2u);
    EXPECT_EQ(host.Out()->num_params, 5);
}

// docs/quirks.md, "element bound".
TEST(ElementTable, AnIndexBehindTheTableYieldsAnAddress) {
    const std::vector<AEFxGuiElement> table(3, Row(0, "group", 9, 1000));
    TableEffect effect(table);
    EXPECT_EQ(effect.QueryGuiElementCount(), 3);
    for (int i = 0; i < 3; ++i) EXPECT_EQ(effect.QueryGuiElement(i), table.data() + i);
    EXPECT_EQ(effect.QueryGuiElement(3), table.data() + 3) << "one past the last";
    effect.m_nElementCount = -5;
    EXPECT_EQ(effect.QueryGuiElement(-1), nullptr) << "negative and not below the count";
    EXPECT_EQ(effect.QueryGuiElement(0), table.data());
}

// The checks that stand beside the released tables as static_assert: each must be able to
// fail.
TEST(ElementWords, ChecksFindWrongTables) {
    const std::vector<AEFxGuiElement> good{Group("Outer"), Slider(1, "first", kPercent),
                                           Group("Inner"), Check(3, "second"),
                                           GroupEnd(),     GroupEnd()};
    EXPECT_TRUE(IdsAreRowNumbers(good) && GroupsAreBalanced(good) && NamesFitHost(good));

    const auto with = [&](std::size_t row, const AEFxGuiElement& element) {
        std::vector<AEFxGuiElement> table = good;
        table[row] = element;
        return table;
    };
    EXPECT_FALSE(IdsAreRowNumbers(with(1, Slider(2, "first", kPercent))));
    EXPECT_FALSE(IdsAreRowNumbers(with(0, Element(kGroupStart, "Outer", kNoRange, 0))));
    EXPECT_FALSE(GroupsAreBalanced(with(4, Check(4, "no end"))));
    EXPECT_FALSE(GroupsAreBalanced(with(0, GroupEnd())));
    EXPECT_TRUE(NamesFitHost(with(1, Slider(1, std::string(31, 'n'), kPercent))));
    EXPECT_FALSE(NamesFitHost(with(1, Slider(1, std::string(32, 'n'), kPercent))));
}

}  // namespace
}  // namespace zel::test
