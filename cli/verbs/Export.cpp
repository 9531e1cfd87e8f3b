/// zelfx export: a look as a table for other programs.

#include "cli/Chain.h"
#include "cli/curve/ChainCurve.h"
#include "cli/lutfile/LutFile.h"
#include "cli/raw/RawLayouts.h"
#include "cli/verbs/Verbs.h"
#include "headless/Error.h"

#include <cstdio>
#include <iostream>

namespace zel {

namespace {

// clang-format off
constexpr Option kOptions[] = {
    {"LOOK",        "",              "effects or presets; several make a chain",        Option::Many},
    {"-o,--output", "FILE",          ".cube, .spi1d, .csp, .clf or .zlut (packed)",              Option::Required},
    {"--exact",     nullptr,         "whole codes as rendered, not the float curve"},
    {"--dialect",   "adobe|resolve", "of .cube; resolve states the input range"},
    {"--size3d",    "N",             "a less exact 3D .cube of 2 to 64 points along an edge"},
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

void PrintCubeError(const LutFile& lut) {
    const CubeError error = ErrorOfCube(lut.curve, lut.size3d);
    std::printf("largest error against the curve: %.4f (%.1f codes), %s at code %d\n",
                error.largest, error.largest * 1023.0,
                kChannelNames[static_cast<std::size_t>(error.channel)], error.code);
}

int Run(const Arguments& arguments) {
    const Chain chain = ChainFrom(arguments);
    const std::string file = *arguments.Last("output");
    const LutFile lut{
        .curve = CurveOf(chain, arguments.Has("exact")),
        .title = NamesOf(chain),
        .setting = SettingsOf(chain),
        .dialect = arguments.Is("dialect", "resolve") ? LutFile::Dialect::Resolve
                                                      : LutFile::Dialect::Adobe,
        .size3d = NumberOption(arguments, "size3d", 0, 2, 64),
    };
    WriteLutFile(lut, file);
    SavePresetIfAsked(arguments, chain);

    const std::string lost = Describe(lut.curve, NaNRuns);
    if (!lost.empty())
        std::cerr << "zelfx: note: the curve has no number at codes " << lost
                  << ": written as 0, which is what the module renders\n";
    const std::string points = std::to_string(lut.size3d);
    std::cout << file << ": " << lut.title << ", "
              << (lut.size3d ? points + " x " + points + " x " + points + " points"
                             : std::to_string(kCurveCodes) + " entries")
              << (lut.curve.exact ? ", whole codes\n" : "\n") << std::flush;
    if (lut.size3d) PrintCubeError(lut);
    return 0;
}

}  // namespace

Verb ExportVerb() {
    return {"export", "Write a look as a table for other programs", kOptions,
            "Examples:\n"
            "  zelfx export color_balance -s highlights.red=12.5 -o look.cube\n"
            "  zelfx export first.json second.json -o both.clf\n"
            "Tables of one dimension hold the look as it is; 3D ones, for programs that take\n"
            "nothing else, are points of it. 34 is a good N: its points fall on codes.",
            Run};
}

}  // namespace zel
