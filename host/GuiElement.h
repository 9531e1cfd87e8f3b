#pragma once

/// The records of an effect's GUI element table, and the words to write one with.
///
/// A table lists groups, sliders and check boxes in the order in which the host
/// shows them. Element i becomes host parameter i + 1, and its value arrives at
/// index i of the parameter array. Ids are stored in the users' projects: once
/// released, a table is fixed for good.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

struct AEFxGuiElement {
    std::int32_t type;   // zel::ElementType
    char name[128];      // label; the host has room for 31 characters
    std::int32_t range;  // sliders: row of AEFxRangeTable; else kNoRange, never read
    std::int32_t id;     // host parameter id; the low 16 bits count, sign-extended
};
static_assert(sizeof(AEFxGuiElement) == 140);

/// Range, default and shown decimals of a slider.
struct AEFxRange {
    float validMin, validMax;    // what may be typed
    float sliderMin, sliderMax;  // what the slider reaches
    float initial;
    std::int32_t precision;
};
static_assert(sizeof(AEFxRange) == 24);

extern const AEFxRange AEFxRangeTable[8];

namespace zel {

enum ElementType : std::int32_t {
    kGroupStart = 0,
    kFloatSlider = 1,
    kCheckBox = 2,
    kGroupEnd = 3,
};

/// Rows of AEFxRangeTable.
enum RangeRow : std::int32_t {
    kPercent = 0,         // -100 .. 100, 0
    kFraction = 1,        // 0 .. 1, 0.5
    kBlackReference = 2,  // 0 .. 1023, 95
    kWhiteReference = 3,  // 0 .. 1023, 685
    kDisplayGamma = 4,    // 0 .. 5, 1
    kFilmGamma = 5,       // 0 .. 5, 0.6
    kFactor = 6,          // 0 .. 10, 1
    kPositive = 7,        // 0 .. 100, 0; in no table
    kNoRange = 9,
};

inline constexpr std::int32_t kGroupId = 1000;
inline constexpr std::size_t kHostNameRoom = 32;

constexpr AEFxGuiElement Element(ElementType type, std::string_view name, std::int32_t range,
                                 std::int32_t id) {
    AEFxGuiElement element{};
    element.type = type;
    std::ranges::copy(name, element.name);
    element.range = range;
    element.id = id;
    return element;
}

constexpr AEFxGuiElement Group(std::string_view name) {
    return Element(kGroupStart, name, kNoRange, kGroupId);
}
constexpr AEFxGuiElement GroupEnd() { return Element(kGroupEnd, "", kNoRange, kGroupId); }
constexpr AEFxGuiElement Slider(std::int32_t id, std::string_view name, RangeRow range) {
    return Element(kFloatSlider, name, range, id);
}
constexpr AEFxGuiElement Check(std::int32_t id, std::string_view name) {
    return Element(kCheckBox, name, kNoRange, id);
}

// --- checks for static_assert beside a table ----------------------------------

constexpr bool IsGroupRow(const AEFxGuiElement& e) {
    return e.type == kGroupStart || e.type == kGroupEnd;
}

/// Every slider and check box has its own row number as id, every group row 1000.
constexpr bool IdsAreRowNumbers(std::span<const AEFxGuiElement> table) {
    for (std::size_t i = 0; i < table.size(); ++i)
        if (table[i].id != (IsGroupRow(table[i]) ? kGroupId : static_cast<std::int32_t>(i)))
            return false;
    return true;
}

/// Groups open and close in pairs.
constexpr bool GroupsAreBalanced(std::span<const AEFxGuiElement> table) {
    int depth = 0;
    for (const AEFxGuiElement& e : table) {
        depth += e.type == kGroupStart ? 1 : e.type == kGroupEnd ? -1 : 0;
        if (depth < 0) return false;
    }
    return depth == 0;
}

/// Every label fits the host's field with its terminator.
constexpr bool NamesFitHost(std::span<const AEFxGuiElement> table) {
    return std::ranges::all_of(table, [](const AEFxGuiElement& e) {
        return std::string_view(e.name).size() < kHostNameRoom;
    });
}

}  // namespace zel
