#pragma once

/// Single-precision arithmetic with every step spelled out as a double operation rounded
/// to float. For +, -, x and / that is the single operation itself, since a double has
/// more than twice a float's digits; no compiler setting can fuse or widen it.

namespace zel::test {

struct Single {
    float v;

    friend constexpr Single operator+(Single a, Single b) { return Rounded(double{a.v} + b.v); }
    friend constexpr Single operator-(Single a, Single b) { return Rounded(double{a.v} - b.v); }
    friend constexpr Single operator*(Single a, Single b) { return Rounded(double{a.v} * b.v); }
    friend constexpr Single operator/(Single a, Single b) { return Rounded(double{a.v} / b.v); }

    static constexpr Single Rounded(double x) { return {static_cast<float>(x)}; }
};

/// NaN passes, as it fails both comparisons.
constexpr Single Limited(Single x, float lo, float hi) {
    if (x.v < lo) return {lo};
    if (x.v > hi) return {hi};
    return x;
}

}  // namespace zel::test
