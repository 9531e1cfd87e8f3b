#pragma once

/// The parameter entries of brightness and gamma, written out: what the tests hold the
/// engine's own arithmetic on entry numbers against.

#include "tests/support/Lut.h"

namespace zel::test {

enum Group { kMasterGroup, kHighlightGroup, kMidtoneGroup, kShadowGroup };

/// kEntry[group][control][0 all channels, 1 red, 2 green, 3 blue]. Controls are brightness,
/// contrast and pivot, or gamma, gain and offset.
// clang-format off
inline constexpr int kEntry[4][3][4] = {
    {{ 1,  5, 10, 15}, { 2,  6, 11, 16}, { 3,  7, 12, 17}},  // master
    {{21, 25, 30, 35}, {22, 26, 31, 36}, {23, 27, 32, 37}},  // highlights
    {{41, 45, 50, 55}, {42, 46, 51, 56}, {43, 47, 52, 57}},  // midtones
    {{61, 65, 70, 75}, {62, 66, 71, 76}, {63, 67, 72, 77}},  // shadows
};
// clang-format on

/// The four groups with the same three values everywhere.
inline Params AllGroups(float first, float second, float third) {
    Params params{};
    for (const auto& group : kEntry)
        for (int who = 0; who < 4; ++who)
            params = With(
                params, {{group[0][who], first}, {group[1][who], second}, {group[2][who], third}});
    return params;
}

inline Params NeutralBrightness() { return AllGroups(0.0f, 0.0f, 0.5f); }
inline Params NeutralGamma() { return AllGroups(1.0f, 1.0f, 0.0f); }

/// Log defaults; `direction` is the check box.
inline Params LogDefaults(float direction) {
    Params params{direction};
    for (const int first : {1, 6, 12, 18})
        params = With(params,
                      {{first, 95.0f}, {first + 1, 685.0f}, {first + 2, 1.0f}, {first + 3, 0.6f}});
    return params;
}

}  // namespace zel::test
