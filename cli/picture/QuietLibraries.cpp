#include "cli/picture/QuietLibraries.h"

#include <mutex>

#if !defined(_WIN32)
#include <fcntl.h>
#include <unistd.h>
#endif

namespace zel {

#if defined(_WIN32)

QuietLibraries::QuietLibraries() {}
QuietLibraries::~QuietLibraries() {}

#else

namespace {

std::mutex mutex;
int holders = 0;
int savedStderr = -1;

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

#endif

}  // namespace zel
