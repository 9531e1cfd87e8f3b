#include "cli/frames/FrameRange.h"

#include "cli/Choice.h"
#include "cli/frames/FrameName.h"
#include "headless/Error.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <optional>
#include <string_view>

namespace zel {

namespace {

/// Takes numbers and single characters off the front of a text.
class Reader {
public:
    explicit Reader(std::string_view text) : m_rest(text) {}

    std::optional<std::int64_t> Number() {
        SkipBlanks();
        std::size_t length = m_rest.starts_with('-');
        const std::size_t sign = length;
        while (length < m_rest.size() && m_rest[length] >= '0' && m_rest[length] <= '9') ++length;
        if (length == sign || length - sign > kMostDigits) return std::nullopt;
        std::int64_t number = 0;
        std::from_chars(m_rest.data(), m_rest.data() + length, number);
        m_rest.remove_prefix(length);
        return number;
    }

    bool Take(char c) {
        SkipBlanks();
        if (!m_rest.starts_with(c)) return false;
        m_rest.remove_prefix(1);
        return true;
    }

    bool AtEnd() {
        SkipBlanks();
        return m_rest.empty();
    }

private:
    void SkipBlanks() {
        m_rest.remove_prefix(std::min(m_rest.find_first_not_of(' '), m_rest.size()));
    }

    std::string_view m_rest;
};

[[noreturn]] void Reject(const std::string& text, const std::string& why) {
    RejectOption("frames", text, "frames such as 1-100, 1-100x2 or 1-20,40" + why);
}

}  // namespace

FrameRange FrameRange::Parse(const std::string& text) {
    FrameRange range;
    Reader reader(text);
    do {
        const auto first = reader.Number();
        if (!first) Reject(text, "");
        Piece piece{*first, *first, 1, true};
        if (reader.Take('-')) {
            piece.single = false;
            const auto last = reader.Number();
            if (!last) Reject(text, "");
            piece.last = *last;
            if (piece.last < piece.first)
                Reject(text, "; " + std::to_string(piece.last) + " comes before " +
                                 std::to_string(piece.first));
            if (reader.Take('x')) {
                const auto step = reader.Number();
                if (!step) Reject(text, "");
                if (*step < 1) Reject(text, "; a step is 1 or more");
                piece.step = *step;
            }
        }
        range.m_pieces.push_back(piece);
    } while (reader.Take(','));
    if (!reader.AtEnd()) Reject(text, "");
    return range;
}

std::vector<std::int64_t> FrameRange::Within(std::int64_t first, std::int64_t last) const {
    std::vector<Piece> pieces = m_pieces;
    if (pieces.empty()) pieces.push_back({first, last, 1, false});
    std::vector<std::int64_t> numbers;
    for (Piece& piece : pieces) {
        if (!piece.single) Clip(piece, first, last);
        if (piece.first > piece.last) continue;
        const auto count = static_cast<std::size_t>((piece.last - piece.first) / piece.step) + 1;
        if (count > kMostFrames || numbers.size() + count > kMostFrames)
            throw Error(ErrorKind::Usage, "more than " + std::to_string(kMostFrames) +
                                              " frames are wanted: give fewer with --frames");
        for (std::size_t i = 0; i < count; ++i)
            numbers.push_back(piece.first + static_cast<std::int64_t>(i) * piece.step);
    }
    std::ranges::sort(numbers);
    numbers.erase(std::unique(numbers.begin(), numbers.end()), numbers.end());
    return numbers;
}

bool FrameRange::GoesBeyond(std::int64_t first, std::int64_t last) const {
    return std::ranges::any_of(m_pieces, [&](const Piece& piece) {
        return !piece.single && (piece.first < first || piece.last > last);
    });
}

void FrameRange::Clip(Piece& piece, std::int64_t first, std::int64_t last) {
    if (piece.first < first) {  // the next on the piece's own steps
        const std::int64_t steps = (first - piece.first + piece.step - 1) / piece.step;
        piece.first += steps * piece.step;
    }
    piece.last = std::min(piece.last, last);
}

std::string RangeText(std::span<const std::int64_t> numbers) {
    constexpr int kMostPieces = 8;
    std::string text;
    int pieces = 0;
    for (std::size_t i = 0; i < numbers.size();) {
        if (pieces++ == kMostPieces)
            return text + " and " + std::to_string(numbers.size() - i) + " more";
        std::size_t end = i + 1;
        while (end < numbers.size() && numbers[end] == numbers[end - 1] + 1) ++end;
        text += (text.empty() ? "" : ", ") + std::to_string(numbers[i]);
        if (end - i > 1) text += "-" + std::to_string(numbers[end - 1]);
        i = end;
    }
    return text;
}

}  // namespace zel
