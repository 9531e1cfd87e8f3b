#include "headless/EffectProcess.h"

#include "abi/HostCodes.h"
#include "headless/Error.h"

#if defined(__linux__)

#include "headless/Processes.h"
#include "headless/SharedFrames.h"

#include <signal.h>
#include <sys/mman.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <new>
#include <vector>

namespace zel {

namespace {

constexpr PF_Cmd kLoading = -1;

/// Status of a process that cannot say what is wrong.
constexpr int kSpeechless = 1;

// First number of what the process says after the set-up; else the kind of an Error.
constexpr std::int32_t kReady = 0;

}  // namespace

/// The two processes' connection.
struct EffectProcess::Link {
    std::filesystem::path module;
    Personality personality;
    Isolation isolation;
    Ends ends = Socket();
    PF_Cmd* running = nullptr;  // in memory of both: the command that the effect is at
    int process = -1;

    ~Link() {
        if (running) munmap(running, sizeof *running);
    }

    /// One line about a process that was not to end, or not yet.
    std::string Told(const Ending& ending, PF_Cmd command, const std::string& where) const;
};

// --- in the process of the effect -------------------------------------------------

namespace {

/// Where a signal handler leaves the address that was touched; null before a render.
std::uintptr_t* faultPlace = nullptr;

extern "C" void NoteFault(int signal, siginfo_t* info, void*) {
    const bool byAccess = info->si_code > 0;  // and not sent by a program
    if (faultPlace && byAccess) *faultPlace = reinterpret_cast<std::uintptr_t>(info->si_addr);
    raise(signal);  // ends the process when this handler returns: it is set for one time
}

void WatchFaults() {
    static std::array<char, 64 * 1024> stack;  // the effect may have used up the usual one
    stack_t alternative{};
    alternative.ss_sp = stack.data();
    alternative.ss_size = stack.size();
    sigaltstack(&alternative, nullptr);
    struct sigaction action {};
    action.sa_sigaction = NoteFault;
    action.sa_flags = static_cast<int>(SA_SIGINFO | SA_ONSTACK | SA_RESETHAND);
    for (const int signal : {SIGSEGV, SIGBUS}) sigaction(signal, &action, nullptr);
}

bool SayReady(int host, const EffectSession& session) {
    std::vector<PF_ParamDef> records;
    for (const Parameter& p : session.Params().All()) records.push_back(p.def);
    return WriteAll(host, &kReady, sizeof kReady) && WriteList(host, session.Name()) &&
           WriteList(host, records) && WriteList(host, session.Formats());
}

bool SayError(int host, const Error& error) {
    const auto kind = static_cast<std::int32_t>(error.Kind());
    return WriteAll(host, &kind, sizeof kind) && WriteList(host, std::string(error.what()));
}

/// Runs `render` in a process of its own and tells `host` how that ended.
template <class Render>
void Keep(int host, std::chrono::seconds limit, Render render) {
    Ends pipe = Pipe();
    const pid_t renderer = pipe.ours.IsOpen() ? fork() : -1;
    if (renderer == 0) {
        close(host);
        pipe.ours.Close();
        render();
        _exit(0);
    }
    Ending ending{.notStarted = renderer < 0 ? errno : 0};
    pipe.theirs.Close();
    if (renderer > 0) ending = AwaitEnd(renderer, pipe.ours.Number(), limit);
    WriteAll(host, &ending, sizeof ending);
}

}  // namespace

void EffectProcess::RenderShared(const EffectSession& session, int descriptor) {
    auto mapped = MapRender(descriptor);
    close(descriptor);
    if (!mapped) _exit(kSpeechless);
    RenderExchange& exchange = mapped->exchange;
    const auto setText = [&](const std::string& text) {
        exchange.text[text.copy(exchange.text, sizeof exchange.text - 1)] = '\0';
    };
    faultPlace = &exchange.fault;
    try {
        const RenderResult result =
            session.Render(mapped->destination, mapped->source, mapped->records);
        setText(result.message);
        exchange.code = result.code;
        exchange.state = RenderExchange::State::Answered;
    } catch (const std::exception& e) {
        setText(e.what());
        exchange.state = RenderExchange::State::Threw;
    }
}

/// The life of the process: set-up, renders until the host closes its end, set-down.
void EffectProcess::Serve(Link& link) {
    setpgid(0, 0);  // what the terminal sends is for the host alone
    // An effect that calls exit() must not run what the host has registered for its end.
    std::atexit([] { _exit(kSpeechless); });
    WatchFaults();
    link.ends.ours.Close();
    const int host = link.ends.theirs.Number();
    try {
        const EffectSession session(link.module, link.personality, nullptr, link.running);
        if (!SayReady(host, session)) _exit(kSpeechless);
        std::vector<pid_t> keepers;
        for (Descriptor frames, reply; ReceiveDescriptors(host, frames, reply);) {
            const pid_t keeper = fork();
            if (keeper == 0) {
                close(host);
                Keep(reply.Number(), link.isolation.limit,
                     [&] { RenderShared(session, frames.Number()); });
                _exit(0);
            }
            const Ending failed{.notStarted = errno};
            if (keeper < 0) WriteAll(reply.Number(), &failed, sizeof failed);
            if (keeper > 0) keepers.push_back(keeper);
            std::erase_if(keepers, [](pid_t k) { return waitpid(k, nullptr, WNOHANG) == k; });
            frames.Close();
            reply.Close();
        }
    } catch (const Error& e) {
        _exit(SayError(host, e) ? 0 : kSpeechless);
    } catch (const std::exception& e) {
        _exit(SayError(host, Error(ErrorKind::Other, e.what())) ? 0 : kSpeechless);
    }
    _exit(0);
}

// --- in the process of the host ---------------------------------------------------

std::string EffectProcess::Link::Told(const Ending& ending, PF_Cmd command,
                                      const std::string& where) const {
    const std::string during =
        command == kLoading ? "while it was loaded" : "in " + CommandName(command);
    std::string line = "'" + module.string() + "' ";
    if (ending.notStarted)
        return line + "cannot have a process: " + std::strerror(ending.notStarted);
    if (ending.timedOut)
        line += (command == kLoading ? "was not loaded"
                                     : "did not return from " + CommandName(command)) +
                " within " + std::to_string(isolation.limit.count()) +
                (isolation.limit.count() == 1 ? " second" : " seconds");
    else if (WIFSIGNALED(ending.status))
        line += "crashed " + during + " (" + SignalName(WTERMSIG(ending.status)) + ")";
    else
        line += "ended its process " + during;
    return where.empty() ? line : line + ": it reached " + where;
}

EffectProcess::EffectProcess(const std::filesystem::path& module, Personality personality,
                             const Isolation& isolation, Description& description)
    : m_link(new Link{module, personality, isolation}) {
    const auto fail = [](const char* what) {
        throw Error(ErrorKind::Other, std::string(what) + ": " + std::strerror(errno));
    };
    if (!m_link->ends.ours.IsOpen()) fail("no socket to an effect");
    void* shared =
        mmap(nullptr, sizeof(PF_Cmd), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    if (shared == MAP_FAILED) fail("no memory to share with an effect");
    m_link->running = new (shared) PF_Cmd(kLoading);
    std::fflush(nullptr);  // the new process must not hold text that is still to be printed
    m_link->process = fork();
    if (m_link->process == 0) Serve(*m_link);
    m_link->ends.theirs.Close();
    if (m_link->process < 0) fail("no process for an effect");

    const int effect = m_link->ends.ours.Number();
    std::int32_t kind = kReady;
    std::string error;
    std::vector<PF_ParamDef> records;
    Registration& registration = description.registration;
    const bool answered = Readable(effect, isolation.limit) && ReadAll(effect, &kind, sizeof kind);
    if (answered && kind == kReady && ReadList(effect, description.name) &&
        ReadList(effect, records) && ReadList(effect, registration.formats)) {
        for (const PF_ParamDef& record : records) registration.parameters.Add(record);
        return;
    }
    const bool explained = answered && kind != kReady && ReadList(effect, error);
    const Ending ending = AwaitEnd(m_link->process, effect, std::chrono::seconds(0));
    if (explained) throw Error(static_cast<ErrorKind>(kind), error);
    throw Error(ErrorKind::Module, m_link->Told(ending, *m_link->running, ""));
}

EffectProcess::~EffectProcess() {
    const int effect = m_link->ends.ours.Number();
    shutdown(effect, SHUT_WR);
    const Ending ending = AwaitEnd(m_link->process, effect, m_link->isolation.limit);
    const bool good =
        !ending.timedOut && WIFEXITED(ending.status) && WEXITSTATUS(ending.status) == 0;
    if (!good && m_link->isolation.note)
        m_link->isolation.note(m_link->Told(ending, *m_link->running, ""));
}

RenderResult EffectProcess::Render(Frame& destination, const Frame& source,
                                   std::span<const PF_ParamDef> records) const {
    const SharedRender shared(destination, source, records);
    Ends reply = Pipe();
    if (!reply.ours.IsOpen())
        throw Error(ErrorKind::Other, std::string("no pipe to an effect: ") + std::strerror(errno));
    Ending ending;
    const bool sent =
        SendDescriptors(m_link->ends.ours.Number(), shared.Descriptor(), reply.theirs.Number());
    reply.theirs.Close();
    if (!sent || !ReadAll(reply.ours.Number(), &ending, sizeof ending))
        throw Error(ErrorKind::Module,
                    "'" + m_link->module.string() + "' has lost its process before RENDER");

    const RenderExchange& exchange = shared.Exchange();
    const std::string text(exchange.text, strnlen(exchange.text, sizeof exchange.text));
    if (exchange.state == RenderExchange::State::None || ending.timedOut)
        throw Error(ErrorKind::Module, m_link->Told(ending, PF_Cmd_RENDER, shared.FaultNear()));
    if (exchange.state == RenderExchange::State::Threw) throw Error(ErrorKind::Module, text);
    if (const std::string where = shared.WrittenOutside(destination); !where.empty())
        throw Error(ErrorKind::Module, "'" + m_link->module.string() +
                                           "' wrote outside its frame in RENDER: " + where);
    shared.CopyTo(destination);
    return {exchange.code, text};
}

}  // namespace zel

#else

namespace zel {

struct EffectProcess::Link {};

EffectProcess::EffectProcess(const std::filesystem::path&, Personality, const Isolation&,
                             Description&) {
    throw Error(ErrorKind::Usage, "effects run in processes of their own on Linux only");
}
EffectProcess::~EffectProcess() = default;
RenderResult EffectProcess::Render(Frame&, const Frame&, std::span<const PF_ParamDef>) const {
    return {};
}

}  // namespace zel

#endif
