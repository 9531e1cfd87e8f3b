/// zelfx curve: the transfer curve of a setting, drawn or as numbers.

#include "cli/EffectFinder.h"
#include "cli/Settings.h"
#include "cli/curve/Plot.h"
#include "cli/picture/TemporaryFile.h"
#include "cli/verbs/Verbs.h"
#include "headless/EffectSession.h"
#include "headless/Error.h"
#include "headless/Text.h"

#include <charconv>
#include <fstream>
#include <iostream>

namespace zel {

namespace {

// clang-format off
constexpr Option kOptions[] = {
    {"EFFECT",          "",           "effect or module, or an operation of the engine (ApplyInvert)", Option::Required},
    {"-s,--set",        "NAME=VALUE", "a parameter, by path or id; of an operation by number",         Option::Many},
    {"-o,--output",     "FILE",       ".svg or .png (plot), .csv or .txt (numbers)"},
    {"--exact",         nullptr,      "the whole codes that the module renders, not the float curve"},
    {"--log-to-linear", nullptr,      "Log/Linear Conversion: switch its check box off"},
    {"--linear-to-log", nullptr,      "Log/Linear Conversion: switch its check box on"},
};
// clang-format on

/// "Highlights/Red 12.5, Shadows/RGB -5": what is not at its default.
std::string SettingText(const ParameterValues& values) {
    std::string text;
    for (const Parameter& p : values.List().All()) {
        if (!p.IsSettable() || values.Get(p) == static_cast<double>(p.Default())) continue;
        text += (text.empty() ? "" : ", ") + p.path + " " +
                (p.kind == Parameter::Kind::CheckBox ? "on"
                                                     : Number(static_cast<float>(values.Get(p))));
    }
    return text.empty() ? "every parameter at its default" : text;
}

/// "1=50" for an operation of the engine.
std::pair<std::size_t, float> ParseEntry(const std::string& assignment) {
    std::size_t entry = 0;
    float value = 0.0f;
    const char* const end = assignment.data() + assignment.size();
    const auto number = std::from_chars(assignment.data(), end, entry);
    if (number.ec == std::errc{} && number.ptr != end && *number.ptr == '=' &&
        entry < std::tuple_size_v<OperationParams>) {
        const auto [rest, error] = std::from_chars(number.ptr + 1, end, value);
        if (error == std::errc{} && rest == end) return {entry, value};
    }
    throw Error(ErrorKind::Usage, "'" + assignment +
                                      "' sets nothing: an operation takes ENTRY=VALUE with an " +
                                      "entry from 0 to 127, as in 1=50");
}

void Save(const Plot& plot, const std::filesystem::path& file) {
    const std::string suffix = Lower(file.extension().string());
    if (suffix == ".svg" || suffix == ".png") return DrawPlot(plot, file);
    if (suffix != ".csv" && suffix != ".txt")
        throw Error(ErrorKind::Usage, "cannot write '" + file.string() +
                                          "': the suffix must be .svg, .png, .csv or .txt");
    TemporaryFile temporary(file);
    std::ofstream out(temporary.Path());
    (suffix == ".csv" ? WriteCsv : WriteColumns)(plot.curve, out);
    out.close();
    if (!out) throw Error(ErrorKind::Other, "cannot write '" + file.string() + "'");
    temporary.Commit();
}

Plot PlotOfEffect(const Arguments& arguments) {
    const EffectSession session(FindModule(*arguments.Last("EFFECT")), Personality::Premiere);
    ParameterValues values(session.Params());
    ApplySettings(arguments, values);
    const bool exact = arguments.Has("exact");
    const auto direction = DirectionOf(values);
    return {
        .title = session.Name() + (exact ? " (exact codes)" : ""),
        .subtitle = SettingText(values) + (direction ? ": " + *direction : ""),
        .curve = exact ? ExactCurve(session, values) : FloatCurve(session, values),
        .references = ReferencesOf(session, values),
    };
}

/// Entries of the parameter array by number: no module tells their names.
Plot PlotOfOperation(const Arguments& arguments) {
    const std::string name = *arguments.Last("EFFECT");
    for (const char* option : {"exact", "log-to-linear", "linear-to-log"})
        if (arguments.Has(option))
            throw Error(ErrorKind::Usage,
                        std::string("--") + option + " is for effects, not for " + name);
    OperationParams params{};
    std::string subtitle;
    for (const std::string& assignment : arguments.All("set")) {
        const auto [entry, value] = ParseEntry(assignment);
        params[entry] = value;
        subtitle += (subtitle.empty() ? "params[" : ", params[") + std::to_string(entry) +
                    "] = " + Number(value);
    }
    return {.title = name,
            .subtitle = subtitle,
            .curve = OperationCurve(name, params),
            .references = {}};
}

int Run(const Arguments& arguments) {
    const std::string name = *arguments.Last("EFFECT");
    const Plot plot = IsOperation(name) ? PlotOfOperation(arguments) : PlotOfEffect(arguments);
    const auto file = arguments.Last("output");
    if (file) {
        Save(plot, *file);
        std::cout << *file << ": curve of " << plot.title << '\n';
    } else {
        PrintPlot(plot, std::cout);
    }
    return 0;
}

}  // namespace

Verb CurveVerb() {
    return {"curve", "Show the transfer curve of a setting", kOptions,
            "Without --output the curve is drawn in the terminal. Example:\n"
            "  zelfx curve gamma_gain_offset -s master.gamma=2.2 -o gamma.svg",
            Run};
}

}  // namespace zel
