#pragma once

/// Small text helpers: comparing names as people type them, and offering near ones.

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace zel {

std::string Lower(std::string_view text);

/// `names` sorted by how near they are to `wanted`, the nearest `most` of them; only
/// those that a slip of the fingers could explain, or all when none is near.
std::vector<std::string> Nearest(std::string_view wanted, std::span<const std::string> names,
                                 std::size_t most);

/// "a, b or c"; empty for no names.
std::string Alternatives(std::span<const std::string> names);

/// Shortest decimal text that reads back as the same float: "0.6", "-100".
std::string Number(float value);

}  // namespace zel
