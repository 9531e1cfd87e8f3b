#pragma once

/// Which frames of a sequence are wanted: "1-100", "1-100x2", "1-20,40".

#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace zel {

class FrameRange {
public:
    /// All frames there are.
    FrameRange() = default;

    /// Numbers and ranges with commas between them; blanks may stand around each. A range has its
    /// ends in ascending order, both included, and perhaps a step: every second from the
    /// first for x2. Numbers may be negative. Throws Error(Usage).
    static FrameRange Parse(const std::string& text);

    /// Those wanted of a sequence from `first` to `last`, ascending, each once. Ranges are
    /// clipped to it; a frame that is wanted by its own number is wanted in any case.
    /// Throws Error(Usage) when they are more than kMostFrames.
    std::vector<std::int64_t> Within(std::int64_t first, std::int64_t last) const;

    /// True when a range goes beyond `first` or `last`, so that Within clips it.
    bool GoesBeyond(std::int64_t first, std::int64_t last) const;

    static constexpr std::size_t kMostFrames = 10'000'000;

private:
    struct Piece {
        std::int64_t first, last, step;
        bool single;  // a number alone
    };
    static void Clip(Piece& piece, std::int64_t first, std::int64_t last);

    std::vector<Piece> m_pieces;
};

/// "2, 4-6, 9" for ascending numbers; what is beyond eight pieces is counted.
std::string RangeText(std::span<const std::int64_t> numbers);

}  // namespace zel
