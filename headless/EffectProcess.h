#pragma once

/// An effect in a process of its own.
///
/// The process is forked from the host's, loads the module and takes it through its
/// set-up. For every render it forks twice: a keeper, which waits no longer than the limit
/// and tells how it ended, and below it the process that renders, into memory shared with
/// the host. So renders may run side by side, and one that crashes, hangs or scribbles
/// over memory takes nothing with it: the next one starts from the state after the set-up.
/// An effect that starts threads in its set-up and needs them in its render does not work
/// this way, since a forked process has none of them.

#include "headless/EffectSession.h"

#include <filesystem>
#include <memory>
#include <span>
#include <string>

namespace zel {

class EffectProcess {
public:
    /// What the host has to know of the effect after its set-up.
    struct Description {
        std::string name;
        Registration registration;
    };

    /// Best started before other threads are: the new process has the calling one alone.
    /// Throws Error(Module) when the set-up fails or does not return, Error(Other) when
    /// there can be no process; on systems other than Linux always, Error(Usage).
    EffectProcess(const std::filesystem::path& module, Personality personality,
                  const Isolation& isolation, Description& description);

    /// Has the effect set down; Isolation::note is told when that fails.
    ~EffectProcess();

    EffectProcess(const EffectProcess&) = delete;
    EffectProcess& operator=(const EffectProcess&) = delete;

    /// As EffectSession::Render(). Throws Error(Module) too when the effect crashes, does
    /// not return, ends its process or writes outside the pixels of `destination`, which
    /// then is as it was.
    RenderResult Render(Frame& destination, const Frame& source,
                        std::span<const PF_ParamDef> records) const;

private:
    struct Link;

    [[noreturn]] static void Serve(Link& link);
    static void RenderShared(const EffectSession& session, int descriptor);

    std::unique_ptr<Link> m_link;
};

}  // namespace zel
