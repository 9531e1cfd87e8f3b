/// zelfx: the effects on the command line.

#include "cli/Options.h"
#include "cli/frames/Interrupt.h"
#include "cli/picture/QuietLibraries.h"
#include "cli/picture/TemporaryFile.h"
#include "cli/verbs/Verbs.h"
#include "headless/Error.h"

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <iostream>
#include <new>

#if !defined(_WIN32)
#include <unistd.h>
#include <csignal>
#endif

namespace {

/// Results that could not be printed, on a full disk for instance, are no success.
void FlushResults() {
    std::cout.flush();
    if (std::fflush(stdout) != 0 || std::ferror(stdout) || !std::cout)
        throw zel::Error(zel::ErrorKind::Other, "cannot write to standard output");
}

bool returned = false;

/// An effect that calls exit() must not look like success, nor leave half a file; the JPEG
/// library calls it when memory runs out.
void RefuseEarlyExit() {
    if (returned) return;
    zel::RemoveTemporaryFiles();
    zel::WriteToStderr("zelfx: the effect has ended the program\n");
    std::_Exit(static_cast<int>(zel::ErrorKind::Module));
}

/// Out of memory where nobody can know, so that not even the libraries' own set-down may
/// run: one of them ends the program by a signal then.
[[noreturn]] void EndWithoutMemory() {
    zel::RemoveTemporaryFiles();
    zel::WriteToStderr("zelfx: out of memory\n");
    std::_Exit(static_cast<int>(zel::ErrorKind::Other));
}

/// True since an operator new of this thread has failed.
thread_local bool memoryRanOut = false;

void NoMemory() {
    memoryRanOut = true;
    throw std::bad_alloc();
}

/// Some libraries, the standard one too, throw where nothing may be thrown. They do not
/// always catch it first: then it has no type here.
[[noreturn]] void OnTerminate() {
    try {
        if (std::current_exception()) throw;
        if (std::uncaught_exceptions() > 0 && memoryRanOut) EndWithoutMemory();
    } catch (const std::bad_alloc&) {
        EndWithoutMemory();
    } catch (...) {
    }
    std::abort();
}

#if !defined(_WIN32)

struct Crash {
    int signal;
    const char* told;
    struct sigaction before = {};
};

// clang-format off
Crash crashes[] = {
    {SIGSEGV, "zelfx: crashed (SIGSEGV); --isolate tells of an effect that does\n"},
    {SIGBUS,  "zelfx: crashed (SIGBUS); --isolate tells of an effect that does\n"},
    {SIGFPE,  "zelfx: crashed (SIGFPE); --isolate tells of an effect that does\n"},
    {SIGILL,  "zelfx: crashed (SIGILL); --isolate tells of an effect that does\n"},
    {SIGABRT, "zelfx: crashed (SIGABRT); --isolate tells of an effect that does\n"},
};
// clang-format on
pid_t ownProcess = 0;

/// Leaves no half file, and the rest to what there was before: the fault happens again, or
/// the signal comes again.
void OnCrash(int signal, siginfo_t* facts, void*) {
    for (const Crash& crash : crashes) {
        if (crash.signal != signal) continue;
        sigaction(signal, &crash.before, nullptr);
        if (facts->si_code <= 0) std::raise(signal);  // sent, not a fault; on return
        if (getpid() != ownProcess) return;           // the files are not a forked process's
        zel::RemoveTemporaryFiles();
        zel::WriteToStderrInHandler(crash.told);
    }
}

void TidyUpAfterCrashes() {
    ownProcess = getpid();
    struct sigaction action = {};
    action.sa_sigaction = OnCrash;
    action.sa_flags = SA_SIGINFO;
    for (Crash& crash : crashes) sigaction(crash.signal, &action, &crash.before);
}

#else

void TidyUpAfterCrashes() {}

#endif

int Run(int argc, char** argv) {
    try {
        const int status = zel::RunVerbs(zel::AllVerbs(), argc, argv);
        FlushResults();
        return status;
    } catch (const zel::Error& e) {
        std::cerr << "zelfx: " << e.what() << '\n';
        return static_cast<int>(e.Kind());
    } catch (const zel::Interrupted& e) {
        std::cerr << "zelfx: " << e.what() << std::endl;
        e.EndProgram();
    } catch (const std::bad_alloc&) {
        EndWithoutMemory();
    } catch (const std::exception& e) {
        std::cerr << "zelfx: unexpected: " << e.what() << '\n';
    }
    return static_cast<int>(zel::ErrorKind::Other);
}

}  // namespace

int main(int argc, char** argv) {
    std::atexit(RefuseEarlyExit);
    TidyUpAfterCrashes();
    std::set_new_handler(NoMemory);
    std::set_terminate(OnTerminate);
    const int status = Run(argc, argv);
    returned = true;
    return status;
}
