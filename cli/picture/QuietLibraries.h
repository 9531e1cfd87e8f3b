#pragma once

/// Keeps picture libraries from printing to standard error.

namespace zel {

/// While one of these lives, what is written to standard error goes nowhere: some
/// libraries print what they also report as an error, and one mistake shall be one
/// line. Counted, so several threads may hold one at a time. Nothing on Windows.
class QuietLibraries {
public:
    QuietLibraries();
    ~QuietLibraries();
    QuietLibraries(const QuietLibraries&) = delete;
    QuietLibraries& operator=(const QuietLibraries&) = delete;
};

}  // namespace zel
