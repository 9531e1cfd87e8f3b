#include "bench/Beside.h"

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstring>
#include <ctime>
#include <map>
#include <memory>
#include <vector>

#if defined(__unix__)
#include <unistd.h>
#endif

namespace zel::bench {

namespace {

std::size_t LastLevelCache() {
    constexpr long kUsual = 32L << 20;
#if defined(_SC_LEVEL3_CACHE_SIZE)
    return static_cast<std::size_t>(std::max(sysconf(_SC_LEVEL3_CACHE_SIZE), kUsual));
#else
    return kUsual;
#endif
}

/// The thread's own time where there is such a clock: what other programs take of the
/// processor does not count then.
double Now() {
#if defined(CLOCK_THREAD_CPUTIME_ID)
    timespec now;
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
#else
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch())
        .count();
#endif
}

double SecondsOf(const std::function<void()>& run) {
    const double start = Now();
    run();
    benchmark::ClobberMemory();
    return Now() - start;
}

double Median(std::vector<double>& times) {
    const auto middle = times.begin() + static_cast<std::ptrdiff_t>(times.size() / 2);
    std::ranges::nth_element(times, middle);
    return *middle;
}

/// Memory that grows and is not given back, since fresh pages cost more than most
/// routines.
class Arena {
public:
    std::byte* Take(std::size_t bytes, Samples samples) {
        const bool grows = bytes > m_bytes;
        if (grows) {
            m_memory.reset(new (kPage) std::byte[bytes]);
            m_bytes = bytes;
        }
        if (grows || samples != m_samples) FillSamples(m_memory.get(), m_bytes, samples);
        m_samples = samples;
        return m_memory.get();
    }

    static constexpr std::align_val_t kPage{4096};

private:
    struct Free {
        void operator()(std::byte* memory) const { ::operator delete[](memory, kPage); }
    };
    std::unique_ptr<std::byte[], Free> m_memory;
    std::size_t m_bytes = 0;
    Samples m_samples = Samples::integers;
};

std::string NameOf(const Row& row, const std::string& variant) {
    return row.routine + '/' + variant + '/' + std::to_string(row.size.width) + 'x' +
           std::to_string(row.size.height) + (row.caches == Caches::cold ? "/cold" : "/hot");
}

/// Quotients of the scalar rows so far, by name.
std::map<std::string, double> g_scalars;

}  // namespace

std::size_t PairsFor(std::size_t pairBytes, Caches caches) {
    return caches == Caches::hot ? 1 : 1 + 2 * LastLevelCache() / pairBytes;
}

void FillSamples(std::byte* to, std::size_t bytes, Samples samples) {
    std::uint32_t seed = 1;
    for (std::size_t i = 0; i + 4 <= bytes; i += 4) {
        seed = seed * 1664525u + 1013904223u;
        const float unit = static_cast<float>(seed >> 8) / 16777216.0f;
        if (samples == Samples::floats)
            std::memcpy(to + i, &unit, 4);
        else
            std::memcpy(to + i, &seed, 4);
    }
}

Ring::Ring(std::size_t dstBytes, std::size_t srcBytes, Samples samples, Caches caches) {
    static Arena dsts, srcs;
    constexpr auto kPage = static_cast<std::size_t>(Arena::kPage);
    const auto pages = [](std::size_t bytes) { return (bytes + kPage - 1) / kPage * kPage; };
    m_dstStep = pages(dstBytes);
    m_srcStep = pages(srcBytes);
    m_pairs = PairsFor(m_dstStep + m_srcStep, caches);
    m_dst = dsts.Take(m_pairs * m_dstStep, Samples::integers);
    m_src = srcs.Take(m_pairs * m_srcStep, samples);
}

void RunBeside(benchmark::State& state, const Row& row, const std::function<void()>& routine,
               Plain kind, const std::function<void()>& plain) {
    constexpr std::size_t kFewest = 9, kMost = 101;
    constexpr double kSeconds = 0.1;
    std::vector<double> times, plainTimes;
    plain();
    routine();
    double median = 0;
    for (auto _ : state) {
        const double end = Now() + kSeconds;
        while (times.size() < kFewest || (times.size() < kMost && Now() < end)) {
            plainTimes.push_back(SecondsOf(plain));
            times.push_back(SecondsOf(routine));
        }
        median = Median(times);
        state.SetIterationTime(median);
    }
    const double quotient = median / Median(plainTimes);
    state.counters[kind == Plain::memcpy ? "x_memcpy" : "x_memset"] = quotient;
    if (row.variant == "scalar") g_scalars[NameOf(row, row.variant)] = quotient;
    const auto scalar = g_scalars.find(NameOf(row, "scalar"));
    if (scalar != g_scalars.end()) state.counters["x_scalar"] = scalar->second / quotient;
}

void Register(const Row& row, const std::function<void(benchmark::State&, const Row&)>& run) {
    benchmark::RegisterBenchmark(NameOf(row, row.variant).c_str(),
                                 [=](benchmark::State& state) { run(state, row); })
        ->UseManualTime()
        ->Iterations(1)
        ->Unit(benchmark::kMicrosecond);
}

}  // namespace zel::bench
