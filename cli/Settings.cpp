#include "cli/Settings.h"

#include "headless/Error.h"

#include <algorithm>

namespace zel {

namespace {

// The label of this check box names the opposite of what its on state does, and stays
// so. docs/quirks.md, "log direction".
constexpr const char* kDirectionBox = "Convert to Linear";

const Parameter* DirectionBox(const Parameters& parameters) {
    const auto all = parameters.All();
    const auto found = std::ranges::find_if(all, [](const Parameter& p) {
        return p.kind == Parameter::Kind::CheckBox && p.path == kDirectionBox;
    });
    return found == all.end() ? nullptr : &*found;
}

void SetDirection(ParameterValues& values, const std::string& option, bool on) {
    const Parameter* box = DirectionBox(values.List());
    if (!box)
        throw Error(ErrorKind::Usage, "--" + option +
                                          " is for Log/Linear Conversion: this effect has no '" +
                                          kDirectionBox + "'");
    values.Set(*box, on ? 1.0 : 0.0);
}

}  // namespace

void ApplySettings(const Arguments& arguments, ParameterValues& values) {
    for (const std::string& assignment : arguments.All("set")) values.Set(assignment);
    const bool toLinear = arguments.Has("log-to-linear"), toLog = arguments.Has("linear-to-log");
    if (toLinear && toLog)
        throw Error(ErrorKind::Usage,
                    "--log-to-linear and --linear-to-log exclude each other: give one");
    if (toLinear) SetDirection(values, "log-to-linear", false);
    if (toLog) SetDirection(values, "linear-to-log", true);
}

bool IsDefault(const ParameterValues& values, const Parameter& parameter) {
    return static_cast<float>(values.Get(parameter)) == parameter.Default();
}

std::string PlainWords(const Parameter& parameter) {
    return parameter.kind == Parameter::Kind::CheckBox && parameter.path == kDirectionBox
               ? "off: log to linear; on: linear to log"
               : "";
}

std::optional<std::string> DirectionOf(const ParameterValues& values) {
    const Parameter* box = DirectionBox(values.List());
    if (!box) return std::nullopt;
    return values.Get(*box) != 0.0 ? "linear to log (the check box is on)"
                                   : "log to linear (the check box is off)";
}

}  // namespace zel
