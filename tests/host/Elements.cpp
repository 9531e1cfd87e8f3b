#include "tests/host/Elements.h"

namespace zel::test {

namespace {

constexpr const char* kTonalGroups[] = {"Master", "Highlights", "Midtones", "Shadows"};
constexpr const char* kColours[] = {"Red", "Green", "Blue"};

struct NamedRange {
    const char* name;
    int range;
};

void Append(Controls& to, const std::string& prefix, const std::vector<NamedRange>& sliders) {
    for (const auto& [name, range] : sliders) to.push_back({Control::Slider, prefix + name, range});
}

/// `sliders` for all channels, then a group of them for each channel.
void AppendChannels(Controls& to, const std::vector<NamedRange>& sliders, const char* separator) {
    Append(to, "", sliders);
    for (const std::string colour : kColours) {
        to.push_back({Control::GroupStart, colour + " Channel", 9});
        Append(to, separator ? colour + separator : "", sliders);
        to.push_back({Control::GroupEnd, "", 9});
    }
}

Controls Tonal(const std::vector<NamedRange>& sliders, const char* separator) {
    Controls controls;
    for (const char* group : kTonalGroups) {
        controls.push_back({Control::GroupStart, group, 9});
        AppendChannels(controls, sliders, separator);
        controls.push_back({Control::GroupEnd, "", 9});
    }
    controls.push_back({Control::CheckBox, "ForceRender", 9});
    return controls;
}

}  // namespace

Controls ColorBalanceControls() {
    Controls controls;
    for (const char* group : kTonalGroups) {
        controls.push_back({Control::GroupStart, group, 9});
        Append(controls, "", {{"RGB", 0}, {"Red", 0}, {"Green", 0}, {"Blue", 0}});
        controls.push_back({Control::GroupEnd, "", 9});
    }
    controls.push_back({Control::CheckBox, "ForceRender", 9});
    return controls;
}

Controls BrightnessControls() {
    return Tonal({{"Brightness", 0}, {"Contrast", 0}, {"Contrast Pivot", 1}}, " ");
}

Controls GammaControls() { return Tonal({{"Gamma", 6}, {"Gain", 6}, {"Offset", 0}}, nullptr); }

Controls LogControls() {
    Controls controls{{Control::CheckBox, "Convert to Linear", 9}};
    AppendChannels(
        controls,
        {{"Black Reference", 2}, {"White Reference", 3}, {"Display Gamma", 4}, {"Film Gamma", 5}},
        " - ");
    controls.push_back({Control::CheckBox, "ForceRender", 9});
    return controls;
}

}  // namespace zel::test
