#pragma once

/// The effect object behind a module's entry point: identity, dispatch of the
/// host's commands, and the handlers that do not depend on the kind of effect.
///
/// One object per module, constant after construction and shared by every instance
/// of the effect; every handler works on its stack and on the records that the host
/// passes, on whatever thread the host chooses.

#include "abi/HostCodes.h"
#include "abi/HostTypes.h"
#include "abi/PixelFormats.h"
#include "host/GuiElement.h"

#include <cstdint>

/// Values of the parameters in a render: element i of the effect's table at index i.
inline constexpr int kAEFxMaxValues = 128;

class CAEFx {
public:
    CAEFx();

    // The order of the virtual functions is part of the class's interface.

    virtual ~CAEFx();

    /// Hands `cmd` to its handler and returns the handler's result as it is; every
    /// other command returns 0. Catches nothing.
    virtual PF_Err Main(int cmd, PF_InData* in_data, PF_OutData* out_data, PF_ParamDef* params[],
                        PF_LayerDef* output, void* extra);

    /// Writes name, version and description into the host's message.
    virtual PF_Err About(PF_InData* in_data, PF_OutData* out_data, PF_ParamDef* params[],
                         PF_LayerDef* output, void* extra);

    /// Starts the image library, reports version and flags and, where the host has
    /// the pixel-format suite, declares the pixel formats. Throws the int 516 when
    /// the host gives no basic suite.
    virtual PF_Err GlobalSetup(PF_InData* in_data, PF_OutData* out_data, PF_ParamDef* params[],
                               PF_LayerDef* output, void* extra);

    /// Counterpart of GlobalSetup; throws likewise.
    virtual PF_Err GlobalSetdown(PF_InData* in_data, PF_OutData* out_data, PF_ParamDef* params[],
                                 PF_LayerDef* output, void* extra);

    /// Registers one host parameter per element. Returns the host's error, if any.
    virtual PF_Err ParamsSetup(PF_InData* in_data, PF_OutData* out_data, PF_ParamDef* params[],
                               PF_LayerDef* output, void* extra);

    /// Nothing: all state lives in the parameter values.
    virtual PF_Err SequenceSetup(PF_InData* in_data, PF_OutData* out_data, PF_ParamDef* params[],
                                 PF_LayerDef* output, void* extra);

    /// Frees sequence data, should a subclass have left any.
    virtual PF_Err SequenceSetdown(PF_InData* in_data, PF_OutData* out_data, PF_ParamDef* params[],
                                   PF_LayerDef* output, void* extra);

    /// SequenceSetup(), unless there is sequence data already.
    virtual PF_Err SequenceResetup(PF_InData* in_data, PF_OutData* out_data, PF_ParamDef* params[],
                                   PF_LayerDef* output, void* extra);

    /// Renders the input layer into `output`. 514: no output pixels, or a pixel format
    /// that the effect does not list. 516 after a good render where the host has no
    /// pixel-format suite; docs/quirks.md, "516 after a good render".
    virtual PF_Err Render(PF_InData* in_data, PF_OutData* out_data, PF_ParamDef* params[],
                          PF_LayerDef* output, void* extra);

    /// The effect's table of elements and pixel formats; callers stay in range.
    virtual int QueryGuiElementCount();
    virtual const AEFxGuiElement* QueryGuiElement(int index);
    virtual int QueryPixelFormatCount();
    virtual PrPixelFormat QueryPixelFormat(int index);

    /// Renders without any of the host's structures: `values` holds kAEFxMaxValues
    /// floats, row bytes are signed. Returns 0.
    virtual int RenderLocal(float* values, int count, PrPixelFormat format, void* dst,
                            int dstRowBytes, void* src, int srcRowBytes, int width, int height);

    char m_szName[128];          // shown to the user
    char m_szDescription[128];   // second line of the About text
    char m_szMajorVersion[128];  // as text
    char m_szMinorVersion[128];
    std::int32_t m_nVersion, m_nSubVersion, m_nBugVersion, m_nStage, m_nBuild;

protected:
    CAEFx(const CAEFx&) = default;
    CAEFx& operator=(const CAEFx&) = default;
};
