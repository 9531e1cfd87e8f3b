#pragma once

/// Premiere's pixel-format suite for the length of one command.

#include "abi/HostCodes.h"
#include "host/HostPolicy.h"
#include "host/Suites.h"

namespace zel {

/// Acquires the suite on construction. A host without it is After Effects: the
/// acquire then leaves its text and flag in the host's record, and Result() is 516,
/// unless policy::kReportsMissingFormats is off.
class PixelFormatSuite {
public:
    PixelFormatSuite(PF_InData* in_data, PF_OutData* out_data)
        : m_in(in_data), m_out(out_data), m_suite(nullptr), m_result(PF_Err_NONE) {
        if constexpr (policy::kReportsMissingFormats) {
            void* suite = nullptr;
            m_result = AEFX_AcquireSuite(in_data, out_data, abi::kPixelFormatSuiteName,
                                         abi::kPixelFormatSuiteVersion, nullptr, &suite);
            m_suite = static_cast<const PF_PixelFormatSuite1*>(suite);
        } else if (const SPBasicSuite* pica = in_data->pica_basicP) {
            const void* suite = nullptr;
            pica->AcquireSuite(abi::kPixelFormatSuiteName, abi::kPixelFormatSuiteVersion, &suite);
            m_suite = static_cast<const PF_PixelFormatSuite1*>(suite);
        }
    }

    explicit operator bool() const { return m_suite != nullptr; }
    const PF_PixelFormatSuite1* operator->() const { return m_suite; }

    PF_Err Result() const { return m_result; }

    /// Gives the suite back and returns the release's result.
    PF_Err Release() {
        m_suite = nullptr;
        return AEFX_ReleaseSuite(m_in, m_out, abi::kPixelFormatSuiteName,
                                 abi::kPixelFormatSuiteVersion, nullptr);
    }

private:
    PF_InData* m_in;
    PF_OutData* m_out;
    const PF_PixelFormatSuite1* m_suite;
    PF_Err m_result;
};

}  // namespace zel
