#include "host/CAEFx.h"

#include "abi/Layout.h"
#include "host/PixelFormatSuite.h"
#include "host/Suites.h"
#include "ip/IpTables.h"

#include <cstdint>

#if defined(__APPLE__) && ZEL_ABI_32
extern "C" void DisposeHandle(PF_Handle);  // Carbon
#endif

using zel::PixelFormatSuite;

namespace {

/// The host's packed version number.
A_u_long PackVersion(const CAEFx& effect) {
    const auto field = [](std::int32_t value, A_u_long mask, int shift) {
        return (static_cast<A_u_long>(value) & mask) << shift;
    };
    return field(effect.m_nVersion, 7, 19) | field(effect.m_nSubVersion, 15, 15) |
           field(effect.m_nBugVersion, 15, 11) | field(effect.m_nStage, 3, 9) |
           field(effect.m_nBuild, 0x1FF, 0);
}

/// Low 32 bits of an address, as the int that a %d conversion takes.
int AddressAsInt(const void* p) {
    return static_cast<int>(static_cast<std::uint32_t>(reinterpret_cast<std::uintptr_t>(p)));
}

void DisposeSequenceData(PF_InData* in_data) {
    if (in_data->utils->host_dispose_handle)
        in_data->utils->host_dispose_handle(in_data->sequence_data);
#if defined(__APPLE__) && ZEL_ABI_32
    else
        DisposeHandle(in_data->sequence_data);
#endif
}

}  // namespace

CAEFx::CAEFx() : m_nVersion(0), m_nSubVersion(0), m_nBugVersion(0), m_nStage(0), m_nBuild(1) {
    m_szName[0] = m_szDescription[0] = m_szMajorVersion[0] = m_szMinorVersion[0] = '\0';
}

CAEFx::~CAEFx() = default;

PF_Err CAEFx::Main(int cmd, PF_InData* in_data, PF_OutData* out_data, PF_ParamDef* params[],
                   PF_LayerDef* output, void* extra) {
    switch (cmd) {
        case PF_Cmd_ABOUT: return About(in_data, out_data, params, output, extra);
        case PF_Cmd_GLOBAL_SETUP: return GlobalSetup(in_data, out_data, params, output, extra);
        case PF_Cmd_GLOBAL_SETDOWN: return GlobalSetdown(in_data, out_data, params, output, extra);
        case PF_Cmd_PARAMS_SETUP: return ParamsSetup(in_data, out_data, params, output, extra);
        case PF_Cmd_SEQUENCE_SETUP: return SequenceSetup(in_data, out_data, params, output, extra);
        case PF_Cmd_SEQUENCE_RESETUP:
            return SequenceResetup(in_data, out_data, params, output, extra);
        case PF_Cmd_SEQUENCE_SETDOWN:
            return SequenceSetdown(in_data, out_data, params, output, extra);
        case PF_Cmd_RENDER: return Render(in_data, out_data, params, output, extra);
        default: return PF_Err_NONE;
    }
}

PF_Err CAEFx::About(PF_InData* in_data, PF_OutData* out_data, PF_ParamDef*[], PF_LayerDef*, void*) {
    // Deliberate: the two numbers are the addresses of the version texts.
    // docs/quirks.md, "About numbers".
    in_data->utils->ansi.sprintf(out_data->return_msg, "%s, v%d.%d\r%s", m_szName,
                                 AddressAsInt(m_szMajorVersion), AddressAsInt(m_szMinorVersion),
                                 m_szDescription);
    return PF_Err_NONE;
}

PF_Err CAEFx::GlobalSetup(PF_InData* in_data, PF_OutData* out_data, PF_ParamDef*[], PF_LayerDef*,
                          void*) {
    IpInitialize();
    out_data->my_version = PackVersion(*this);
    out_data->out_flags = PF_OutFlag_CUSTOM_UI | PF_OutFlag_PIX_INDEPENDENT;

    const AEGP_SuiteHandler suites(in_data->pica_basicP);
    if (PixelFormatSuite formats{in_data, out_data}) {
        formats->ClearSupportedPixelFormats(in_data->effect_ref);
        for (int i = 0; i < QueryPixelFormatCount(); ++i)
            formats->AddSupportedPixelFormat(in_data->effect_ref, QueryPixelFormat(i));
        formats.Release();
    } else {
        // The plain assignment also takes back the failed acquire's display flag, so
        // After Effects shows no message.
        out_data->out_flags = PF_OutFlag_DEEP_COLOR_AWARE | PF_OutFlag_PIX_INDEPENDENT;
    }
    return PF_Err_NONE;
}

PF_Err CAEFx::GlobalSetdown(PF_InData* in_data, PF_OutData*, PF_ParamDef*[], PF_LayerDef*, void*) {
    const AEGP_SuiteHandler suites(in_data->pica_basicP);
    IpFinalize();
    return PF_Err_NONE;
}

PF_Err CAEFx::SequenceSetup(PF_InData*, PF_OutData*, PF_ParamDef*[], PF_LayerDef*, void*) {
    return PF_Err_NONE;
}

PF_Err CAEFx::SequenceSetdown(PF_InData* in_data, PF_OutData* out_data, PF_ParamDef*[],
                              PF_LayerDef*, void*) {
    if (in_data->sequence_data) {
        DisposeSequenceData(in_data);
        out_data->sequence_data = nullptr;
    }
    return PF_Err_NONE;
}

PF_Err CAEFx::SequenceResetup(PF_InData* in_data, PF_OutData* out_data, PF_ParamDef* params[],
                              PF_LayerDef* output, void* extra) {
    if (in_data->sequence_data) return PF_Err_NONE;
    return SequenceSetup(in_data, out_data, params, output, extra);
}

int CAEFx::QueryGuiElementCount() { return 0; }

const AEFxGuiElement* CAEFx::QueryGuiElement(int) { return nullptr; }

int CAEFx::QueryPixelFormatCount() { return 0; }

PrPixelFormat CAEFx::QueryPixelFormat(int) { return PrPixelFormat_Invalid; }

int CAEFx::RenderLocal(float*, int, PrPixelFormat, void*, int, void*, int, int, int) { return 0; }
