/// zelfx convert: raw frames from one layout to another.

#include "cli/CpuLevel.h"
#include "cli/Words.h"
#include "cli/raw/RawLayouts.h"
#include "cli/raw/Streams.h"
#include "cli/verbs/Verbs.h"
#include "headless/Error.h"
#include "ip/Ip.h"

#include <iostream>
#include <vector>

namespace zel {

namespace {

// clang-format off
constexpr Option kOptions[] = {
    {"IN",              "",        "file of raw frames; - is standard input",                 Option::Required},
    {"OUT",             "",        "file to write; - is standard output",                     Option::Required},
    {"--from",          "LAYOUT",  "layout of IN, BGRA8, v210, ...: see 'man zelfx'", Option::Required, LayoutWords},
    {"--to",            "LAYOUT",  "layout of OUT",                                           Option::Required, LayoutWords},
    {"--size",          "WxH",     "pixels of a frame",                                       Option::Required},
    {"--row-bytes",     "N",       "bytes from row to row of IN (default: no padding)"},
    {"--out-row-bytes", "N",       "bytes from row to row of OUT (default: no padding)"},
    kCpuOption,
};
// clang-format on

std::vector<std::byte> FrameOf(int rowBytes, int height) {
    return std::vector<std::byte>(static_cast<std::size_t>(rowBytes) *
                                  static_cast<std::size_t>(height));
}

int Run(const Arguments& arguments) {
    const RawLayout& from = RawLayoutNamed(*arguments.Last("from"));
    const RawLayout& to = RawLayoutNamed(*arguments.Last("to"));
    const RawConversion& conversion = FindConversion(from, to);
    const auto [width, height] = ParseSize(*arguments.Last("size"));
    const int inRowBytes = RowBytesOption(arguments, "row-bytes", from, width);
    const int outRowBytes = RowBytesOption(arguments, "out-row-bytes", to, width);
    const std::string in = *arguments.Last("IN"), out = *arguments.Last("OUT");

    ChooseCpuLevel(arguments);
    RawReader reader(in);
    RawWriter writer(out);
    auto source = FrameOf(inRowBytes, height);
    auto destination = FrameOf(outRowBytes, height);  // zero where nothing is converted to
    int frames = 0;
    for (; reader.Read(source); ++frames) {
        conversion.frame(destination.data(), outRowBytes, source.data(), inRowBytes, width, height);
        writer.Write(destination);
    }
    if (frames == 0) throw Error(ErrorKind::Input, "'" + in + "' is empty: it holds no frame");
    writer.Commit();
    if (out != "-")
        std::cout << out << ": " << frames << (frames == 1 ? " frame of " : " frames of ") << width
                  << " x " << height << ", " << from.name << " to " << to.name << '\n';
    return 0;
}

}  // namespace

Verb ConvertVerb() {
    return {"convert", "Convert raw frames between pixel layouts", kOptions,
            "Example:\n"
            "  zelfx convert in.bgra out.v210 --from BGRA8 --to v210 --size 1920x1080\n"
            "What each conversion does, bit by bit: docs/layouts.md.",
            Run};
}

}  // namespace zel
