#pragma once

/// Which instruction sets a row function may use. Levels, not single features: a level
/// stands for everything below it and is what ZELFX_CPU and --cpu name.

#include <optional>
#include <span>
#include <string_view>

#if defined(__x86_64__) && (defined(__GNUC__) || defined(__clang__))
#define ZEL_X86 1
#else
#define ZEL_X86 0
#endif

#if defined(__aarch64__) && (defined(__GNUC__) || defined(__clang__))
#define ZEL_NEON 1
#else
#define ZEL_NEON 0
#endif

namespace zel::ip {

enum class Cpu {
    scalar,    // the reference routines alone
    portable,  // loops that any processor runs and a compiler makes the best of
    sse2,
    avx2,
    avx512,  // with byte permutes: F, BW, VL and VBMI
    neon,
};

struct CpuLevel {
    Cpu level;
    const char* name;
};

/// The levels that this build has code for, ascending.
std::span<const CpuLevel> CpuLevels();

/// The highest level that the processor and its operating system support.
Cpu SupportedCpu();

/// The level in use: SupportedCpu(), or what ZELFX_CPU names if that is lower. Read by
/// IpInitialize(); until then the reference routines run.
Cpu ActiveCpu();

/// Reads ZELFX_CPU anew. A name that is none, or no level of this build, counts as unset.
void ChooseCpu();

/// A level of this build by its name.
std::optional<Cpu> CpuNamed(std::string_view name);

const char* NameOf(Cpu level);

}  // namespace zel::ip
