#pragma once

namespace zel::ip::x86 {

/// Makes what was stored past the caches visible to other threads in its turn. Once per
/// frame: it waits for memory.
void StreamFence();

}  // namespace zel::ip::x86
