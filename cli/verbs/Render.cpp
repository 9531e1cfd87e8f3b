/// zelfx render: a picture through an effect.

#include "cli/Chain.h"
#include "cli/RenderPicture.h"
#include "cli/Settings.h"
#include "cli/Words.h"
#include "cli/verbs/Verbs.h"
#include "headless/Error.h"
#include "headless/Text.h"

#include <cstdlib>
#include <iostream>

namespace zel {

namespace {

// clang-format off
constexpr Option kOptions[] = {
    {"IN",          "",           "picture to read",                               Option::Required},
    {"OUT",         "",           "picture to write: .png .tif .exr .dpx .jpg",    Option::Required},
    Heading("Look"),
    kEffectOption,
    kPresetOption,
    kSetOption,
    kToLinearOption,
    kToLogOption,
    kSavePresetOption,
    kHostOption,
    Heading("Picture"),
    {"--format",    "FORMAT",      "pixels for the effect (default: by IN's depth)", Option::Optional, FormatWords},
    {"--depth",     "DEPTH",       "of OUT: 8, 10, 12, 16, half, float (as IN)",     Option::Optional, DepthWords},
    {"--alpha",     "keep|module", "the source's (default) or the module's"},
    {"--range16",   "full|ae",     "16-bit white: 65535 (default) or 32768"},
    {"--endian",    "little|big",  "of a DPX file (default: as IN, else big)"},
    {"--transfer",  "TAG",         "of a DPX file: log, linear, ... (as IN)",        Option::Optional, TransferWords},
    Heading("Running"),
    {"--cpu",       "LEVEL",       "highest instruction set: see 'zelfx info'",      Option::Optional, CpuWords},
    {"-q,--quiet",  nullptr,       "print nothing but errors"},
};
// clang-format on

RenderOptions OptionsFrom(const Arguments& arguments) {
    RenderOptions options;
    if (const auto format = arguments.Last("format")) options.format = FormatNamed(*format);
    options.moduleAlpha = arguments.Is("alpha", "module");
    options.editorRange = arguments.Is("range16", "ae");
    if (const auto depth = arguments.Last("depth")) options.depth = DepthNamed(*depth);
    if (arguments.Has("endian")) options.bigEndian = arguments.Is("endian", "big");
    if (const auto transfer = arguments.Last("transfer"))
        options.transfer = DpxTransferNamed(*transfer);
    return options;
}

/// The options of DPX files do nothing to others: better said than passed over.
void RequireDpx(const Arguments& arguments, const std::string& out) {
    if (Lower(std::filesystem::path(out).extension().string()) == ".dpx") return;
    for (const char* option : {"endian", "transfer"})
        if (arguments.Has(option))
            throw Error(ErrorKind::Usage, "--" + std::string(option) + " is for DPX files, and '" +
                                              out + "' is none");
}

/// The modules read the environment when they are set up.
void ForceCpu(const Arguments& arguments) {
    const auto given = arguments.Last("cpu");
    if (!given) return;
#if defined(_WIN32)
    _putenv_s("ZELFX_CPU", given->c_str());
#else
    setenv("ZELFX_CPU", given->c_str(), 1);
#endif
}

void PrintNotes(const RenderReport& report) {
    const auto note = [](const std::string& text) { std::cerr << "zelfx: note: " << text << '\n'; };
    if (report.effect.code != 0)
        note("the effect rendered the frame and returned " + std::to_string(report.effect.code) +
             " (\"" + OneLine(report.effect.message) + "\"), as it does in After Effects");
    if (report.floatNarrowed)
        note("After Effects hands this effect no float frames: the picture was taken in 16 bits");
    if (report.clipped > 0)
        note(std::to_string(report.clipped) + " of " + std::to_string(report.samples) +
             " colour samples lie outside 0..1 and were clipped by the effect");
    if (report.alphaDropped) note("pictures of this type hold no alpha: it was left out");
}

int Run(const Arguments& arguments) {
    const RenderOptions options = OptionsFrom(arguments);
    ForceCpu(arguments);
    const std::string in = *arguments.Last("IN"), out = *arguments.Last("OUT");
    RequireDpx(arguments, out);

    const Chain chain = ChainFrom(arguments);
    const RenderReport report = RenderPicture(chain, in, out, options);
    SavePresetIfAsked(arguments, chain);
    if (arguments.Has("quiet")) return 0;
    PrintNotes(report);
    std::cout << out << ": " << report.width << " x " << report.height << ", "
              << NameOf(report.depth) << (report.depth >= Depth::Half ? "" : " bit") << ", through "
              << NamesOf(chain) << " as " << report.format->name;
    for (const ChainLink& link : chain)
        if (const auto direction = DirectionOf(link.values)) std::cout << ", " << *direction;
    std::cout << '\n';
    return 0;
}

}  // namespace

Verb RenderVerb() {
    return {"render", "Take a picture through an effect, or a chain of them", kOptions,
            "Example:\n"
            "  zelfx render in.dpx out.dpx -e color_balance -s highlights.red=12.5\n"
            "Exit status: 0 done, 1 failed, 2 wrong usage, 3 bad input, 4 effect failed",
            Run};
}

}  // namespace zel
