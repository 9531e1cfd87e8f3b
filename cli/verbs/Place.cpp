/// zelfx place: crop, offset and flip a picture with the image library's transforms.

#include "cli/CpuLevel.h"
#include "cli/RenderPicture.h"
#include "cli/raw/RawLayouts.h"
#include "cli/verbs/Verbs.h"
#include "headless/Error.h"
#include "ip/Ip.h"

#include <charconv>
#include <cmath>
#include <iostream>

namespace zel {

namespace {

// clang-format off
constexpr Option kOptions[] = {
    {"IN",        "",         "picture to read",                                        Option::Required},
    {"OUT",       "",         "picture to write: .png .tif .exr .dpx .jpg",             Option::Required},
    {"--size",    "WxH",      "pixels of OUT (default: as IN)"},
    {"--offset",  "X,Y",      "move the picture right by X and up by Y"},
    {"--crop",    "L,T,R,B",  "take away at the left, top, right and bottom"},
    {"--flip",    nullptr,    "turn the picture upside down"},
    {"--percent", nullptr,    "offsets and crops are percentages of IN's width or height"},
    kCpuOption,
};
// clang-format on

/// "1,2.5" into `count` finite numbers; all 0 when the option is absent.
std::vector<float> NumbersOption(const Arguments& arguments, const std::string& key,
                                 std::size_t count, const char* form) {
    std::vector<float> numbers;
    const auto text = arguments.Last(key);
    if (!text) return std::vector<float>(count);
    const char* at = text->data();
    const char* const end = at + text->size();
    while (true) {
        float number = 0.0f;
        const auto [rest, error] = std::from_chars(at, end, number);
        if (error != std::errc{} || !std::isfinite(number)) break;
        numbers.push_back(number);
        if (rest == end && numbers.size() == count) return numbers;
        if (rest == end || *rest != ',') break;
        at = rest + 1;
    }
    throw Error(ErrorKind::Usage, "--" + key + " cannot be '" + *text + "': it takes " + form);
}

void Transform(IpTransformArg& arg, SampleType sample) {
    switch (sample) {
        case SampleType::U8: return IpFrame_Transform_Char4(&arg);
        case SampleType::U16: return IpFrame_Transform_Short4(&arg);
        case SampleType::Float: return IpFrame_Transform_Float4(&arg);
    }
}

int Run(const Arguments& arguments) {
    const auto offset = NumbersOption(arguments, "offset", 2, "two numbers, X,Y");
    const auto crop = NumbersOption(arguments, "crop", 4, "four numbers, L,T,R,B");
    const std::string out = *arguments.Last("OUT");

    ChooseCpuLevel(arguments);
    PictureReader reader(*arguments.Last("IN"));
    const PictureHeader& header = reader.Header();
    const auto given = arguments.Last("size");
    const FrameSize size = given ? ParseSize(*given) : FrameSize{header.width, header.height};
    const PrPixelFormat format = FormatHolding(header.depth);
    Frame source(format, header.width, header.height), destination(format, size.width, size.height);
    reader.Read(source);

    IpTransformArg arg{
        .dstBase = destination.Row(0),
        .dstRowBytes = destination.RowBytes(),
        .dstWidth = size.width,
        .dstHeight = size.height,
        .srcBase = source.Row(0),
        .srcRowBytes = source.RowBytes(),
        .srcWidth = header.width,
        .srcHeight = header.height,
        .offsetX = offset[0],
        .offsetY = offset[1],
        .cropLeft = crop[0],
        .cropTop = crop[1],
        .cropRight = crop[2],
        .cropBottom = crop[3],
        .flipVertical = arguments.Has("flip"),
        .inPixels = !arguments.Has("percent"),
    };
    Transform(arg, destination.Format().sample);

    WritePicture(out, destination, header,
                 {.depth = DepthFor(out, header.depth), .alpha = header.hasAlpha, .dpx = {}});
    if (size.width % 6 != 0)
        std::cerr << "zelfx: note: columns are placed in steps of six: the last " << size.width % 6
                  << " are black\n";
    std::cout << out << ": " << size.width << " x " << size.height << '\n';
    return 0;
}

}  // namespace

Verb PlaceVerb() {
    return {"place", "Crop, move and flip a picture", kOptions,
            "Example:\n"
            "  zelfx place in.png out.png --size 1280x720 --offset 60,-20 --crop 12,0,12,0\n"
            "Positions are rounded to even rows and to columns in steps of six.",
            Run};
}

}  // namespace zel
