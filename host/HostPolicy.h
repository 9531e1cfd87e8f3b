#pragma once

/// Where modules for present-day hosts differ from the others, one line each. A build
/// with ZEL_HOST_CONFORMANT set makes them; docs/hosts.md says which build is for whom.

#if !defined(ZEL_HOST_CONFORMANT)
#define ZEL_HOST_CONFORMANT 0
#endif

namespace zel::policy {

inline constexpr bool kConformant = ZEL_HOST_CONFORMANT != 0;

/// num_params is the number of parameters added and the input layer; otherwise
/// docs/quirks.md, "num_params".
inline constexpr bool kCountsWhatIsAdded = kConformant;

/// A host without the pixel-format suite reads that it is missing, and a render there
/// returns 516; docs/quirks.md, "516 after a good render".
inline constexpr bool kReportsMissingFormats = !kConformant;

/// What is thrown leaves the entry point; docs/quirks.md, "thrown 516". Otherwise the
/// entry point returns 516.
inline constexpr bool kThrowsIntoHost = !kConformant;

/// 16-bit samples are 10 bits, left-aligned; otherwise white is the hosts' own 32768.
inline constexpr bool kLeftAligned16 = !kConformant;

// One difference more is made where modules are linked: packaging/PluginData.cpp.

}  // namespace zel::policy
