#pragma once

#include <array>
#include <cstdint>
#include <random>

namespace zel::bench {

/// Tables for all sample types: 10-bit codes, of which the 8-bit family reads the first
/// 256 bytes.
using LutTables = std::array<std::array<std::uint16_t, 1024>, 4>;

inline LutTables RandomTables() {
    std::mt19937 random(1);
    LutTables tables;
    for (auto& table : tables)
        for (auto& code : table) code = static_cast<std::uint16_t>(random() % 1024);
    return tables;
}

}  // namespace zel::bench
