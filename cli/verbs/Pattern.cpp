/// zelfx pattern: the image library's test patterns.

#include "cli/CpuLevel.h"
#include "cli/Words.h"
#include "cli/picture/Picture.h"
#include "cli/raw/RawLayouts.h"
#include "cli/raw/Streams.h"
#include "cli/verbs/Verbs.h"
#include "headless/Error.h"
#include "headless/Text.h"
#include "ip/Ip.h"

#include <iostream>
#include <vector>

namespace zel {

namespace {

// clang-format off
constexpr Option kOptions[] = {
    {"OUT",         "",       "raw file (-: standard output) or picture (.png .tif .exr .dpx .jpg)", Option::Required},
    {"--size",      "WxH",    "pixels of the frame",                            Option::Required},
    {"--layout",    "LAYOUT", "BGRA8 (default), or for raw files RGB10, DpxLE, DpxBE, YUYV8, UYVY8", Option::Optional, LayoutWords},
    {"--row-bytes", "N",      "of a raw file, from row to row (default: no padding)"},
    kCpuOption,
};
// clang-format on

/// The pattern over black.
void Draw(const RawLayout& layout, void* base, int rowBytes, FrameSize size) {
    layout.fill(base, rowBytes, size.width, size.height, 0, 0, 0, 1, true);
    layout.pattern(base, rowBytes, size.width, size.height, 0);
}

bool IsPictureName(const std::string& name) {
    const std::string suffix = Lower(std::filesystem::path(name).extension().string());
    for (const char* picture : {".png", ".tif", ".tiff", ".exr", ".dpx", ".jpg", ".jpeg"})
        if (suffix == picture) return true;
    return false;
}

int Run(const Arguments& arguments) {
    const std::string out = *arguments.Last("OUT");
    const FrameSize size = ParseSize(*arguments.Last("size"));
    const RawLayout& layout = RawLayoutNamed(arguments.Last("layout").value_or("BGRA8"));
    if (!layout.pattern)
        throw Error(ErrorKind::Usage, "the library has no test pattern for " +
                                          std::string(layout.name) +
                                          "; it has BGRA8, RGB10, DpxLE, DpxBE, YUYV8 and UYVY8");
    ChooseCpuLevel(arguments);
    if (IsPictureName(out)) {
        if (layout.name != "BGRA8")
            throw Error(ErrorKind::Usage, "a picture file takes the BGRA8 pattern; " +
                                              std::string(layout.name) + " goes into a raw file");
        Frame frame(PrPixelFormat_BGRA_4444_8u, size.width, size.height);
        Draw(layout, frame.Row(0), frame.RowBytes(), size);
        WritePicture(out, frame, {}, {.depth = Depth::U8, .alpha = false, .dpx = {}});
    } else {
        const int rowBytes = RowBytesOption(arguments, "row-bytes", layout, size.width);
        std::vector<std::byte> frame(static_cast<std::size_t>(rowBytes) *
                                     static_cast<std::size_t>(size.height));
        Draw(layout, frame.data(), rowBytes, size);
        RawWriter writer(out);
        writer.Write(frame);
        writer.Commit();
    }
    if (out != "-")
        std::cout << out << ": test pattern, " << size.width << " x " << size.height << ", "
                  << layout.name << '\n';
    return 0;
}

}  // namespace

Verb PatternVerb() {
    return {"pattern", "Write a test pattern", kOptions,
            "Example:\n  zelfx pattern frame.png --size 1920x1080", Run};
}

}  // namespace zel
