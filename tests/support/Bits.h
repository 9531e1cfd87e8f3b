#pragma once

/// Bit patterns for comparing and printing floats: equal means the same bits, and a
/// failure shows hex.

#include <bit>
#include <cstdint>
#include <iomanip>
#include <ostream>

namespace zel::test {

/// A float compared by its bits, so that NaN equals itself and -0 is not 0.
struct Bits {
    float value;

    friend bool operator==(Bits a, Bits b) {
        return std::bit_cast<std::uint32_t>(a.value) == std::bit_cast<std::uint32_t>(b.value);
    }
    friend std::ostream& operator<<(std::ostream& out, Bits b) {
        return out << std::setprecision(9) << b.value << " (0x" << std::hex << std::setw(8)
                   << std::setfill('0') << std::bit_cast<std::uint32_t>(b.value) << std::dec << ')';
    }
};

}  // namespace zel::test
