#include "host/Suites.h"

#include "abi/HostCodes.h"

#include <iterator>

namespace {

PF_Err Report(PF_InData* in_data, PF_OutData* out_data, const char* text) {
    out_data->out_flags |= PF_OutFlag_DISPLAY_ERROR_MESSAGE;
    // The text is the format itself, as hosts' own helpers have it: a caller's text
    // must not hold a percent sign.
    in_data->utils->ansi.sprintf(out_data->return_msg, text);
    return PF_Err_BAD_CALLBACK_PARAM;
}

struct SuiteKey {
    const char* name;
    std::int32_t version;
};

// Suites that the cache knows, in the order in which they are released.
// clang-format off
constexpr SuiteKey kKnownSuites[] = {
    {"AEGP Marker Suite", 1},
    {"AEGP Layer Suite", 8}, {"AEGP Layer Suite", 10},
    {"AEGP Stream Suite", 8}, {"AEGP Stream Suite", 7}, {"AEGP Stream Suite", 4},
    {"AEGP Dynamic Stream Suite", 2}, {"AEGP Dynamic Stream Suite", 3},
    {"AEGP Keyframe Suite", 4}, {"AEGP Keyframe Suite", 3}, {"AEGP Keyframe Suite", 1},
    {"AEGP Comp Suite", 9}, {"AEGP Comp Suite", 11}, {"AEGP Comp Suite", 14},
    {"AEGP Proj Suite", 2}, {"AEGP Proj Suite", 5},
    {"AEGP Canvas Suite", 10}, {"AEGP Canvas Suite", 11},
    {"AEGP Camera Suite", 2},
    {"AEGP Register Suite", 2},
    {"AEGP Item Suite", 11}, {"AEGP Item Suite", 10}, {"AEGP Item Suite", 7}, {"AEGP Item Suite", 3},
    {"AEGP PF Interface Suite", 1},
    {"PF Path Query Suite", 1},
    {"AEGP Memory Suite", 1},
    {"PF Path Data Suite", 1}, {"PF Path Data Suite", 1},  // two slots
    {"PF AE App Suite", 2}, {"PF AE App Suite", 5},
    {"PF AE Adv App Suite", 2},
    {"AEGP Light Suite", 1}, {"AEGP Light Suite", 2},
    {"AEGP Effect Suite", 1}, {"AEGP Effect Suite", 2}, {"AEGP Effect Suite", 3},
    {"AEGP Layer Mask Suite", 5},
    {"AEGP Mask Outline Suite", 3},
    {"AEGP Footage Suite", 7},
    {"AEGP Command Suite", 1},
    {"AEGP Utility Suite", 7},
    {"AEGP Render Suite", 1}, {"AEGP Render Suite", 2},
    {"PF ANSI Suite", 1},
    {"PF Handle Suite", 1},
    {"PF Fill Matte Suite", 1},
    {"PF World Transform Suite", 1},
    {"AEGP QueryXform Suite", 4},
    {"AEGP Composite Suite", 2},
    {"PF World Suite", 1},
    {"AEGP IO In Suite", 1},
    {"AEGP IO Out Suite", 1}, {"AEGP IO Out Suite", 6},
    {"AEGP Render Queue Suite", 1},
    {"AEGP Render Queue Item Suite", 3},
    {"AEGP Output Module Suite", 1}, {"AEGP Output Module Suite", 2},
    {"AEGP File Import Manager Suite", 2},
    {"PF Sampling8 Suite", 1},
    {"PF Sampling16 Suite", 1},
    {"PF Iterate8 Suite", 1},
    {"PF iterate16 Suite", 1},
    {"PF iterateFloat Suite", 1},
    {"AEGP Collection Suite", 2},
    {"AEGP Text Document Suite", 1},
    {"AEGP Sound Data Suite", 1},
    {"AEGP Text Layer Suite", 1},
    {"AEGP Artisan Util Suite", 1},
    {"AEGP World Suite", 2},
    {"AEGP Render Options Suite", 1},
    {"AEGP Tracker Suite", 1},
    {"AEGP Tracker Utility Suite", 1},
    {"AE Plugin Helper Suite2", 2},
    {"AEGP Layer Suite", 11},
    {"PF AE Adv Item Suite", 1},
    {"AEGP Layer Suite", 5},
    {"AEGP Layer Mask Suite", 2},
    {"AEGP Comp Suite", 4},
    {"AEGP Collection Suite", 1},
    {"AEGP Register Suite", 1},
    {"AEGP Mask Outline Suite", 2},
    {"PF AE Adv App Suite", 1},
    {"AEGP Utility Suite", 3},
    {"AEGP Render Options Suite", 2},
    {"AEGP Proj Suite", 7},
    {"AEGP Footage Suite", 10},
    {"AEGP Render Queue Item Suite", 4},
    {"AEGP Utility Suite", 10},
    {"PF Color Settings Suite", 3}, {"PF Color Settings Suite", 1},
    {"PF ColorParamSuite", 1},
    {"PF SamplingFloat Suite", 1},
    {"AEGP Utility Suite", 11},
};
// clang-format on
static_assert(std::size(kKnownSuites) <= AEGP_SuiteHandler::kSlots);

}  // namespace

PF_Err AEFX_AcquireSuite(PF_InData* in_data, PF_OutData* out_data, const char* name,
                         std::int32_t version, const char* error_string, void** suite) {
    if (const SPBasicSuite* pica = in_data->pica_basicP) {
        const void* found = *suite;
        pica->AcquireSuite(name, version, &found);
        *suite = const_cast<void*>(found);
        if (*suite) return PF_Err_NONE;
    }
    return Report(in_data, out_data,
                  error_string ? error_string : "Not able to acquire AEFX Suite.");
}

PF_Err AEFX_ReleaseSuite(PF_InData* in_data, PF_OutData* out_data, const char* name,
                         std::int32_t version, const char* error_string) {
    if (const SPBasicSuite* pica = in_data->pica_basicP) {
        pica->ReleaseSuite(name, version);
        return PF_Err_NONE;
    }
    return Report(in_data, out_data,
                  error_string ? error_string : "Not able to release AEFX Suite.");
}

AEGP_SuiteHandler::AEGP_SuiteHandler(const SPBasicSuite* pica) : m_pica(pica), m_slots{} {
    if (!m_pica) MissingSuiteError();
}

AEGP_SuiteHandler::~AEGP_SuiteHandler() { ReleaseAllSuites(); }

void AEGP_SuiteHandler::ReleaseSuite(const char* name, std::int32_t version) {
    m_pica->ReleaseSuite(name, version);
}

void AEGP_SuiteHandler::ReleaseAllSuites() {
    for (std::size_t i = 0; i < std::size(kKnownSuites); ++i)
        if (m_slots[i]) ReleaseSuite(kKnownSuites[i].name, kKnownSuites[i].version);
}

void AEGP_SuiteHandler::MissingSuiteError() const {
    throw static_cast<int>(PF_Err_BAD_CALLBACK_PARAM);
}
