#pragma once

/// The words that options of the verbs' tables take, where they are many.

#include <string>
#include <vector>

namespace zel {

std::vector<std::string> FormatWords();    // pixel formats for an effect: "BGRA8", ...
std::vector<std::string> DepthWords();     // of picture files: "8", ..., "float"
std::vector<std::string> TransferWords();  // of DPX files: "log", "rec709", ...
std::vector<std::string> CpuWords();       // levels that this processor has
std::vector<std::string> LayoutWords();    // of raw frames: "BGRA8", "v210", ...

}  // namespace zel
