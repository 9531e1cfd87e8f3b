/// zelfx scope: where the codes of a picture lie.

#include "cli/scope/Scope.h"
#include "cli/picture/Picture.h"
#include "cli/verbs/Verbs.h"

#include <iostream>

namespace zel {

namespace {

// clang-format off
constexpr Option kOptions[] = {
    {"IN",          "",     "picture to read",        Option::Required},
    {"-o,--output", "FILE", "drawing to write: .png", Option::Required},
};
// clang-format on

int Run(const Arguments& arguments) {
    const std::string out = *arguments.Last("output");
    PictureReader reader(*arguments.Last("IN"));
    const PictureHeader& header = reader.Header();
    Frame frame(PrPixelFormat_BGRA_4444_32f, header.width, header.height);
    reader.Read(frame);
    const std::string name = header.file.filename().string();
    const std::string size = std::to_string(header.width) + " x " + std::to_string(header.height);
    DrawScope(ScopeOf(frame), name + ", " + size, out);
    std::cout << out << ": scopes of " << name << '\n';
    return 0;
}

}  // namespace

Verb ScopeVerb() {
    return {"scope", "Draw a picture's histogram and RGB parade", kOptions,
            "Example:\n"
            "  zelfx scope in.png -o scope.png\n"
            "The parade has a panel for red, green and blue: codes upwards, columns of the\n"
            "picture across, brighter where more pixels lie.",
            Run};
}

}  // namespace zel
