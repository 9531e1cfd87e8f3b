#pragma once

/// One effect in use: a loaded module taken through its life by the commands that an
/// editor sends.

#include "headless/Frame.h"
#include "headless/HostRecords.h"
#include "headless/Isolation.h"
#include "headless/Module.h"
#include "headless/Parameters.h"

#include <filesystem>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace zel {

/// What a render command came back with.
struct RenderResult {
    PF_Err code;
    std::string message;  // left by the effect for the user; may be empty
};

/// "RENDER"; the number of a command that is never sent here.
std::string CommandName(PF_Cmd command);

class EffectProcess;

class EffectSession {
public:
    /// Loads the module and sends GLOBAL_SETUP, PARAMS_SETUP, ABOUT and SEQUENCE_SETUP;
    /// with `isolation` in a process of its own, where the system has it. Throws
    /// Error(Module) when any of them fails.
    EffectSession(const std::filesystem::path& module, Personality personality,
                  const std::optional<Isolation>& isolation = {});

    /// Sends SEQUENCE_SETDOWN and GLOBAL_SETDOWN, as far as their set-up went well.
    ~EffectSession();

    EffectSession(const EffectSession&) = delete;
    EffectSession& operator=(const EffectSession&) = delete;

    const std::filesystem::path& File() const { return m_file; }
    Personality Host() const { return m_personality; }

    /// The effect's own name, from its About text: "ZEL Color Balance".
    const std::string& Name() const { return m_name; }

    const Parameters& Params() const { return m_registration.parameters; }

    /// Pixel formats that the effect takes from this host, in its order of preference.
    std::span<const PrPixelFormat> Formats() const { return m_registration.formats; }

    /// Throws Error(Module) when Formats() does not hold `format`.
    void RequireFormat(const FormatFacts& format) const;

    /// Sends RENDER for one frame; both frames have one format and size. Under After
    /// Effects the code may be 516 after a good render. Throws Error(Module) when an
    /// exception leaves the effect. May run on several threads at once.
    RenderResult Render(Frame& destination, Frame& source, const ParameterValues& values) const;

private:
    friend class EffectProcess;

    /// `running` is given every command before it is sent; may be null.
    EffectSession(const std::filesystem::path& module, Personality personality,
                  const Isolation* isolation, PF_Cmd* running);

    RenderResult Render(Frame& destination, Frame& source,
                        std::span<const PF_ParamDef> records) const;
    PF_InData MakeInData() const;
    PF_Err Send(PF_Cmd command, PF_InData& in, PF_OutData& out, PF_ParamDef** params,
                PF_LayerDef* output) const;
    void SetUp();
    void SetDown();

    std::filesystem::path m_file;
    Personality m_personality;
    std::optional<Module> m_module;            // in this process,
    std::unique_ptr<EffectProcess> m_process;  // or in its own
    PF_Cmd* m_running = nullptr;
    mutable Registration m_registration;  // mutable: effect_ref is a pointer to non-const
    std::string m_name;
    PF_OutData m_out{};
    std::vector<PF_Cmd> m_owed;  // set-downs that answer the set-ups so far
};

}  // namespace zel
