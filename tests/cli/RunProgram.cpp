#include "tests/cli/RunProgram.h"

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <stdexcept>
#include <utility>

namespace zel::test {

namespace {

constexpr int kNotStarted = 127;

// For programs built with the leak sanitizer: leaks that are none of ours.
constexpr const char* kLeakOptions =
    "print_suppressions=0:suppressions=" ZEL_SOURCE_ROOT "/tests/cli/leaks.supp";

std::string ContentOf(std::FILE* file) {
    std::string text;
    std::rewind(file);
    for (int c = std::fgetc(file); c != EOF; c = std::fgetc(file)) text += static_cast<char>(c);
    return text;
}

[[noreturn]] void BecomeProgram(const std::vector<std::string>& command, const RunOptions& options,
                                int out, int err) {
    const int in = open("/dev/null", O_RDONLY);
    if (!options.out.empty()) out = open(options.out.c_str(), O_WRONLY | O_CREAT, 0666);
    if (dup2(in, 0) < 0 || dup2(out, 1) < 0 || dup2(err, 2) < 0) _exit(kNotStarted);
    if (!options.folder.empty() && chdir(options.folder.c_str()) != 0) _exit(kNotStarted);
    setenv("LSAN_OPTIONS", kLeakOptions, 1);
    for (const auto& [name, value] : options.environment) setenv(name.c_str(), value.c_str(), 1);
    std::vector<char*> arguments;
    for (const std::string& word : command) arguments.push_back(const_cast<char*>(word.c_str()));
    arguments.push_back(nullptr);
    execvp(arguments[0], arguments.data());
    _exit(kNotStarted);
}

}  // namespace

// Files rather than pipes: neither side can make the other wait.
RunningProgram::RunningProgram(const std::vector<std::string>& command, const RunOptions& options)
    : m_name(command[0]), m_out(std::tmpfile()), m_err(std::tmpfile()) {
    if (!m_out || !m_err) throw std::runtime_error("no temporary file for a program's output");
    m_pid = fork();
    if (m_pid == 0) BecomeProgram(command, options, fileno(m_out), fileno(m_err));
    if (m_pid < 0) throw std::runtime_error("cannot start a child process");
}

RunningProgram::~RunningProgram() {
    if (m_pid > 0) {
        Signal(SIGKILL);
        waitpid(m_pid, nullptr, 0);
    }
    std::fclose(m_out);
    std::fclose(m_err);
}

void RunningProgram::Signal(int signal) const { kill(m_pid, signal); }

Outcome RunningProgram::Wait() {
    int status = 0;
    rusage usage{};
    const pid_t child = std::exchange(m_pid, -1);
    if (child < 0 || wait4(child, &status, 0, &usage) != child)
        throw std::runtime_error("there is no child process to wait for");
    if (WIFEXITED(status) && WEXITSTATUS(status) == kNotStarted)
        throw std::runtime_error("the program '" + m_name + "' is missing or does not start");
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status), ContentOf(m_out),
            ContentOf(m_err), usage.ru_maxrss};
}

Outcome RunProgram(const std::vector<std::string>& command, const RunOptions& options) {
    return RunningProgram(command, options).Wait();
}

}  // namespace zel::test
