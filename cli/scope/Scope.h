#pragma once

/// Where the codes of a picture lie: histogram and RGB parade.

#include "headless/Frame.h"

#include <array>
#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace zel {

inline constexpr std::size_t kScopeLevels = 256;  // of four 10-bit codes each

/// One channel of a picture.
struct ChannelScope {
    std::array<std::uint64_t, kScopeLevels> histogram{};
    /// Samples of a level in a column of the scope: [column * kScopeLevels + level].
    std::vector<std::uint32_t> parade;
    std::uint64_t atBlack = 0, atWhite = 0;  // samples at 0 and below, at 1 and above
    double sum = 0.0;                        // of the samples, each limited to 0..1
};

struct Scope {
    std::array<ChannelScope, 3> channel;  // red, green, blue
    int columns;                          // of the parade: the picture's, at most kScopeColumns
    std::uint64_t pixels;
};

inline constexpr int kScopeColumns = 320;

/// Of a float frame; NaN counts as 0.
Scope ScopeOf(const Frame& frame);

/// Draws into a .png file. Throws Error.
void DrawScope(const Scope& scope, const std::string& title, const std::filesystem::path& file);

}  // namespace zel
