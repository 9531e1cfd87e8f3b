#pragma once

/// Sequences on disk: the files that belong together, and which of them a run takes.

#include "cli/frames/FrameName.h"
#include "cli/frames/FrameRange.h"
#include "cli/frames/Shot.h"

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace zel {

struct Sequence {
    FrameName name;
    std::vector<std::int64_t> numbers;  // of the files there are, ascending
};

/// The sequence that `in` names: a pattern, a folder with one sequence in it, or one of
/// its files. A file that exists is that file alone unless `several`, even where its name
/// looks like a pattern. Throws Error(Input) when there is none, Error(Usage) when a
/// folder has several.
Sequence FindSequence(const std::filesystem::path& in, bool several);

/// True when the name of a file could be that of a frame.
bool HasFrameNumber(const std::filesystem::path& file);

enum class Missing { Error, Skip, Nearest };

/// A frame that a run takes, and the number of the file that it is read from.
struct PlannedFrame {
    std::int64_t number, from;
    Fate fate;
};

/// The wanted frames, clipped to the first and last file. Throws Error(Missing) when none
/// is left, or, with Missing::Error, when one in between is not there. Missing::Nearest
/// reads it from the nearest file, the lower number of two.
std::vector<PlannedFrame> PlanFrames(const Sequence& sequence, const FrameRange& wanted,
                                     Missing missing);

}  // namespace zel
