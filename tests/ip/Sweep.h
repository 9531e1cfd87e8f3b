#pragma once

/// Runs a routine that turns source rows into destination rows over every shape, and
/// compares all memory around with a restatement.

#include "tests/support/GuardedBuffer.h"
#include "tests/support/Shapes.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <string>

namespace zel::test {

/// How rows of the two frames meet.
enum class RowWalk {
    upwards,  // each frame from its lowest row: one negative step turns the copy over
    asGiven,  // row r to row r
};

/// A routine and its restatement.
struct RowRoutine {
    std::string name;
    std::function<std::size_t(int width)> dstBytes, srcBytes;  // of a row
    std::function<Bytes(const Bytes& src, int width)> slowRow;
    RowWalk walk;
    /// Null when there is none.
    std::function<void(void* dst, int dstRowBytes, void* src, int srcRowBytes, int width,
                       int height)>
        frame;
    std::function<void(void* dst, int dstRowBytes, void* src, int srcRowBytes, int width)> scan;
};

inline Bytes SourceRow(const GuardedFrame& src, int row) {
    const auto bytes = src.row(row);
    return {bytes.begin(), bytes.end()};
}

inline void Restate(const RowRoutine& routine, int width, int height, bool turnedOver,
                    const GuardedFrame& dst, const GuardedFrame& src, Bytes& expected) {
    for (int r = 0; r < height; ++r) {
        const Bytes row = routine.slowRow(SourceRow(src, turnedOver ? height - 1 - r : r), width);
        ASSERT_LE(row.size(), dst.row(r).size()) << "restated more than the row holds";
        std::ranges::copy(row, expected.begin() + static_cast<std::ptrdiff_t>(dst.Offset(r)));
    }
}

inline void SweepFrame(const RowRoutine& routine, int width, int height, bool dstNegative,
                       bool srcNegative, Place place, Layout layout) {
    const std::size_t dstBytes = routine.dstBytes(width), srcBytes = routine.srcBytes(width);
    GuardedFrame dst({dstBytes, height, dstNegative, layout.padding, layout.misalignment}, place,
                     11);
    GuardedFrame src({srcBytes, height, srcNegative, layout.padding / 2, layout.misalignment / 2},
                     place, 12);
    const Bytes before = src.content();
    Bytes expected = dst.content();
    const bool turnedOver = routine.walk == RowWalk::upwards && dstNegative != srcNegative;
    Restate(routine, width, height, turnedOver, dst, src, expected);
    routine.frame(dst.base(), dst.rowBytes(), src.base(), src.rowBytes(), width, height);
    ASSERT_EQ(dst.Difference(expected), "")
        << routine.name << ' ' << width << " x " << height << (dstNegative ? " dst<0" : "")
        << (srcNegative ? " src<0" : "") << " padding " << layout.padding;
    ASSERT_EQ(src.Difference(before), "") << routine.name << " wrote its source";
}

inline void SweepScan(const RowRoutine& routine, int width, Place place, Layout layout) {
    GuardedFrame dst({routine.dstBytes(width), 1, false, 0, layout.misalignment}, place, 13);
    GuardedFrame src({routine.srcBytes(width), 1, false, 0, layout.padding}, place, 14);
    Bytes expected = dst.content();
    Restate(routine, width, 1, false, dst, src, expected);
    routine.scan(dst.base(), dst.rowBytes(), src.base(), src.rowBytes(), width);
    ASSERT_EQ(dst.Difference(expected), "") << routine.name << " row of " << width;
}

/// Every width, height, stride sign, padding and placement.
inline void Sweep(const RowRoutine& routine) {
    for (const int width : Widths()) {
        if (routine.scan)
            for (const Place place : {Place::guarded, Place::atFront, Place::atBack})
                SweepScan(routine, width, place, kLayouts[1]);
        if (!routine.frame) continue;
        for (int height = 0; height <= kMaxHeight; ++height)
            for (const int signs : {0, 1, 2, 3})
                for (const Layout layout : LayoutsFor(width))
                    SweepFrame(routine, width, height, signs & 1, signs & 2, Place::guarded,
                               layout);
        for (const Place place : {Place::atFront, Place::atBack})
            for (const int signs : {0, 1, 2, 3})
                SweepFrame(routine, width, 3, signs & 1, signs & 2, place, kLayouts[0]);
        if (testing::Test::HasFatalFailure()) return;
    }
}

/// Unit after unit: `pixels` of them become one unit of the destination.
inline RowRoutine ByUnits(std::string name, int pixels, std::size_t srcUnit, std::size_t dstUnit,
                          std::function<Bytes(const std::uint8_t* unit)> slowUnit) {
    RowRoutine routine;
    routine.name = std::move(name);
    const auto units = [=](int width) { return static_cast<std::size_t>(width / pixels); };
    routine.dstBytes = [=](int width) { return units(width) * dstUnit; };
    routine.srcBytes = [=](int width) { return units(width) * srcUnit; };
    routine.slowRow = [=](const Bytes& src, int width) {
        Bytes row;
        for (std::size_t i = 0; i < units(width); ++i) {
            const Bytes unit = slowUnit(src.data() + i * srcUnit);
            row.insert(row.end(), unit.begin(), unit.end());
        }
        return row;
    };
    routine.walk = RowWalk::upwards;
    return routine;
}

}  // namespace zel::test
