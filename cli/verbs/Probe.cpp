/// zelfx probe: one pixel, before and after a look.

#include "cli/Chain.h"
#include "cli/RenderPicture.h"
#include "cli/verbs/Verbs.h"
#include "headless/Error.h"
#include "headless/Text.h"
#include "ip/detail/Numeric.h"

#include <nlohmann/json.hpp>

#include <charconv>
#include <cstdio>
#include <cstring>
#include <iostream>

namespace zel {

namespace {

// clang-format off
constexpr Option kOptions[] = {
    {"IN",       "",      "picture to read",                                           Option::Required},
    {"POSITION", "",      "X,Y from the top left corner, which is 0,0", Option::Required},
    kEffectOption,
    kPresetOption,
    kSetOption,
    kToLinearOption,
    kToLogOption,
    kHostOption,
    kIsolateOption,
    kIsolateLimitOption,
    {"--json",   nullptr, "print as JSON"},
};
// clang-format on

constexpr const char* kNames[] = {"red", "green", "blue", "alpha"};

struct Position {
    int x, y;
};

Position ParsePosition(const std::string& text) {
    Position position{};
    const char* const end = text.data() + text.size();
    const auto x = std::from_chars(text.data(), end, position.x);
    if (x.ec == std::errc{} && x.ptr != end && *x.ptr == ',') {
        const auto y = std::from_chars(x.ptr + 1, end, position.y);
        if (y.ec == std::errc{} && y.ptr == end) return position;
    }
    throw Error(ErrorKind::Usage,
                "'" + text + "' is no position: write X,Y in whole pixels, as in 300,200");
}

void RequireInside(Position at, const PictureHeader& header) {
    if (at.x >= 0 && at.y >= 0 && at.x < header.width && at.y < header.height) return;
    throw Error(ErrorKind::Usage, "the pixel " + std::to_string(at.x) + "," + std::to_string(at.y) +
                                      " is outside of the picture: it has 0,0 to " +
                                      std::to_string(header.width - 1) + "," +
                                      std::to_string(header.height - 1));
}

/// One sample, and the code that an effect looks up for it.
struct Sample {
    std::string text;
    int code;
};

std::array<Sample, 4> SamplesOf(const Frame& frame) {
    std::array<Sample, 4> samples;
    for (std::size_t c = 0; c < 4; ++c) {
        const std::byte* at = frame.Row(0) + frame.Format().element[c] *
                                                 std::ptrdiff_t{BytesOf(frame.Format().sample)};
        if (frame.Format().sample == SampleType::Float) {
            float v;
            std::memcpy(&v, at, sizeof v);
            samples[c] = {Number(v), ip::CodeOfUnit(v)};
        } else if (frame.Format().sample == SampleType::U16) {
            std::uint16_t v;
            std::memcpy(&v, at, sizeof v);
            samples[c] = {std::to_string(v), v >> 6};
        } else {
            samples[c] = {std::to_string(std::to_integer<int>(*at)), 4 * std::to_integer<int>(*at)};
        }
    }
    return samples;
}

Frame PixelOf(PictureReader& reader, Position at, const FormatFacts& format) {
    Frame picture(format.code, reader.Header().width, reader.Header().height);
    reader.Read(picture);
    Frame pixel(format.code, 1, 1);
    const auto bytes = static_cast<std::size_t>(format.BytesPerPixel());
    std::memcpy(pixel.Row(0), picture.Row(at.y) + bytes * static_cast<std::size_t>(at.x), bytes);
    return pixel;
}

struct Probe {
    std::size_t channels;
    std::array<Sample, 4> before;
    std::optional<std::array<Sample, 4>> after;
};

nlohmann::ordered_json JsonOf(const std::array<Sample, 4>& samples, std::size_t channels) {
    nlohmann::ordered_json json;
    for (std::size_t c = 0; c < channels; ++c) {
        const auto value = nlohmann::ordered_json::parse(samples[c].text, nullptr, false);
        json[kNames[c]] = {
            {"value", value.is_discarded() ? nlohmann::ordered_json(samples[c].text) : value},
            {"code", samples[c].code}};
    }
    return json;
}

void PrintTable(const Probe& probe) {
    std::printf("%-8s", "");
    for (std::size_t c = 0; c < probe.channels; ++c) std::printf(" %14s", kNames[c]);
    const auto row = [&](const char* name, const std::array<Sample, 4>& samples) {
        std::printf("\n%-8s", name);
        for (std::size_t c = 0; c < probe.channels; ++c)
            std::printf(" %14s", samples[c].text.c_str());
        std::printf("\n%-8s", "  code");
        for (std::size_t c = 0; c < probe.channels; ++c) std::printf(" %14d", samples[c].code);
    };
    row("before", probe.before);
    if (probe.after) row("after", *probe.after);
    std::printf("\n");
}

int Run(const Arguments& arguments) {
    const Position at = ParsePosition(*arguments.Last("POSITION"));
    std::optional<Chain> chain;
    for (const char* option : {"effect", "preset", "set", "log-to-linear", "linear-to-log"})
        if (arguments.Has(option) && !chain) chain.emplace(ChainFrom(arguments));

    PictureReader reader(*arguments.Last("IN"));
    const PictureHeader& header = reader.Header();
    RequireInside(at, header);
    const FormatFacts& format =
        chain ? FormatFor(*chain, header.depth, nullptr) : FactsOf(FormatHolding(header.depth));
    Frame pixel = PixelOf(reader, at, format), other(format.code, 1, 1);
    Probe probe{header.hasAlpha ? 4u : 3u, SamplesOf(pixel), {}};
    if (chain) {
        RenderResult ignored{};
        probe.after = SamplesOf(RenderChain(*chain, pixel, other, false, ignored));
    }

    if (arguments.Has("json")) {
        nlohmann::ordered_json json{{"x", at.x}, {"y", at.y}, {"format", format.name}};
        json["before"] = JsonOf(probe.before, probe.channels);
        if (probe.after) json["after"] = JsonOf(*probe.after, probe.channels);
        std::cout << json.dump(2) << '\n';
        return 0;
    }
    std::printf("pixel %d,%d of %d x %d, as %s%s\n\n", at.x, at.y, header.width, header.height,
                std::string(format.name).c_str(),
                chain ? (", through " + NamesOf(*chain)).c_str() : "");
    PrintTable(probe);
    return 0;
}

}  // namespace

Verb ProbeVerb() {
    return {"probe", "Tell one pixel, before and after a look", kOptions,
            "Example:\n"
            "  zelfx probe in.png 300,200 -e color_balance -s highlights.red=12.5\n"
            "Values are on the scale of the samples, codes on that of the effects: 0 to 1023.",
            Run};
}

}  // namespace zel
