#pragma once

/// The shapes that every routine over rows and frames is run with.
///
/// ZEL_TEST_MAX_WIDTH shortens the range for slow tools: widths 0 to that value and no
/// frame width. Unset: 0 to 70 and a few around 1920.

#include <cstdlib>
#include <span>
#include <vector>

namespace zel::test {

inline int MaxWidth() {
    const char* const text = std::getenv("ZEL_TEST_MAX_WIDTH");
    return text ? std::atoi(text) : 70;
}

/// False when the range is shortened: then samples stand for whole domains too.
inline bool FullRange() { return std::getenv("ZEL_TEST_MAX_WIDTH") == nullptr; }

inline std::vector<int> Widths() {
    std::vector<int> widths;
    for (int w = 0; w <= MaxWidth(); ++w) widths.push_back(w);
    if (FullRange()) widths.insert(widths.end(), {1919, 1920, 1921, 1926});
    return widths;
}

/// Padding and alignment that a width is run with, beside both stride signs.
struct Layout {
    unsigned padding, misalignment;
};
inline constexpr Layout kLayouts[] = {{0, 0}, {5, 1}, {16, 3}};

/// All of them for short rows; for long ones the padded, misaligned one speaks for all.
inline std::span<const Layout> LayoutsFor(int width) {
    const std::span<const Layout> all = kLayouts;
    return width > 70 ? all.subspan(1, 1) : all;
}

inline constexpr int kMaxHeight = 5;

}  // namespace zel::test
