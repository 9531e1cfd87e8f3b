#pragma once

/// The effects' controls, written down a second time: what users' projects have stored
/// and must find again.

#include <string>
#include <vector>

namespace zel::test {

struct Control {
    enum Kind { GroupStart = 0, Slider = 1, CheckBox = 2, GroupEnd = 3 } kind;
    std::string name;
    int range;  // of a slider: row of kRanges
};

/// What a slider may be set to, and where it starts.
struct Range {
    float low, high, start;
};
inline constexpr Range kRanges[8] = {
    {-100, 100, 0}, {0, 1, 0.5f}, {0, 1023, 95}, {0, 1023, 685},
    {0, 5, 1},      {0, 5, 0.6f}, {0, 10, 1},    {0, 100, 0},
};

/// One row per host parameter, in the host's order.
using Controls = std::vector<Control>;

Controls ColorBalanceControls();
Controls BrightnessControls();
Controls GammaControls();
Controls LogControls();

/// Groups share one id, everything else has its row number.
inline int IdOf(const Controls& controls, std::size_t row) {
    const Control::Kind kind = controls[row].kind;
    return kind == Control::GroupStart || kind == Control::GroupEnd ? 1000 : static_cast<int>(row);
}

}  // namespace zel::test
