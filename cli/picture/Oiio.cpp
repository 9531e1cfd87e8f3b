#include "cli/picture/Oiio.h"

#include "headless/Text.h"

#include <algorithm>
#include <string_view>

namespace zel {

namespace {

// clang-format off
constexpr DepthFacts kDepths[] = {
    {Depth::U8,    "8",     OIIO::TypeDesc::UINT8,  8},
    {Depth::U10,   "10",    OIIO::TypeDesc::UINT16, 10},
    {Depth::U12,   "12",    OIIO::TypeDesc::UINT16, 12},
    {Depth::U16,   "16",    OIIO::TypeDesc::UINT16, 16},
    {Depth::Half,  "half",  OIIO::TypeDesc::HALF,   16},
    {Depth::Float, "float", OIIO::TypeDesc::FLOAT,  32},
};
// clang-format on

}  // namespace

const DepthFacts& FactsOf(Depth depth) {
    return *std::ranges::find(kDepths, depth, &DepthFacts::depth);
}

const char* NameOf(Depth depth) { return FactsOf(depth).name; }

std::optional<Depth> DepthNamed(std::string_view name) {
    for (const DepthFacts& facts : kDepths)
        if (Lower(name) == facts.name) return facts.depth;
    return std::nullopt;
}

std::string FirstLine(const std::string& text) {
    const std::string first = OneLine(text.substr(0, text.find('\n')));
    return first.empty() ? "no reason given" : first;
}

void UseOneThread() {
    static const bool done = OIIO::attribute("threads", 1) && OIIO::attribute("exr_threads", -1);
    static_cast<void>(done);
}

}  // namespace zel
