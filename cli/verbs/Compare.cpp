/// zelfx compare: how far two pictures are from each other.

#include "cli/compare/Compare.h"
#include "cli/Choice.h"
#include "cli/picture/Picture.h"
#include "cli/verbs/Verbs.h"
#include "headless/Error.h"

#include <nlohmann/json.hpp>

#include <charconv>
#include <cmath>
#include <cstdio>
#include <iostream>

namespace zel {

namespace {

// clang-format off
constexpr Option kOptions[] = {
    {"A",           "",                "picture",                       Option::Required},
    {"B",           "",                "picture of the same size",      Option::Required},
    {"-o,--output", "FILE",            "picture of the two: .png .tif .exr .dpx .jpg"},
    {"--mode",      "diff|side|split", "what --output shows (default: diff)"},
    {"--gain",      "N",               "of --mode diff: times how much (default: 1)"},
    {"--json",      nullptr,           "print as JSON"},
};
// clang-format on

constexpr const char* kNames[] = {"red", "green", "blue", "alpha"};

float GainOption(const Arguments& arguments) {
    const auto text = arguments.Last("gain");
    if (!text) return 1.0f;
    float gain = 0.0f;
    const auto [rest, error] = std::from_chars(text->data(), text->data() + text->size(), gain);
    if (error != std::errc{} || rest != text->data() + text->size() || !(gain > 0.0f) ||
        !std::isfinite(gain))
        RejectOption("gain", *text, "a number above 0");
    return gain;
}

CompareMode ModeOption(const Arguments& arguments) {
    const CompareMode mode = arguments.Is("mode", "side")    ? CompareMode::Side
                             : arguments.Is("mode", "split") ? CompareMode::Split
                                                             : CompareMode::Difference;
    for (const char* option : {"mode", "gain"})
        if (arguments.Has(option) && !arguments.Has("output"))
            throw Error(ErrorKind::Usage,
                        std::string("--") + option + " is for a picture: name one with --output");
    if (arguments.Has("gain") && mode != CompareMode::Difference)
        throw Error(ErrorKind::Usage, "--gain is for --mode diff");
    return mode;
}

/// Whole steps between 0 and 1 of a picture's samples; 0 when they are floats.
int StepsOf(Depth depth) {
    switch (depth) {
        case Depth::U8: return 255;
        case Depth::U10: return 1023;
        case Depth::U12: return 4095;
        case Depth::U16: return 65535;
        default: return 0;
    }
}

/// Steps in which both can be told, those of the finer one; 0 when one is in floats.
int StepsOf(const PictureHeader& a, const PictureHeader& b) {
    const int ours = StepsOf(a.depth), theirs = StepsOf(b.depth);
    return ours && theirs ? std::max(ours, theirs) : 0;
}

Frame Load(PictureReader& reader, PrPixelFormat format) {
    Frame frame(format, reader.Header().width, reader.Header().height);
    reader.Read(frame);
    return frame;
}

nlohmann::ordered_json JsonOf(const Difference& d) {
    nlohmann::ordered_json json{{"max", d.largest}, {"mean", d.Mean()}, {"psnr", d.Psnr()}};
    if (d.unmeasured) json["unmeasured"] = d.unmeasured;
    return json;
}

void PrintJson(const Comparison& comparison, std::size_t channels) {
    nlohmann::ordered_json json{{"same", comparison.Same()},
                                {"pixels", comparison.pixels},
                                {"differing", comparison.differing}};
    for (std::size_t c = 0; c < channels; ++c) json[kNames[c]] = JsonOf(comparison.channel[c]);
    json["all"] = JsonOf(comparison.all);
    std::cout << json.dump(2) << '\n';
}

void PrintTable(const Comparison& comparison, std::size_t channels, int steps) {
    std::printf("%7s %12s %12s %10s", "", "max", "mean", "PSNR dB");
    if (steps) std::printf(" %15s", ("max of " + std::to_string(steps)).c_str());
    std::printf("\n");
    const auto row = [&](const char* name, const Difference& d) {
        std::printf("%7s %12.7f %12.7f %10.2f", name, d.largest, d.Mean(), d.Psnr());
        if (steps) std::printf(" %15.0f", d.largest * steps);
        std::printf("\n");
    };
    for (std::size_t c = 0; c < channels; ++c) row(kNames[c], comparison.channel[c]);
    row("all", comparison.all);
    std::printf("%llu of %llu pixels differ%s\n",
                static_cast<unsigned long long>(comparison.differing),
                static_cast<unsigned long long>(comparison.pixels),
                comparison.Same() ? ": the pictures are the same" : "");
    if (comparison.all.unmeasured)
        std::printf("%llu samples differ and are no finite numbers: not in the figures\n",
                    static_cast<unsigned long long>(comparison.all.unmeasured));
}

void RequireOneSize(const PictureHeader& a, const PictureHeader& b) {
    if (a.width == b.width && a.height == b.height) return;
    const auto size = [](const PictureHeader& h) {
        return "'" + h.file.string() + "' is " + std::to_string(h.width) + " x " +
               std::to_string(h.height);
    };
    throw Error(ErrorKind::Other, "the pictures differ in size: " + size(a) + ", " + size(b));
}

int Run(const Arguments& arguments) {
    const CompareMode mode = ModeOption(arguments);
    const float gain = GainOption(arguments);
    PictureReader readerA(*arguments.Last("A")), readerB(*arguments.Last("B"));
    const PictureHeader &headerA = readerA.Header(), &headerB = readerB.Header();
    RequireOneSize(headerA, headerB);
    const int steps = StepsOf(headerA, headerB);
    // Whole samples stay whole: the same value has several floats, one per depth.
    const auto format = steps ? PrPixelFormat_BGRA_4444_16u : PrPixelFormat_BGRA_4444_32f;
    const Frame a = Load(readerA, format), b = Load(readerB, format);
    const std::size_t channels = headerA.hasAlpha || headerB.hasAlpha ? 4 : 3;
    const Comparison comparison = Compare(a, b, channels == 4);
    if (const auto out = arguments.Last("output")) {
        const Frame picture = PictureOf(a, b, mode, gain);
        const Depth finer = std::max(headerA.depth, headerB.depth);
        const bool alpha = channels == 4 && mode != CompareMode::Difference;
        WritePicture(*out, picture, headerA,
                     {.depth = DepthFor(*out, finer), .alpha = alpha, .dpx = {}});
    }
    if (arguments.Has("json"))
        PrintJson(comparison, channels);
    else
        PrintTable(comparison, channels, steps);
    return comparison.Same() ? 0 : 1;
}

}  // namespace

Verb CompareVerb() {
    return {"compare", "Measure how far two pictures are from each other", kOptions,
            "Example:\n"
            "  zelfx compare before.png after.png -o difference.png --gain 8\n"
            "Samples are compared on the scale 0 to 1, whatever their depth.\n"
            "Exit status: 0 same, 1 different or failed, 2 wrong usage, 3 unreadable input",
            Run};
}

}  // namespace zel
