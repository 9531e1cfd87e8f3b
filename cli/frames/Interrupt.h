#pragma once

/// Ctrl-C and its kin: the frames in flight are finished, the rest is left.

#include <atomic>
#include <stdexcept>
#include <string>

namespace zel {

/// While one lives, SIGINT, SIGTERM and SIGHUP only set a flag, unless they were ignored
/// before. A second one ends the program at once, and takes the temporary files along.
/// One at a time. Nothing on Windows.
class InterruptGuard {
public:
    enum Patience { FinishFrames, AtOnce };  // AtOnce: the first is treated like the second

    explicit InterruptGuard(Patience patience);
    ~InterruptGuard();
    InterruptGuard(const InterruptGuard&) = delete;
    InterruptGuard& operator=(const InterruptGuard&) = delete;

    static const std::atomic<bool>& Asked();
    static int Signal();  // that asked
};

/// Work that ended early because a signal asked for it.
class Interrupted : public std::runtime_error {
public:
    Interrupted(int signal, const std::string& text) : std::runtime_error(text), m_signal(signal) {}

    /// Ends the program by the signal, as if it had never been caught: a shell then sees
    /// 128 + its number, and a script that runs the program ends too.
    [[noreturn]] void EndProgram() const;

private:
    int m_signal;
};

}  // namespace zel
