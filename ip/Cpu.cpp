#include "ip/detail/Cpu.h"

#include <algorithm>
#include <atomic>
#include <cstdlib>

namespace zel::ip {

namespace {

constexpr CpuLevel kLevels[] = {
    {Cpu::scalar, "scalar"}, {Cpu::portable, "portable"},
#if ZEL_X86
    {Cpu::sse2, "sse2"},     {Cpu::avx2, "avx2"},         {Cpu::avx512, "avx512"},
#endif
#if ZEL_NEON
    {Cpu::neon, "neon"},
#endif
};

Cpu Detect() {
#if ZEL_X86
    __builtin_cpu_init();
    if (__builtin_cpu_supports("avx512f") && __builtin_cpu_supports("avx512bw") &&
        __builtin_cpu_supports("avx512vl") && __builtin_cpu_supports("avx512vbmi"))
        return Cpu::avx512;
    return __builtin_cpu_supports("avx2") ? Cpu::avx2 : Cpu::sse2;
#elif ZEL_NEON
    return Cpu::neon;
#else
    return Cpu::portable;
#endif
}

// A host may set effects up on one thread while another renders; every set-up in a
// process finds the same level.
std::atomic<Cpu> g_active{Cpu::scalar};

}  // namespace

std::span<const CpuLevel> CpuLevels() { return kLevels; }

Cpu SupportedCpu() {
    static const Cpu supported = Detect();
    return supported;
}

Cpu ActiveCpu() { return g_active.load(std::memory_order_relaxed); }

void ChooseCpu() {
    const char* const forced = std::getenv("ZELFX_CPU");
    const Cpu wanted = CpuNamed(forced ? forced : "").value_or(SupportedCpu());
    g_active.store(std::min(wanted, SupportedCpu()), std::memory_order_relaxed);
}

std::optional<Cpu> CpuNamed(std::string_view name) {
    const auto level = std::ranges::find(kLevels, name, &CpuLevel::name);
    if (level == std::end(kLevels)) return std::nullopt;
    return level->level;
}

const char* NameOf(Cpu level) { return std::ranges::find(kLevels, level, &CpuLevel::level)->name; }

}  // namespace zel::ip
