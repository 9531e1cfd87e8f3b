#pragma once

/// What it takes to talk to a process of one's own: descriptors, messages and waiting.
/// For Linux.

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <span>
#include <utility>

namespace zel {

/// Closes what it holds.
class Descriptor {
public:
    Descriptor() = default;
    explicit Descriptor(int number) : m_number(number) {}
    Descriptor(Descriptor&& other) noexcept : m_number(std::exchange(other.m_number, -1)) {}
    Descriptor& operator=(Descriptor&& other) noexcept {
        std::swap(m_number, other.m_number);
        return *this;
    }
    ~Descriptor() { Close(); }

    int Number() const { return m_number; }
    bool IsOpen() const { return m_number >= 0; }
    void Close();

private:
    int m_number = -1;
};

/// Two ends of one connection, closed when another program is started.
struct Ends {
    Descriptor ours, theirs;
};

/// Closed ends when there can be none; errno tells why.
Ends Pipe();    // ours to read from, theirs to write to
Ends Socket();  // both to read from and write to

// False when the other side is gone. Writing to it raises no signal on a socket.
bool WriteAll(int to, const void* data, std::size_t bytes);
bool ReadAll(int from, void* data, std::size_t bytes);

/// Contiguous elements, their number first.
template <class List>
bool WriteList(int to, const List& list) {
    const std::uint64_t count = list.size();
    return WriteAll(to, &count, sizeof count) &&
           WriteAll(to, list.data(), list.size() * sizeof(*list.data()));
}
template <class List>
bool ReadList(int from, List& list) {
    std::uint64_t count = 0;
    if (!ReadAll(from, &count, sizeof count)) return false;
    list.resize(static_cast<std::size_t>(count));
    return ReadAll(from, list.data(), list.size() * sizeof(*list.data()));
}

/// Hands two descriptors to the process behind a socket, which gets them as its own.
bool SendDescriptors(int to, int first, int second);
bool ReceiveDescriptors(int from, Descriptor& first, Descriptor& second);

/// True when there is something to read or the other end is closed, false after `limit`.
bool Readable(int descriptor, std::chrono::seconds limit);

/// How a process ended.
struct Ending {
    int status = 0;  // as waitpid() tells it
    bool timedOut = false;
    int notStarted = 0;  // error number
};

/// Waits for the end of a process that keeps the other end of `held` open; kills it after
/// `limit`.
Ending AwaitEnd(int process, int held, std::chrono::seconds limit);

/// "SIGSEGV", or "another signal".
const char* SignalName(int signal);

}  // namespace zel
