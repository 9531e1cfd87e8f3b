#include "tests/support/RecordingHost.h"

#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <iterator>

namespace zel::test {

namespace {

thread_local RecordingHost* t_current = nullptr;

PF_ProgPtr RefOf(RecordingHost* host) { return reinterpret_cast<PF_ProgPtr>(host); }

}  // namespace

struct RecordingHost::Callbacks {
    static RecordingHost& Host() { return *t_current; }

    static void Note(std::string text) { Host().calls.push_back(std::move(text)); }
    static void Note(PF_ProgPtr ref, std::string text) {
        Note(text + (ref == RefOf(&Host()) ? "" : " (wrong effect_ref)"));
    }

    static PF_Err AddParam(PF_ProgPtr ref, PF_ParamIndex index, PF_ParamDef* def) {
        RecordingHost& host = Host();
        Note(ref, "add_param " + std::to_string(index));
        if (static_cast<int>(host.added.size()) == host.wrong.addParamFailsAt)
            return host.wrong.addParamError;
        AddedParam& copy = host.added.emplace_back();
        copy.index = index;
        std::memcpy(&copy.def, def, sizeof copy.def);
        return PF_Err_NONE;
    }

#if defined(__GNUC__)
    __attribute__((format(printf, 2, 3)))
#endif
    static int
    Sprintf(A_char* to, const A_char* format, ...) {
        Note(std::string("sprintf ") + format);
        std::va_list arguments;
        va_start(arguments, format);
        const int length = std::vsnprintf(to, sizeof PF_OutData::return_msg, format, arguments);
        va_end(arguments);
        return length;
    }

    static A_char* Strcpy(A_char* to, const A_char* from) {
        Note(std::string("strcpy ") + from);
        return std::strcpy(to, from);
    }

    static void DisposeHandle(PF_Handle handle) {
        Note("host_dispose_handle");
        Host().disposed.push_back(handle);
    }

    static SPErr AcquireSuite(const char* name, std::int32_t version, const void** suite) {
        RecordingHost& host = Host();
        Note(std::string("AcquireSuite ") + name + " " + std::to_string(version));
        const bool known = host.personality == Personality::Premiere &&
                           std::strcmp(name, abi::kPixelFormatSuiteName) == 0 &&
                           version == abi::kPixelFormatSuiteVersion;
        if (!known) return abi::kSuiteNotFound;
        if (host.wrong.suiteStaysNull) return 0;
        *suite = &host.m_formats;
        return host.wrong.acquireResult;
    }

    static SPErr ReleaseSuite(const char* name, std::int32_t version) {
        Note(std::string("ReleaseSuite ") + name + " " + std::to_string(version));
        return Host().wrong.releaseResult;
    }

    static PF_Err Clear(PF_ProgPtr ref) {
        Note(ref, "ClearSupportedPixelFormats");
        return Host().wrong.formatResult;
    }

    static PF_Err Add(PF_ProgPtr ref, PrPixelFormat format) {
        Note(ref, "AddSupportedPixelFormat " + FormatText(format));
        return Host().wrong.formatResult;
    }

    static PF_Err GetPixelFormat(PF_EffectWorld* world, PrPixelFormat* format) {
        RecordingHost& host = Host();
        Note("GetPixelFormat");
        host.worldsAsked.push_back(world);
        if (!host.wrong.formatLeftAlone) *format = host.frameFormat;
        return host.wrong.formatResult;
    }
};

RecordingHost::RecordingHost(Personality p) : personality(p), m_outer(t_current) {
    t_current = this;
    m_basic.AcquireSuite = Callbacks::AcquireSuite;
    m_basic.ReleaseSuite = Callbacks::ReleaseSuite;
    m_formats.AddSupportedPixelFormat = Callbacks::Add;
    m_formats.ClearSupportedPixelFormats = Callbacks::Clear;
    m_formats.GetPixelFormat = Callbacks::GetPixelFormat;
    m_utils.ansi.sprintf = Callbacks::Sprintf;
    m_utils.ansi.strcpy = Callbacks::Strcpy;
    m_in.inter.add_param = Callbacks::AddParam;
    m_in.utils = &m_utils;
    m_in.effect_ref = RefOf(this);
    m_in.quality = PF_Quality_HI;
    m_in.version = {13, 0};
    m_in.appl_id = p == Personality::Premiere ? abi::kApplPremiere : abi::kApplAfterEffects;
    m_in.time_step = m_in.local_time_step = 1;
    m_in.time_scale = 25;
    m_in.downsample_x = m_in.downsample_y = m_in.pixel_aspect_ratio = {1, 1};
    Reset();
}

RecordingHost::~RecordingHost() { t_current = m_outer; }

PF_InData* RecordingHost::In() {
    m_utils.host_dispose_handle = wrong.noDisposeHandle ? nullptr : Callbacks::DisposeHandle;
    m_in.pica_basicP = wrong.noBasicSuite ? nullptr : &m_basic;
    m_in.num_params = numParams;
    m_in.sequence_data = sequenceData;
    return &m_in;
}

void RecordingHost::Reset() {
    std::memset(&m_out, kUntouched, sizeof m_out);
    calls.clear();
    added.clear();
    worldsAsked.clear();
    disposed.clear();
}

PF_OutData RecordingHost::UntouchedOut() {
    PF_OutData out;
    std::memset(&out, kUntouched, sizeof out);
    return out;
}

std::string FormatText(PrPixelFormat format) {
    std::string text;
    for (int shift = 0; shift < 32; shift += 8)
        text += static_cast<char>(static_cast<std::uint32_t>(format) >> shift & 0xFF);
    return text;
}

std::string Difference(const PF_OutData& expected, const PF_OutData& got) {
#define ZEL_MEMBER(name) \
    { #name, offsetof(PF_OutData, name) }
    static constexpr struct {
        const char* name;
        std::size_t offset;
    } kMembers[] = {
        ZEL_MEMBER(my_version),  ZEL_MEMBER(name),          ZEL_MEMBER(global_data),
        ZEL_MEMBER(num_params),  ZEL_MEMBER(sequence_data), ZEL_MEMBER(flat_sdata_size),
        ZEL_MEMBER(frame_data),  ZEL_MEMBER(width),         ZEL_MEMBER(height),
        ZEL_MEMBER(origin),      ZEL_MEMBER(out_flags),     ZEL_MEMBER(return_msg),
        ZEL_MEMBER(start_sampL), ZEL_MEMBER(dur_sampL),     ZEL_MEMBER(dest_snd),
        ZEL_MEMBER(out_flags2),
    };
#undef ZEL_MEMBER
    unsigned char wanted[sizeof expected], found[sizeof got];
    std::memcpy(wanted, &expected, sizeof wanted);
    std::memcpy(found, &got, sizeof found);
    for (std::size_t i = 0; i < sizeof wanted; ++i) {
        if (wanted[i] == found[i]) continue;
        std::size_t m = 0;
        while (m + 1 < std::size(kMembers) && kMembers[m + 1].offset <= i) ++m;
        char text[128];
        std::snprintf(text, sizeof text, "out_data.%s, byte %zu: expected 0x%02X, got 0x%02X",
                      kMembers[m].name, i - kMembers[m].offset, wanted[i], found[i]);
        return text;
    }
    return {};
}

}  // namespace zel::test
