#pragma once

/// A host without an editor: gives an effect the records and callbacks that it expects
/// and writes down every call that comes back. A callback that an effect has no business
/// with is null, so that using it ends the test.

#include "abi/HostCodes.h"
#include "abi/HostTypes.h"
#include "abi/PixelFormats.h"
#include "abi/Suites.h"

#include <cstddef>
#include <string>
#include <vector>

namespace zel::test {

enum class Personality {
    AfterEffects,  // no pixel-format suite, version 1
    Premiere,
};

/// What the host does wrong. The defaults are a host in good order.
struct Misbehaviour {
    int addParamFailsAt = -1;     // number of the call, from 0
    PF_Err addParamError = 0;     // what that call returns
    bool noBasicSuite = false;    // pica_basicP is null
    bool suiteStaysNull = false;  // AcquireSuite returns 0 and gives nothing
    SPErr acquireResult = 0;      // returned although the suite is given
    SPErr releaseResult = 0;
    PF_Err formatResult = 0;       // of Clear, Add and GetPixelFormat
    bool formatLeftAlone = false;  // GetPixelFormat writes nothing
    bool noDisposeHandle = false;  // host_dispose_handle is null
};

/// One add_param call, with a copy of the record made during the call.
struct AddedParam {
    PF_ParamIndex index;
    PF_ParamDef def;
};

/// Callbacks carry no user pointer, so a host is found through its thread: one host at a
/// time on each thread, and the innermost one counts.
class RecordingHost {
public:
    explicit RecordingHost(Personality personality);
    ~RecordingHost();
    RecordingHost(const RecordingHost&) = delete;
    RecordingHost& operator=(const RecordingHost&) = delete;

    /// The records for one command, set up from the members below. `Out()` keeps what
    /// earlier commands left until Reset().
    PF_InData* In();
    PF_OutData* Out() { return &m_out; }

    /// Fills the whole record with kUntouched and forgets the calls.
    void Reset();

    /// Every byte of Out() before an effect has written anything. The display-error bit
    /// is clear in it.
    static constexpr unsigned char kUntouched = 0x5A;
    static PF_OutData UntouchedOut();

    const Personality personality;
    Misbehaviour wrong;
    A_long numParams = 1;
    PF_Handle sequenceData = nullptr;
    PrPixelFormat frameFormat = PrPixelFormat_BGRA_4444_8u;  // GetPixelFormat's answer

    // The record of what happened, in order; a wrong effect_ref shows in the text.
    std::vector<std::string> calls;  // "AcquireSuite PF Pixel Format Suite 1", "add_param -1"
    std::vector<AddedParam> added;
    std::vector<PF_EffectWorld*> worldsAsked;  // by GetPixelFormat
    std::vector<PF_Handle> disposed;

private:
    struct Callbacks;

    RecordingHost* const m_outer;
    SPBasicSuite m_basic{};
    PF_PixelFormatSuite1 m_formats{};
    PF_UtilCallbacks m_utils{};
    PF_InData m_in{};
    PF_OutData m_out;
};

/// The four characters of a pixel-format code, as they lie in memory.
std::string FormatText(PrPixelFormat format);

/// The first bytes that differ, with the member that they belong to; empty when all 408
/// (on 32 bits 362) are the same.
std::string Difference(const PF_OutData& expected, const PF_OutData& got);

}  // namespace zel::test
