#include "ip/x86/Fence.h"

#include "ip/detail/Cpu.h"
#if ZEL_X86

#include "ip/x86/Target.h"

namespace zel::ip::x86 {

void StreamFence() { _mm_sfence(); }

}  // namespace zel::ip::x86

#endif
