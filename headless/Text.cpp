#include "headless/Text.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <numeric>

namespace zel {

namespace {

/// Levenshtein distance: insertions, deletions and replacements between two texts.
std::size_t EditDistance(std::string_view a, std::string_view b) {
    std::vector<std::size_t> row(b.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (std::size_t i = 0; i < a.size(); ++i) {
        std::size_t diagonal = row[0];
        row[0] = i + 1;
        for (std::size_t j = 0; j < b.size(); ++j) {
            const std::size_t replaced = diagonal + (a[i] == b[j] ? 0 : 1);
            diagonal = row[j + 1];
            row[j + 1] = std::min({replaced, row[j] + 1, row[j + 1] + 1});
        }
    }
    return row[b.size()];
}

std::string Joined(std::span<const std::string> names, const char* beforeLast) {
    std::string text;
    for (std::size_t i = 0; i < names.size(); ++i)
        text += (i == 0 ? "" : i + 1 == names.size() ? beforeLast : ", ") + names[i];
    return text;
}

template <class T>
std::string Shortest(T value) {
    char text[64];
    const auto end = std::to_chars(text, text + sizeof text, value).ptr;
    return {text, end};
}

}  // namespace

std::string Lower(std::string_view text) {
    std::string lower(text);
    std::ranges::transform(lower, lower.begin(),
                           [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return lower;
}

std::vector<std::string> Nearest(std::string_view wanted, std::span<const std::string> names,
                                 std::size_t most) {
    const std::string folded = Lower(wanted);
    std::vector<std::pair<std::size_t, std::string>> ranked;
    for (const std::string& name : names) {
        const std::string candidate = Lower(name);
        // A name that contains what was typed is nearer than any with another spelling.
        const bool contains = !folded.empty() && candidate.find(folded) != std::string::npos;
        ranked.emplace_back(contains ? 0 : EditDistance(folded, candidate), name);
    }
    std::ranges::stable_sort(ranked, {}, &std::pair<std::size_t, std::string>::first);
    const std::size_t limit = std::max<std::size_t>(2, wanted.size() / 2);
    std::erase_if(ranked, [=](const auto& r) { return r.first > limit; });
    if (ranked.size() > most) ranked.resize(most);

    std::vector<std::string> nearest;
    for (auto& [distance, name] : ranked) nearest.push_back(std::move(name));
    return nearest;
}

std::string Alternatives(std::span<const std::string> names) { return Joined(names, " or "); }
std::string AllOf(std::span<const std::string> names) { return Joined(names, " and "); }

std::string DidYouMean(std::string_view wanted, std::span<const std::string> names) {
    const auto nearest = Nearest(wanted, names, 4);
    return nearest.empty() ? "" : "; did you mean " + Alternatives(nearest) + "?";
}

std::string OneLine(std::string_view text) {
    std::string line;
    for (const char c : text) line += std::iscntrl(static_cast<unsigned char>(c)) ? ' ' : c;
    const auto first = line.find_first_not_of(' ');
    if (first == std::string::npos) return {};
    return line.substr(first, line.find_last_not_of(' ') - first + 1);
}

std::string Number(float value) { return Shortest(value); }
std::string Number(double value) { return Shortest(value); }

}  // namespace zel
