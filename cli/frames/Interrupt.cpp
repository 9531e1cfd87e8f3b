#include "cli/frames/Interrupt.h"

#include "cli/picture/TemporaryFile.h"

#include <array>
#include <csignal>
#include <cstdlib>

namespace zel {

namespace {

std::atomic<bool> asked = false;
std::atomic<int> askedBy = 0;
static_assert(std::atomic<bool>::is_always_lock_free && std::atomic<int>::is_always_lock_free,
              "used in a signal handler");

#if !defined(_WIN32)

constexpr std::array kSignals{SIGINT, SIGTERM, SIGHUP};
std::array<struct sigaction, kSignals.size()> before;

void EndNow(int signal) {
    RemoveTemporaryFiles();
    std::signal(signal, SIG_DFL);
    std::raise(signal);  // blocked while it is handled, so it ends the program on return
}

void OnSignal(int signal) {
    askedBy = signal;
    if (asked.exchange(true)) EndNow(signal);
}

#endif

}  // namespace

#if defined(_WIN32)

InterruptGuard::InterruptGuard(Patience) {}
InterruptGuard::~InterruptGuard() {}

#else

InterruptGuard::InterruptGuard(Patience patience) {
    asked = patience == AtOnce;
    for (std::size_t i = 0; i < kSignals.size(); ++i) {
        struct sigaction action {};
        action.sa_handler = OnSignal;
        action.sa_flags = SA_RESTART;
        sigaction(kSignals[i], nullptr, &before[i]);
        if (before[i].sa_handler != SIG_IGN) sigaction(kSignals[i], &action, nullptr);
    }
}

InterruptGuard::~InterruptGuard() {
    for (std::size_t i = 0; i < kSignals.size(); ++i) sigaction(kSignals[i], &before[i], nullptr);
}

#endif

const std::atomic<bool>& InterruptGuard::Asked() { return asked; }

int InterruptGuard::Signal() { return askedBy; }

void Interrupted::EndProgram() const {
    std::signal(m_signal, SIG_DFL);
    std::raise(m_signal);
    std::_Exit(128 + m_signal);
}

}  // namespace zel
