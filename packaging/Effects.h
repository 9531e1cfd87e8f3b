#pragma once

/// What a host knows of an effect before it runs it: one row per module, from which the
/// resources of the files are written.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <string_view>

namespace zel::packaging {

struct Effect {
    const char* module;     // target and file name
    const char* matchName;  // stored in projects: fixed for good, unique among all effects
    const char* menuName;
    const char* category;         // submenu
    std::uint32_t version;        // packed as in GLOBAL_SETUP
    std::uint32_t flags, flags2;  // of GLOBAL_SETUP in After Effects, which compares them
};

inline constexpr std::uint32_t kVersion = 0x200001;  // 4.0.0, stage develop, build 1
inline constexpr std::uint32_t kFlags = 0x2000400;   // DEEP_COLOR_AWARE, PIX_INDEPENDENT

// clang-format off
inline constexpr Effect kEffects[] = {
    {"zel_color_balance",             "zelfx.color_balance",             "ZEL Color Balance",             "ZEL", kVersion, kFlags, 0},
    {"zel_brightness_contrast_pivot", "zelfx.brightness_contrast_pivot", "ZEL Brightness/Contrast/Pivot", "ZEL", kVersion, kFlags, 0},
    {"zel_gamma_gain_offset",         "zelfx.gamma_gain_offset",         "ZEL Gamma/Gain/Offset",         "ZEL", kVersion, kFlags, 0},
    {"zel_log_linear_conversion",     "zelfx.log_linear_conversion",     "ZEL Log/Linear Conversion",     "ZEL", kVersion, kFlags, 0},
};
// clang-format on

inline constexpr const char* kEntryPoint = "main";

/// The row of a module; null when there is none.
constexpr const Effect* Find(std::string_view module) {
    const Effect* row = std::ranges::find_if(
        kEffects, [&](const Effect& effect) { return effect.module == module; });
    return row == std::end(kEffects) ? nullptr : row;
}

/// Hosts have room for so many characters of a name.
inline constexpr std::size_t kNameRoom = 31;
static_assert(std::ranges::all_of(kEffects, [](const Effect& effect) {
    const auto fits = [](std::string_view text) {
        return !text.empty() && text.size() <= kNameRoom;
    };
    return fits(effect.matchName) && fits(effect.menuName) && fits(effect.category);
}));

}  // namespace zel::packaging
