#include "headless/HostRecords.h"

#include "abi/HostCodes.h"
#include "abi/Layout.h"

#include <cmath>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace zel {

namespace {

Registration& RegistrationOf(PF_ProgPtr effectRef) {
    return *reinterpret_cast<Registration*>(effectRef);
}

// --- interaction --------------------------------------------------------------

/// Far beyond what anybody could set; an effect that goes on and on meets an end.
constexpr std::size_t kMostRegistered = 10000;

PF_Err AddParam(PF_ProgPtr effectRef, PF_ParamIndex index, PF_ParamDef* def) {
    constexpr PF_ParamIndex kAppend = -1;
    if (!def || index != kAppend) return PF_Err_INVALID_INDEX;
    Parameters& parameters = RegistrationOf(effectRef).parameters;
    if (parameters.All().size() == kMostRegistered) return PF_Err_OUT_OF_MEMORY;
    parameters.Add(*def);
    return PF_Err_NONE;
}

PF_Err CheckoutParam(PF_ProgPtr, PF_ParamIndex, A_long, A_long, A_u_long, PF_ParamDef*) {
    return PF_Err_INVALID_CALLBACK;  // this host keeps no parameter history
}
PF_Err CheckinParam(PF_ProgPtr, PF_ParamDef*) { return PF_Err_NONE; }
PF_Err Abort(PF_ProgPtr) { return PF_Err_NONE; }  // nobody can interrupt a frame
PF_Err Progress(PF_ProgPtr, A_long, A_long) { return PF_Err_NONE; }

// --- handles: a pointer to a record whose first member is the block's address ---

struct HandleRecord {
    void* block;
    std::size_t size;
};

HandleRecord* RecordOf(PF_Handle handle) { return reinterpret_cast<HandleRecord*>(handle); }

PF_Handle NewHandle(PF_HandleSize size) {
    auto* record = new (std::nothrow) HandleRecord{nullptr, static_cast<std::size_t>(size)};
    if (!record) return nullptr;
    record->block = std::calloc(1, record->size ? record->size : 1);
    if (!record->block) {
        delete record;
        return nullptr;
    }
    return &record->block;
}

void DisposeHandle(PF_Handle handle) {
    if (!handle) return;
    std::free(RecordOf(handle)->block);
    delete RecordOf(handle);
}

void* LockHandle(PF_Handle handle) { return handle ? *handle : nullptr; }
void UnlockHandle(PF_Handle) {}

PF_HandleSize HandleSize(PF_Handle handle) {
    return handle ? static_cast<PF_HandleSize>(RecordOf(handle)->size) : 0;
}

PF_Err ResizeHandle(PF_HandleSize size, PF_Handle* handle) {
    if (!handle || !*handle) return PF_Err_BAD_CALLBACK_PARAM;
    HandleRecord* record = RecordOf(*handle);
    void* block = std::realloc(record->block, size ? static_cast<std::size_t>(size) : 1);
    if (!block) return PF_Err_OUT_OF_MEMORY;
    *record = {block, static_cast<std::size_t>(size)};
    return PF_Err_NONE;
}

// --- maths and text -----------------------------------------------------------

/// Effects write into the 256 bytes of a message; no text is let past them.
int Sprintf(char* to, const char* format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
#if defined(__GNUC__)
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-nonliteral"
#endif
    const int length = std::vsnprintf(to, sizeof(PF_OutData::return_msg), format, arguments);
#if defined(__GNUC__)
#pragma GCC diagnostic pop
#endif
    va_end(arguments);
    return length;
}

char* Strcpy(char* to, const char* from) { return std::strcpy(to, from); }

PF_UtilCallbacks MakeUtilCallbacks() {
    PF_UtilCallbacks u{};
    u.host_new_handle = NewHandle;
    u.host_lock_handle = LockHandle;
    u.host_unlock_handle = UnlockHandle;
    u.host_dispose_handle = DisposeHandle;
    u.host_get_handle_size = HandleSize;
    u.host_resize_handle = ResizeHandle;

    PF_ANSICallbacks& a = u.ansi;
    a.atan = [](double x) { return std::atan(x); };
    a.atan2 = [](double y, double x) { return std::atan2(y, x); };
    a.ceil = [](double x) { return std::ceil(x); };
    a.cos = [](double x) { return std::cos(x); };
    a.exp = [](double x) { return std::exp(x); };
    a.fabs = [](double x) { return std::fabs(x); };
    a.floor = [](double x) { return std::floor(x); };
    a.fmod = [](double x, double y) { return std::fmod(x, y); };
    a.hypot = [](double x, double y) { return std::hypot(x, y); };
    a.log = [](double x) { return std::log(x); };
    a.log10 = [](double x) { return std::log10(x); };
    a.pow = [](double x, double y) { return std::pow(x, y); };
    a.sin = [](double x) { return std::sin(x); };
    a.sqrt = [](double x) { return std::sqrt(x); };
    a.tan = [](double x) { return std::tan(x); };
    a.sprintf = Sprintf;
    a.strcpy = Strcpy;
    a.asin = [](double x) { return std::asin(x); };
    a.acos = [](double x) { return std::acos(x); };
    return u;
}

// --- suites -------------------------------------------------------------------

PF_Err AddSupportedPixelFormat(PF_ProgPtr effectRef, PrPixelFormat format) {
    std::vector<PrPixelFormat>& formats = RegistrationOf(effectRef).formats;
    if (formats.size() == kMostRegistered) return PF_Err_OUT_OF_MEMORY;
    formats.push_back(format);
    return PF_Err_NONE;
}

PF_Err ClearSupportedPixelFormats(PF_ProgPtr effectRef) {
    RegistrationOf(effectRef).formats.clear();
    return PF_Err_NONE;
}

PF_Err GetPixelFormat(PF_EffectWorld* world, PrPixelFormat* format) {
    if (!world || !format) return PF_Err_BAD_CALLBACK_PARAM;
    *format = reinterpret_cast<HostWorld*>(world)->format;
    return PF_Err_NONE;
}

// Services of the suite that this host does not offer say so.
PF_Err NoNewWorld(PF_ProgPtr, A_u_long, A_u_long, PF_NewWorldFlags, PrPixelFormat,
                  PF_EffectWorld*) {
    return PF_Err_INVALID_CALLBACK;
}
PF_Err NoDisposeWorld(PF_ProgPtr, PF_EffectWorld*) { return PF_Err_INVALID_CALLBACK; }
PF_Err NoColour(PrPixelFormat, void*) { return PF_Err_INVALID_CALLBACK; }
PF_Err NoConversion(PrPixelFormat, float, float, float, float, void*) {
    return PF_Err_INVALID_CALLBACK;
}

constexpr PF_PixelFormatSuite1 kPixelFormatSuite{
    AddSupportedPixelFormat,
    ClearSupportedPixelFormats,
    NoNewWorld,
    NoDisposeWorld,
    GetPixelFormat,
    NoColour,
    NoColour,
    NoConversion,
};

SPErr AcquireNothing(const char*, std::int32_t, const void** suite) {
    *suite = nullptr;
    return abi::kSuiteNotFound;
}

SPErr AcquireForPremiere(const char* name, std::int32_t version, const void** suite) {
    if (std::strcmp(name, abi::kPixelFormatSuiteName) != 0 ||
        version != abi::kPixelFormatSuiteVersion)
        return AcquireNothing(name, version, suite);
    *suite = &kPixelFormatSuite;
    return 0;
}

SPErr ReleaseSuite(const char*, std::int32_t) { return 0; }
SPBoolean IsEqual(const char* a, const char* b) { return std::strcmp(a, b) == 0; }

SPErr AllocateBlock(std::size_t size, void** block) {
    *block = std::malloc(size);
    return *block ? 0 : PF_Err_OUT_OF_MEMORY;
}
SPErr FreeBlock(void* block) {
    std::free(block);
    return 0;
}
SPErr ReallocateBlock(void* block, std::size_t size, void** moved) {
    *moved = std::realloc(block, size);
    return *moved ? 0 : PF_Err_OUT_OF_MEMORY;
}
SPErr Undefined() { return PF_Err_INVALID_CALLBACK; }

constexpr SPBasicSuite BasicSuite(decltype(SPBasicSuite::AcquireSuite) acquire) {
    return {acquire, ReleaseSuite, IsEqual, AllocateBlock, FreeBlock, ReallocateBlock, Undefined};
}

// Not const: the interface hands them out as pointers to non-const.
SPBasicSuite basicSuitePremiere = BasicSuite(AcquireForPremiere);
SPBasicSuite basicSuiteAfterEffects = BasicSuite(AcquireNothing);
PF_UtilCallbacks utilCallbacks = MakeUtilCallbacks();

}  // namespace

PF_InData MakeInData(Personality personality, Registration& registration) {
    const bool premiere = personality == Personality::Premiere;
    PF_InData in{};
    in.inter.checkout_param = CheckoutParam;
    in.inter.checkin_param = CheckinParam;
    in.inter.add_param = AddParam;
    in.inter.abort = Abort;
    in.inter.progress = Progress;
    in.utils = &utilCallbacks;
    in.effect_ref = reinterpret_cast<PF_ProgPtr>(&registration);
    in.quality = PF_Quality_HI;
    in.version = premiere ? PF_SpecVersion{13, 4} : PF_SpecVersion{13, 27};
    in.appl_id = premiere ? abi::kApplPremiere : abi::kApplAfterEffects;
    in.num_params = static_cast<A_long>(registration.parameters.All().size()) + 1;
    in.time_step = 1;
    in.local_time_step = 1;
    in.total_time = 1;
    in.time_scale = 25;
    in.downsample_x = in.downsample_y = in.pixel_aspect_ratio = {1, 1};
    in.pica_basicP = premiere ? &basicSuitePremiere : &basicSuiteAfterEffects;
    return in;
}

}  // namespace zel
