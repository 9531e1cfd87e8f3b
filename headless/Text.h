#pragma once

/// Small text helpers: comparing names as people type them, and offering near ones.

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace zel {

std::string Lower(std::string_view text);

/// Those of `names` that contain `wanted` or that a slip of the fingers could turn into
/// it, the nearest first, at most `most`; case does not count.
std::vector<std::string> Nearest(std::string_view wanted, std::span<const std::string> names,
                                 std::size_t most);

/// "a, b or c"; empty for no names.
std::string Alternatives(std::span<const std::string> names);

/// "a, b and c"; empty for no names.
std::string AllOf(std::span<const std::string> names);

/// "; did you mean a, b or c?" with the four nearest names; empty when none is near.
std::string DidYouMean(std::string_view wanted, std::span<const std::string> names);

/// Line breaks and other control characters as blanks, none of them at the ends.
std::string OneLine(std::string_view text);

/// Shortest decimal text that reads back as the same number: "0.6", "-100", "nan".
std::string Number(float value);
std::string Number(double value);

}  // namespace zel
