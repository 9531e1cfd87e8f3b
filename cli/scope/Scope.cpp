#include "cli/scope/Scope.h"

#include "cli/picture/Pixels.h"
#include "ip/detail/Numeric.h"

#include <algorithm>

namespace zel {

Scope ScopeOf(const Frame& frame) {
    const int columns = std::min(frame.Width(), kScopeColumns);
    Scope scope{{}, columns, 0};
    for (ChannelScope& channel : scope.channel)
        channel.parade.resize(static_cast<std::size_t>(columns) * kScopeLevels);

    const auto element = frame.Format().element;
    std::int64_t x = 0;
    ForEachPixel<float>(frame, [&](const auto& pixel) {
        const auto column = static_cast<std::size_t>(x * columns / frame.Width());
        for (std::size_t c = 0; c < 3; ++c) {
            const float v = pixel[static_cast<std::size_t>(element[c])];
            const auto level = static_cast<std::size_t>(ip::CodeOfUnit(v)) / 4;
            ChannelScope& channel = scope.channel[c];
            ++channel.histogram[level];
            ++channel.parade[column * kScopeLevels + level];
            channel.atBlack += !(v > 0.0f);
            channel.atWhite += v >= 1.0f;
            channel.sum += v > 0.0f ? static_cast<double>(std::min(v, 1.0f)) : 0.0;
        }
        ++scope.pixels;
        x = x + 1 == frame.Width() ? 0 : x + 1;
    });
    return scope;
}

}  // namespace zel
