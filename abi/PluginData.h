#pragma once

/// How newer hosts ask a module what it is, beside the resource of the file: they call
/// its exported `PluginDataEntryFunction2`, and it answers through their callback.

#include "abi/Suites.h"

namespace zel::abi {

/// Takes one effect: what the resource says of it, and the generation of the interface.
/// Returns an error code, which the module passes on.
using PluginDataCallback = A_long(void* host, const A_u_char* name, const A_u_char* matchName,
                                  const A_u_char* category, const A_u_char* entryPoint, A_long kind,
                                  A_long specMajor, A_long specMinor, A_long reserved,
                                  const A_u_char* supportUrl);

using PluginDataEntry = A_long(void* host, PluginDataCallback* callback, const SPBasicSuite* basic,
                               const char* hostName, const char* hostVersion);

inline constexpr const char* kPluginDataEntryName = "PluginDataEntryFunction2";

inline constexpr A_long kKindEffect = 0x65464B54;  // 'eFKT'
inline constexpr A_long kPluginDataReserved = 8;

}  // namespace zel::abi
