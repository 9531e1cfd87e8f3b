#pragma once

/// Showing a curve: as a drawing, in the terminal, as numbers.

#include "cli/curve/Curve.h"

#include <filesystem>
#include <optional>
#include <ostream>
#include <string>

namespace zel {

/// A curve with what belongs beside it.
struct Plot {
    std::string title;     // the effect
    std::string subtitle;  // the setting
    Curve curve;
    std::optional<LogReferences> references;
};

/// Draws into a .svg or .png file: axes in codes, the identity dashed, clipped runs
/// thick, codes without a result marked on the axis. Throws Error(Other).
void DrawPlot(const Plot& plot, const std::filesystem::path& file);

/// The same in characters, with a short table of values.
void PrintPlot(const Plot& plot, std::ostream& out);

/// A row per code: with commas and a head line, or in columns.
void WriteCsv(const Curve& curve, std::ostream& out);
void WriteColumns(const Curve& curve, std::ostream& out);

}  // namespace zel
