#include "cli/Isolate.h"

#include "cli/raw/RawLayouts.h"
#include "headless/Error.h"

#include <iostream>

namespace zel {

std::optional<Isolation> IsolationFrom(const Arguments& arguments) {
    constexpr int kDefault = 60, kDay = 24 * 60 * 60;
    const int seconds = NumberOption(arguments, "isolate-timeout", kDefault, 1, kDay);
    if (!arguments.Has("isolate")) {
        if (arguments.Has("isolate-timeout"))
            throw Error(ErrorKind::Usage, "--isolate-timeout is for --isolate, which is missing");
        return std::nullopt;
    }
    return Isolation{.limit = std::chrono::seconds(seconds), .note = [](const std::string& text) {
                         std::cerr << "zelfx: note: " << text << '\n';
                     }};
}

}  // namespace zel
