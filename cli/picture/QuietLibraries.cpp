#include "cli/picture/QuietLibraries.h"

#include <cstdio>
#include <cstdlib>
#include <mutex>

#if !defined(_WIN32)
#include <fcntl.h>
#include <unistd.h>
#endif

namespace zel {

#if defined(_WIN32)

QuietLibraries::QuietLibraries() {}
QuietLibraries::~QuietLibraries() {}

void WriteToStderr(std::string_view text) { std::fwrite(text.data(), 1, text.size(), stderr); }
void WriteToStderrInHandler(std::string_view text) { WriteToStderr(text); }
bool StderrIsTerminal() { return false; }

#else

namespace {

std::mutex mutex;
int holders = 0;
int savedStderr = -1;

int RealStderr() { return savedStderr >= 0 ? savedStderr : STDERR_FILENO; }

}  // namespace

QuietLibraries::QuietLibraries() {
    const std::lock_guard lock(mutex);
    if (holders++ > 0) return;
    const int nowhere = open("/dev/null", O_WRONLY | O_CLOEXEC);
    if (nowhere < 0) return;
    savedStderr = fcntl(STDERR_FILENO, F_DUPFD_CLOEXEC, 3);
    if (savedStderr >= 0) dup2(nowhere, STDERR_FILENO);
    close(nowhere);
}

QuietLibraries::~QuietLibraries() {
    const std::lock_guard lock(mutex);
    if (--holders > 0 || savedStderr < 0) return;
    dup2(savedStderr, STDERR_FILENO);
    close(savedStderr);
    savedStderr = -1;
}

void WriteToStderr(std::string_view text) {
    const std::lock_guard lock(mutex);
    while (!text.empty()) {
        const ssize_t written = write(RealStderr(), text.data(), text.size());
        if (written <= 0) return;  // nowhere left to say so
        text.remove_prefix(static_cast<std::size_t>(written));
    }
}

void WriteToStderrInHandler(std::string_view text) {
    if (write(RealStderr(), text.data(), text.size()) < 0) return;  // nowhere left to say so
}

bool StderrIsTerminal() {
    const std::lock_guard lock(mutex);
    const char* kind = std::getenv("TERM");
    return isatty(RealStderr()) && kind && std::string_view(kind) != "dumb";
}

#endif

}  // namespace zel
