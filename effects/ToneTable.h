#pragma once

/// The element table that brightness and gamma share: four tonal groups, built from
/// one pattern, and the check box that forces a render.

#include "host/GuiElement.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

namespace zel {

/// One control of a tonal group: its label for all channels and for each channel.
struct ToneSlider {
    std::string_view all, red, green, blue;
    RangeRow range;
};

using ToneSliders = std::array<ToneSlider, 3>;

inline constexpr std::int32_t kToneGroupRows = 20;
inline constexpr std::int32_t kToneTableRows = 4 * kToneGroupRows + 1;

/// The rows of one tonal group; `g` is the row number of its first one.
constexpr std::array<AEFxGuiElement, kToneGroupRows> ToneGroupRows(std::int32_t g,
                                                                   std::string_view name,
                                                                   const ToneSliders& s) {
    // clang-format off
    return {
        Group(name),
            Slider(g +  1, s[0].all,   s[0].range),
            Slider(g +  2, s[1].all,   s[1].range),
            Slider(g +  3, s[2].all,   s[2].range),
            Group("Red Channel"),
                Slider(g +  5, s[0].red,   s[0].range),
                Slider(g +  6, s[1].red,   s[1].range),
                Slider(g +  7, s[2].red,   s[2].range),
            GroupEnd(),
            Group("Green Channel"),
                Slider(g + 10, s[0].green, s[0].range),
                Slider(g + 11, s[1].green, s[1].range),
                Slider(g + 12, s[2].green, s[2].range),
            GroupEnd(),
            Group("Blue Channel"),
                Slider(g + 15, s[0].blue,  s[0].range),
                Slider(g + 16, s[1].blue,  s[1].range),
                Slider(g + 17, s[2].blue,  s[2].range),
            GroupEnd(),
        GroupEnd(),
    };
    // clang-format on
}

constexpr std::array<AEFxGuiElement, kToneTableRows> ToneTable(const ToneSliders& sliders) {
    std::array<AEFxGuiElement, kToneTableRows> table{};
    std::int32_t row = 0;
    for (const std::string_view name : {"Master", "Highlights", "Midtones", "Shadows"})
        for (const AEFxGuiElement& element : ToneGroupRows(row, name, sliders))
            table[static_cast<std::size_t>(row++)] = element;
    // Read by nobody: toggling it makes the host render again.
    table[kToneTableRows - 1] = Check(kToneTableRows - 1, "ForceRender");
    return table;
}

/// For static_assert beside a table: row `i` is this slider.
constexpr bool IsSlider(std::span<const AEFxGuiElement> table, std::int32_t i,
                        std::string_view name, RangeRow range) {
    const AEFxGuiElement& e = table[static_cast<std::size_t>(i)];
    return e.type == kFloatSlider && std::string_view(e.name) == name && e.range == range &&
           e.id == i;
}

}  // namespace zel
