/// The second export of a module for present-day hosts: what its resource says, told by
/// the module itself. ZEL_MODULE is the module's name.

#include "abi/PluginData.h"
#include "abi/Export.h"
#include "packaging/Effects.h"

namespace {

constexpr zel::packaging::Effect kEffect = *zel::packaging::Find(ZEL_MODULE);

// The generation of the interface that the records are written for.
constexpr A_long kSpecMajor = 13, kSpecMinor = 0;

const A_u_char* Text(const char* text) { return reinterpret_cast<const A_u_char*>(text); }

}  // namespace

extern "C" ZEL_EXPORT zel::abi::PluginDataEntry PluginDataEntryFunction2;

extern "C" A_long PluginDataEntryFunction2(void* host, zel::abi::PluginDataCallback* callback,
                                           const SPBasicSuite*, const char*, const char*) {
    constexpr const char* kNoUrl = "";
    return callback(host, Text(kEffect.menuName), Text(kEffect.matchName), Text(kEffect.category),
                    Text(zel::packaging::kEntryPoint), zel::abi::kKindEffect, kSpecMajor,
                    kSpecMinor, zel::abi::kPluginDataReserved, Text(kNoUrl));
}
