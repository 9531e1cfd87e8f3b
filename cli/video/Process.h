#pragma once

/// A child program, started without a shell: its arguments reach it as they are.

#include <sys/types.h>

#include <cstddef>
#include <mutex>
#include <span>
#include <string>
#include <thread>
#include <vector>

namespace zel {

/// Reads or writes one pipe of the child; what it says on standard error is kept. The
/// child has a process group of its own, so that Ctrl-C reaches this program alone. When
/// this program dies, however it does, the pipe closes and the child ends by that.
class Process {
public:
    enum Pipe { FromChild, ToChild };  // its standard output, or its standard input

    /// The name without a folder is looked for in PATH. Throws Error(Other) when it does
    /// not start.
    Process(std::vector<std::string> command, Pipe pipe);
    /// Ends a child that still runs, by force.
    ~Process();
    Process(const Process&) = delete;
    Process& operator=(const Process&) = delete;

    /// Fills `to` from its output; returns less only when that has ended.
    std::size_t Read(std::span<std::byte> to);

    /// False when the child does not take all: it has closed its input or died. Never
    /// raises SIGPIPE.
    bool Write(std::span<const std::byte> from);

    /// Closes the pipe and waits for the end: its exit status, or -signal.
    int Wait();

    /// The first line that it has said on standard error so far, without "[part @ 0x..]"
    /// in front; empty when it has said nothing.
    std::string Complaint() const;

    /// "ffmpeg was ended by signal 9", or what it said, for errors after Wait().
    std::string EndText() const;

private:
    void ClosePipe();

    std::string m_name;
    pid_t m_child = -1;
    int m_pipe = -1, m_errors = -1;
    int m_status = 0;
    bool m_running = true;
    mutable std::mutex m_mutex;
    std::string m_said;  // as much as kMostSaid
    std::jthread m_listener;
};

/// All that a program prints. Throws Error(Input) when its status is not 0: `what`, then
/// what it said.
std::string OutputOf(std::vector<std::string> command, const std::string& what);

}  // namespace zel
