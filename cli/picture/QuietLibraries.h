#pragma once

/// Keeps picture libraries from printing to standard error.

#include <string_view>

namespace zel {

/// While one of these lives, what is written to standard error goes nowhere: some
/// libraries print what they also report as an error, and one mistake shall be one
/// line. Counted, so several threads may hold one at a time; a child process that is
/// started meanwhile inherits the nowhere. Nothing on Windows.
class QuietLibraries {
public:
    QuietLibraries();
    ~QuietLibraries();
    QuietLibraries(const QuietLibraries&) = delete;
    QuietLibraries& operator=(const QuietLibraries&) = delete;
};

/// Writes to standard error as it is without any QuietLibraries: for messages of this
/// program while some thread reads or writes a picture.
void WriteToStderr(std::string_view text);

/// The same for a signal handler: once, and without waiting for other threads.
void WriteToStderrInHandler(std::string_view text);

/// True when that is a terminal on which a line can be overwritten.
bool StderrIsTerminal();

}  // namespace zel
