#include "cli/video/Process.h"

#include "headless/Error.h"
#include "headless/Text.h"

#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <string_view>

extern char** environ;

namespace zel {

namespace {

constexpr std::size_t kMostSaid = 4096;
constexpr int kPipeBytes = 1 << 20;  // what Linux gives without asking is 64 KiB

struct PipeEnds {
    int read, write;
};

PipeEnds MakePipe() {
    std::array<int, 2> ends{};
    if (pipe2(ends.data(), O_CLOEXEC) != 0)
        throw Error(ErrorKind::Other, std::string("cannot make a pipe: ") + std::strerror(errno));
    return {ends[0], ends[1]};
}

/// What the child has in place of ours: descriptors 0 to 2, no blocked signals, SIGPIPE
/// as usual.
class SpawnSettings {
public:
    SpawnSettings(int in, int out, int err) {
        posix_spawn_file_actions_init(&m_files);
        posix_spawnattr_init(&m_attributes);
        Place(in, STDIN_FILENO, O_RDONLY);
        Place(out, STDOUT_FILENO, O_WRONLY);
        Place(err, STDERR_FILENO, O_WRONLY);
        sigset_t none, usual;
        sigemptyset(&none);
        sigemptyset(&usual);
        sigaddset(&usual, SIGPIPE);
        posix_spawnattr_setsigmask(&m_attributes, &none);
        posix_spawnattr_setsigdefault(&m_attributes, &usual);
        posix_spawnattr_setpgroup(&m_attributes, 0);
        posix_spawnattr_setflags(
            &m_attributes, POSIX_SPAWN_SETPGROUP | POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
    }
    ~SpawnSettings() {
        posix_spawnattr_destroy(&m_attributes);
        posix_spawn_file_actions_destroy(&m_files);
    }
    SpawnSettings(const SpawnSettings&) = delete;
    SpawnSettings& operator=(const SpawnSettings&) = delete;

    int Spawn(pid_t& child, const std::vector<std::string>& command) const {
        std::vector<char*> arguments;
        for (const std::string& word : command)
            arguments.push_back(const_cast<char*>(word.c_str()));
        arguments.push_back(nullptr);
        return posix_spawnp(&child, arguments[0], &m_files, &m_attributes, arguments.data(),
                            environ);
    }

private:
    /// -1 for nothing there.
    void Place(int from, int to, int mode) {
        if (from < 0)
            posix_spawn_file_actions_addopen(&m_files, to, "/dev/null", mode, 0);
        else
            posix_spawn_file_actions_adddup2(&m_files, from, to);
    }

    posix_spawn_file_actions_t m_files;
    posix_spawnattr_t m_attributes;
};

/// Turns the SIGPIPE that a write of this thread raises into nothing.
class NoPipeSignal {
public:
    NoPipeSignal() {
        sigemptyset(&m_pipe);
        sigaddset(&m_pipe, SIGPIPE);
        pthread_sigmask(SIG_BLOCK, &m_pipe, &m_before);
    }
    ~NoPipeSignal() {
        const timespec now{};
        while (sigtimedwait(&m_pipe, nullptr, &now) == SIGPIPE) {
        }
        pthread_sigmask(SIG_SETMASK, &m_before, nullptr);
    }
    NoPipeSignal(const NoPipeSignal&) = delete;
    NoPipeSignal& operator=(const NoPipeSignal&) = delete;

private:
    sigset_t m_pipe, m_before;
};

ssize_t ReadSome(int descriptor, void* to, std::size_t bytes) {
    ssize_t got;
    do got = read(descriptor, to, bytes);
    while (got < 0 && errno == EINTR);
    return got;
}

}  // namespace

Process::Process(std::vector<std::string> command, Pipe pipe) : m_name(command.at(0)) {
    const PipeEnds data = MakePipe(), errors = MakePipe();
    const bool reads = pipe == FromChild;
#if defined(F_SETPIPE_SZ)
    fcntl(data.read, F_SETPIPE_SZ, kPipeBytes);  // a larger one is faster, none is needed
#endif
    const int failed = SpawnSettings(reads ? -1 : data.read, reads ? data.write : -1, errors.write)
                           .Spawn(m_child, command);
    close(reads ? data.write : data.read);
    close(errors.write);
    m_pipe = reads ? data.read : data.write;
    m_errors = errors.read;
    if (failed != 0) {
        close(m_pipe);
        close(m_errors);
        throw Error(ErrorKind::Other,
                    "cannot run '" + m_name + "': " +
                        (failed == ENOENT ? "it is not installed, or not in a folder of PATH"
                                          : std::strerror(failed)));
    }
    m_listener = std::jthread([this] {
        std::array<char, 1024> some;
        ssize_t got;
        while ((got = ReadSome(m_errors, some.data(), some.size())) > 0) {
            const std::lock_guard lock(m_mutex);
            m_said.append(some.data(),
                          std::min(static_cast<std::size_t>(got), kMostSaid - m_said.size()));
        }
    });
}

Process::~Process() {
    if (m_running) {
        kill(m_child, SIGKILL);
        Wait();
    }
}

void Process::ClosePipe() {
    if (m_pipe >= 0) close(m_pipe);
    m_pipe = -1;
}

std::size_t Process::Read(std::span<std::byte> to) {
    std::size_t done = 0;
    while (done < to.size()) {
        const ssize_t got = ReadSome(m_pipe, to.data() + done, to.size() - done);
        if (got <= 0) break;
        done += static_cast<std::size_t>(got);
    }
    return done;
}

bool Process::Write(std::span<const std::byte> from) {
    const NoPipeSignal guard;
    while (!from.empty()) {
        const ssize_t written = write(m_pipe, from.data(), from.size());
        if (written < 0 && errno == EINTR) continue;
        if (written <= 0) return false;
        from = from.subspan(static_cast<std::size_t>(written));
    }
    return true;
}

int Process::Wait() {
    if (!m_running) return m_status;
    ClosePipe();
    int status = 0;
    while (waitpid(m_child, &status, 0) < 0 && errno == EINTR) {
    }
    m_status = WIFSIGNALED(status) ? -WTERMSIG(status) : WEXITSTATUS(status);
    m_running = false;
    m_listener.join();
    close(m_errors);
    return m_status;
}

std::string Process::Complaint() const {
    std::string line;
    {
        const std::lock_guard lock(m_mutex);
        line = m_said.substr(0, m_said.find('\n'));
    }
    // "[h264 @ 0x5581c2a3f0c0] text"
    while (line.starts_with('[') && line.find("] ") != std::string::npos)
        line.erase(0, line.find("] ") + 2);
    return OneLine(line);
}

std::string Process::EndText() const {
    if (m_status < 0) return m_name + " was ended by signal " + std::to_string(-m_status);
    const std::string said = Complaint();
    return m_name +
           (said.empty() ? " failed with status " + std::to_string(m_status) : " says: " + said);
}

std::string OutputOf(std::vector<std::string> command, const std::string& what) {
    Process process(std::move(command), Process::FromChild);
    std::string output;
    std::array<std::byte, 65536> some;
    while (const std::size_t got = process.Read(some))
        output.append(reinterpret_cast<const char*>(some.data()), got);
    if (process.Wait() != 0) throw Error(ErrorKind::Input, what + " (" + process.EndText() + ")");
    return output;
}

}  // namespace zel
