#pragma once

/// Frames of any geometry out of a fuzzer's input.

#include "fuzz/Check.h"
#include "fuzz/Feed.h"
#include "tests/support/GuardedBuffer.h"

#include <cstring>
#include <string>

namespace zel::fuzz {

/// Where a frame lies and how its rows follow each other.
inline test::GuardedFrame AnyFrame(Feed& feed, std::size_t rowBytes, int height,
                                   bool padded = true) {
    const int kind = feed.Any<std::uint8_t>();
    const auto padding = static_cast<std::size_t>(padded && kind & 4 ? feed.Below(70) : 0);
    const auto misalignment = static_cast<std::size_t>(kind & 8 ? feed.Below(64) : 0);
    const test::Place place = kind % 4 == 0   ? test::Place::atFront
                              : kind % 4 == 1 ? test::Place::atBack
                                              : test::Place::guarded;
    return {{rowBytes, height, (kind & 16) != 0, padding, misalignment},
            place,
            feed.Any<std::uint32_t>()};
}

/// Nothing but the frame's own rows has changed.
inline void CheckGuards(const test::GuardedFrame& frame, const test::Bytes& before, int height,
                        const std::string& name) {
    test::Bytes expected = before;
    for (int r = 0; r < height; ++r)
        if (!frame.row(r).empty())
            std::memcpy(&expected[frame.Offset(r)], frame.row(r).data(), frame.row(r).size());
    CheckNone(frame.Difference(expected), name);
}

inline void CheckSame(const test::GuardedFrame& frame, const test::Bytes& expected,
                      const std::string& name) {
    CheckNone(frame.Difference(expected), name);
}

inline std::size_t Size(int n) { return n > 0 ? static_cast<std::size_t>(n) : 0; }

/// Now and then past the sizes that vectors and chunks like.
inline int AnyExtent(Feed& feed, int most) { return feed.Below(most + 2) - 1; }

}  // namespace zel::fuzz
