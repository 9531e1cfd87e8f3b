#pragma once

/// A curve as a look-up table file, for programs that know nothing of the effects.

#include "cli/curve/Curve.h"

#include <filesystem>
#include <string>

namespace zel {

struct LutFile {
    /// Whose words a .cube file uses: Resolve's has a line with the range of the input.
    enum class Dialect { Adobe, Resolve };

    Curve curve;
    std::string title;    // the effects
    std::string setting;  // their parameters
    Dialect dialect = Dialect::Adobe;
    int size3d = 0;  // points along an edge of a 3D .cube; 0: one dimension, 1024 entries
};

/// Writes the type of table that the suffix says: .cube, .spi1d, .csp, .clf or .zlut.
/// Entries are code / 1023, 0 where the curve has no number. Throws Error(Usage) for
/// another suffix, or a size or dialect that the type does not have; Error(Other) when
/// writing fails, and nothing is left then.
void WriteLutFile(const LutFile& lut, const std::filesystem::path& file);

/// What is lost by a 3D table: the reader interpolates between few points.
struct CubeError {
    double largest;  // on the scale 0..1
    int channel, code;
};

CubeError ErrorOfCube(const Curve& curve, int size3d);

}  // namespace zel
