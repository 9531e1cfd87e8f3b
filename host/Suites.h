#pragma once

/// Access to the host's suites: named, versioned tables of functions.

#include "abi/HostTypes.h"
#include "abi/Suites.h"

#include <cstddef>
#include <cstdint>

/// Acquires a suite into *suite, which the caller has set to null. Returns 0, or 516
/// with the error text in the host's message (null: the default text) and the
/// display flag set. Only the pointer tells; the host's own result is not looked at.
PF_Err AEFX_AcquireSuite(PF_InData* in_data, PF_OutData* out_data, const char* name,
                         std::int32_t version, const char* error_string, void** suite);

/// Releases a suite; 516 and the text likewise when there is no basic suite.
PF_Err AEFX_ReleaseSuite(PF_InData* in_data, PF_OutData* out_data, const char* name,
                         std::int32_t version, const char* error_string);

/// Cache of acquired suites, released together when it is destroyed.
class AEGP_SuiteHandler {
public:
    static constexpr std::size_t kSlots = 101;

    /// Throws the int 516 when `pica` is null.
    explicit AEGP_SuiteHandler(const SPBasicSuite* pica);
    ~AEGP_SuiteHandler();
    AEGP_SuiteHandler(const AEGP_SuiteHandler&) = delete;
    AEGP_SuiteHandler& operator=(const AEGP_SuiteHandler&) = delete;

    void ReleaseSuite(const char* name, std::int32_t version);

    /// Releases every cached suite, in the order of the list of known suites.
    void ReleaseAllSuites();

    [[noreturn]] void MissingSuiteError() const;

private:
    const SPBasicSuite* m_pica;
    void* m_slots[kSlots];  // one per known suite, the rest stay null
};
