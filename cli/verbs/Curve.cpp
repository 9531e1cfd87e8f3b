/// zelfx curve: the transfer curve of a setting, drawn or as numbers.

#include "cli/Chain.h"
#include "cli/Json.h"
#include "cli/curve/ChainCurve.h"
#include "cli/curve/Plot.h"
#include "cli/picture/TemporaryFile.h"
#include "cli/verbs/Verbs.h"
#include "headless/Error.h"
#include "headless/Text.h"

#include <charconv>
#include <cmath>
#include <fstream>
#include <iostream>

namespace zel {

namespace {

// clang-format off
constexpr Option kOptions[] = {
    {"LOOK",        "",     "effects, presets or an operation (ApplyInvert)", Option::Many},
    {"-o,--output", "FILE",  ".svg or .png (plot), .csv or .txt (numbers)"},
    {"--json",      nullptr, "print the numbers as JSON"},
    {"--exact",     nullptr, "whole codes as rendered, not the float curve"},
    kEffectOption,
    kPresetOption,
    kSetOption,
    kToLinearOption,
    kToLogOption,
    kSavePresetOption,
    kIsolateOption,
    kIsolateLimitOption,
};
// clang-format on

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

Plot PlotOfLook(const Arguments& arguments) {
    const Chain chain = ChainFrom(arguments);
    const bool exact = arguments.Has("exact");
    // The reference codes are codes of the picture only where nothing else changes them.
    const ChainLink* only = chain.size() == 1 ? &chain.front() : nullptr;
    Plot plot{
        .title = NamesOf(chain) + (exact ? " (exact codes)" : ""),
        .subtitle = SettingsOf(chain),
        .curve = CurveOf(chain, exact),
        .references = only ? ReferencesOf(only->session, only->values) : std::nullopt,
    };
    SavePresetIfAsked(arguments, chain);
    return plot;
}

/// Entries of the parameter array by number: no module tells their names.
Plot PlotOfOperation(const Arguments& arguments) {
    const std::string name = *arguments.Last("LOOK");
    for (const char* option :
         {"effect", "preset", "save-preset", "exact", "log-to-linear", "linear-to-log"})
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

/// Shortest numbers that read back as the same floats; null where the curve has none.
void PrintJson(const Plot& plot) {
    nlohmann::ordered_json json{{"title", plot.title}, {"setting", plot.subtitle}};
    for (std::size_t c = 0; c < 3; ++c) {
        auto codes = nlohmann::ordered_json::array();
        for (const float code : plot.curve.channel[c])
            codes.push_back(
                nlohmann::ordered_json::parse(std::isfinite(code) ? Number(code) : "null"));
        json[kChannelNames[c]] = codes;
    }
    std::cout << json.dump() << '\n';  // 3072 numbers: not a line each
}

int Run(const Arguments& arguments) {
    const auto& looks = arguments.All("LOOK");
    const bool operation = looks.size() == 1 && IsOperation(looks.front());
    const Plot plot = operation ? PlotOfOperation(arguments) : PlotOfLook(arguments);
    const auto file = arguments.Last("output");
    if (file && arguments.Has("json"))
        throw Error(ErrorKind::Usage, "--json prints, --output writes a file: give one of them");
    if (file) {
        Save(plot, *file);
        std::cout << *file << ": curve of " << plot.title << '\n';
    } else if (arguments.Has("json")) {
        PrintJson(plot);
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
