#pragma once

/// How far two pictures are from each other.

#include "headless/Frame.h"

#include <array>
#include <cstdint>

namespace zel {

/// Of one channel, or of all; samples on the scale 0..1.
struct Difference {
    double largest = 0.0;
    double sum = 0.0, squares = 0.0;  // of the absolute differences
    std::uint64_t samples = 0;        // measured
    std::uint64_t unmeasured = 0;     // differ, and one of the two is no finite number

    double Mean() const;
    /// In decibels against 1; infinite where nothing differs.
    double Psnr() const;

    void Add(float a, float b);
    void Add(const Difference& other);
};

struct Comparison {
    std::array<Difference, 4> channel;  // red, green, blue, alpha
    Difference all;                     // of the channels that were compared
    std::uint64_t differing = 0;        // pixels with at least one sample that differs
    std::uint64_t pixels = 0;

    bool Same() const { return differing == 0; }
};

/// Two frames of one size and format, which is 16 bits or float; alpha counts if `alpha` says so.
/// Samples that are both NaN are the same.
Comparison Compare(const Frame& a, const Frame& b, bool alpha);

enum class CompareMode { Difference, Side, Split };

/// A float picture of both: how far each sample is off, times `gain`, opaque; a to the left of
/// b; or the left half of a and the right half of b, with a white line between.
Frame PictureOf(const Frame& a, const Frame& b, CompareMode mode, float gain);

}  // namespace zel
