#include "headless/EffectSession.h"

#include "abi/HostCodes.h"
#include "headless/EffectProcess.h"
#include "headless/Error.h"
#include "headless/Text.h"

#include <algorithm>
#include <exception>
#include <vector>

namespace zel {

namespace {

struct NamedCommand {
    PF_Cmd command;
    const char* name;
};

constexpr NamedCommand kCommands[] = {
    {PF_Cmd_ABOUT, "ABOUT"},
    {PF_Cmd_GLOBAL_SETUP, "GLOBAL_SETUP"},
    {PF_Cmd_GLOBAL_SETDOWN, "GLOBAL_SETDOWN"},
    {PF_Cmd_PARAMS_SETUP, "PARAMS_SETUP"},
    {PF_Cmd_SEQUENCE_SETUP, "SEQUENCE_SETUP"},
    {PF_Cmd_SEQUENCE_SETDOWN, "SEQUENCE_SETDOWN"},
    {PF_Cmd_RENDER, "RENDER"},
};

std::string MessageOf(const PF_OutData& out) {
    return {std::begin(out.return_msg), std::ranges::find(out.return_msg, '\0')};
}

/// After Effects does not ask an effect for formats: an effect takes 8 bits, and 16
/// when it says that it is aware of deep colour.
std::vector<PrPixelFormat> AfterEffectsFormats(const PF_OutData& out) {
    std::vector<PrPixelFormat> formats{PrPixelFormat_ARGB_4444_8u};
    if (out.out_flags & PF_OutFlag_DEEP_COLOR_AWARE) formats.push_back(PrPixelFormat_ARGB_4444_16u);
    return formats;
}

HostWorld MakeWorld(Frame& frame) {
    HostWorld world{};
    world.layer.world_flags = PF_WorldFlag_WRITEABLE;
    if (frame.Format().sample == SampleType::U16) world.layer.world_flags |= PF_WorldFlag_DEEP;
    world.layer.data = reinterpret_cast<decltype(world.layer.data)>(frame.Row(0));
    world.layer.rowbytes = frame.RowBytes();
    world.layer.width = frame.Width();
    world.layer.height = frame.Height();
    // The rectangle's members differ in width between the interface's generations.
    using Side = decltype(PF_Rect::right);
    world.layer.extent_hint.right = static_cast<Side>(frame.Width());
    world.layer.extent_hint.bottom = static_cast<Side>(frame.Height());
    world.format = frame.Format().code;
    return world;
}

}  // namespace

std::string CommandName(PF_Cmd command) {
    const auto* found = std::ranges::find(kCommands, command, &NamedCommand::command);
    return found == std::end(kCommands) ? std::to_string(command) : found->name;
}

EffectSession::EffectSession(const std::filesystem::path& module, Personality personality,
                             const std::optional<Isolation>& isolation)
    : EffectSession(module, personality, isolation ? &*isolation : nullptr, nullptr) {}

EffectSession::EffectSession(const std::filesystem::path& module, Personality personality,
                             const Isolation* isolation, PF_Cmd* running)
    : m_file(module), m_personality(personality), m_running(running) {
    if (isolation) {
        EffectProcess::Description effect;
        m_process = std::make_unique<EffectProcess>(module, personality, *isolation, effect);
        m_name = std::move(effect.name);
        m_registration = std::move(effect.registration);
        return;
    }
    m_module.emplace(module);
    try {
        SetUp();
    } catch (...) {
        SetDown();
        throw;
    }
}

EffectSession::~EffectSession() { SetDown(); }

void EffectSession::SetDown() {
    for (; !m_owed.empty(); m_owed.pop_back()) {
        try {
            PF_InData in = MakeInData();
            Send(m_owed.back(), in, m_out, nullptr, nullptr);
        } catch (const Error&) {
            // Whoever ends the session has its pictures, or a better reason to fail.
        }
    }
}

/// Records for a command, with the data that the effect keeps for its life.
PF_InData EffectSession::MakeInData() const {
    PF_InData in = zel::MakeInData(m_personality, m_registration);
    in.global_data = m_out.global_data;
    in.sequence_data = m_out.sequence_data;
    return in;
}

void EffectSession::SetUp() {
    const auto send = [this](PF_Cmd command) {
        PF_InData in = MakeInData();
        m_out.return_msg[0] = '\0';
        const PF_Err code = Send(command, in, m_out, nullptr, nullptr);
        if (code == PF_Err_NONE) return;
        const std::string message = OneLine(MessageOf(m_out));
        throw Error(ErrorKind::Module,
                    "'" + File().string() + "' answered " + CommandName(command) + " with error " +
                        std::to_string(code) + (message.empty() ? "" : ": " + message));
    };
    send(PF_Cmd_GLOBAL_SETUP);
    m_owed.push_back(PF_Cmd_GLOBAL_SETDOWN);
    if (m_personality == Personality::AfterEffects)
        m_registration.formats = AfterEffectsFormats(m_out);
    send(PF_Cmd_PARAMS_SETUP);
    send(PF_Cmd_ABOUT);
    // "NAME, vVERSION" and a second line with the description.
    const std::string about = MessageOf(m_out);
    const std::string title = about.substr(0, about.find_first_of("\r\n"));
    m_name = title.substr(0, title.rfind(", v"));
    send(PF_Cmd_SEQUENCE_SETUP);
    m_owed.push_back(PF_Cmd_SEQUENCE_SETDOWN);
}

PF_Err EffectSession::Send(PF_Cmd command, PF_InData& in, PF_OutData& out, PF_ParamDef** params,
                           PF_LayerDef* output) const {
    if (m_running) *m_running = command;
    std::string thrown;
    try {
        return m_module->Entry()(command, &in, &out, params, output, nullptr);
    } catch (int code) {
        thrown = "the number " + std::to_string(code);
    } catch (const std::exception& e) {
        thrown = OneLine(e.what());
    } catch (...) {
        thrown = "an object of unknown type";
    }
    throw Error(ErrorKind::Module,
                "'" + File().string() + "' threw out of " + CommandName(command) + ": " + thrown);
}

void EffectSession::RequireFormat(const FormatFacts& format) const {
    const auto formats = Formats();
    if (std::ranges::find(formats, format.code) != formats.end()) return;
    std::vector<std::string> taken;
    for (const PrPixelFormat f : formats)
        for (const FormatFacts& known : KnownFormats())
            if (known.code == f) taken.emplace_back(known.name);
    throw Error(ErrorKind::Module,
                m_name + " takes no " + std::string(format.name) + " frames from " +
                    (m_personality == Personality::Premiere ? "Premiere" : "After Effects") +
                    "; it takes " +
                    (taken.empty() ? "none that are known here" : Alternatives(taken)));
}

RenderResult EffectSession::Render(Frame& destination, Frame& source,
                                   const ParameterValues& values) const {
    return m_process ? m_process->Render(destination, source, values.Records())
                     : Render(destination, source, values.Records());
}

RenderResult EffectSession::Render(Frame& destination, Frame& source,
                                   std::span<const PF_ParamDef> values) const {
    HostWorld input = MakeWorld(source), output = MakeWorld(destination);

    // Parameter 0 is the input layer; the list ends with a null pointer.
    std::vector<PF_ParamDef> records(1);
    records[0].param_type = PF_Param_LAYER;
    records[0].u.ld = input.layer;
    records.insert(records.end(), values.begin(), values.end());
    std::vector<PF_ParamDef*> params;
    for (PF_ParamDef& record : records) params.push_back(&record);
    params.push_back(nullptr);

    PF_InData in = MakeInData();
    in.width = destination.Width();
    in.height = destination.Height();
    in.extent_hint = output.layer.extent_hint;
    PF_OutData out{};
    const PF_Err code = Send(PF_Cmd_RENDER, in, out, params.data(), &output.layer);
    return {code, MessageOf(out)};
}

}  // namespace zel
