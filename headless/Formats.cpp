#include "headless/Formats.h"

#include "headless/Error.h"
#include "headless/Text.h"

#include <algorithm>

namespace zel {

namespace {

constexpr std::array<int, 4> kBGRA{2, 1, 0, 3}, kARGB{1, 2, 3, 0};

// clang-format off
constexpr FormatFacts kFormats[] = {
    {PrPixelFormat_BGRA_4444_8u,  "BGRA8",     SampleType::U8,    kBGRA},
    {PrPixelFormat_ARGB_4444_8u,  "ARGB8",     SampleType::U8,    kARGB},
    {PrPixelFormat_BGRA_4444_16u, "BGRA16",    SampleType::U16,   kBGRA},
    {PrPixelFormat_ARGB_4444_16u, "ARGB16",    SampleType::U16,   kARGB},
    {PrPixelFormat_BGRA_4444_32f, "BGRAFloat", SampleType::Float, kBGRA},
    {PrPixelFormat_ARGB_4444_32f, "ARGBFloat", SampleType::Float, kARGB},
};
// clang-format on

}  // namespace

std::span<const FormatFacts> KnownFormats() { return kFormats; }

const FormatFacts& FactsOf(PrPixelFormat code) {
    const auto* facts = std::ranges::find(kFormats, code, &FormatFacts::code);
    if (facts == std::end(kFormats))
        throw Error(ErrorKind::Other, "pixel format " +
                                          std::to_string(static_cast<std::uint32_t>(code)) +
                                          " is none that this host can hold");
    return *facts;
}

const FormatFacts* FormatNamed(std::string_view name) {
    const auto* facts = std::ranges::find_if(
        kFormats, [&](const FormatFacts& f) { return Lower(f.name) == Lower(name); });
    return facts == std::end(kFormats) ? nullptr : facts;
}

}  // namespace zel
