#include "cli/Words.h"

#include "cli/picture/Picture.h"
#include "cli/raw/RawLayouts.h"
#include "headless/Formats.h"
#include "ip/detail/Cpu.h"

namespace zel {

std::vector<std::string> FormatWords() {
    std::vector<std::string> words;
    for (const FormatFacts& format : KnownFormats()) words.emplace_back(format.name);
    return words;
}

std::vector<std::string> DepthWords() {
    std::vector<std::string> words;
    for (const Depth depth :
         {Depth::U8, Depth::U10, Depth::U12, Depth::U16, Depth::Half, Depth::Float})
        words.emplace_back(NameOf(depth));
    return words;
}

std::vector<std::string> TransferWords() { return DpxTransferNames(); }

std::vector<std::string> CpuWords() {
    std::vector<std::string> words;
    for (const ip::CpuLevel& l : ip::CpuLevels())
        if (l.level <= ip::SupportedCpu()) words.emplace_back(l.name);
    return words;
}

std::vector<std::string> LayoutWords() {
    std::vector<std::string> words;
    for (const RawLayout& layout : RawLayouts()) words.emplace_back(layout.name);
    return words;
}

}  // namespace zel
