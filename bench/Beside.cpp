#include "bench/Beside.h"

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstring>
#include <ctime>

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
    constexpr std::size_t kPage = 4096;
    const auto pages = [](std::size_t bytes) { return (bytes + kPage - 1) / kPage * kPage; };
    const std::size_t pairBytes = pages(dstBytes) + pages(srcBytes);
    const std::size_t pairs = PairsFor(pairBytes, caches);
    m_memory = std::make_unique<std::byte[]>(pairs * pairBytes + kPage);
    const auto misaligned = reinterpret_cast<std::uintptr_t>(m_memory.get()) % kPage;
    std::byte* at = m_memory.get() + (kPage - misaligned) % kPage;
    for (std::size_t i = 0; i < pairs; ++i, at += pairBytes) {
        m_pairs.push_back({at, at + pages(dstBytes)});
        FillSamples(m_pairs.back().src, srcBytes, samples);
    }
}

void RunBeside(benchmark::State& state, const char* counter, const std::function<void()>& routine,
               const std::function<void()>& plain) {
    std::vector<double> times, plainTimes;
    plain();
    routine();
    for (auto _ : state) {
        plainTimes.push_back(SecondsOf(plain));
        times.push_back(SecondsOf(routine));
        state.SetIterationTime(times.back());
    }
    const double median = Median(times);
    state.counters["median_us"] = median * 1e6;
    state.counters[counter] = median / Median(plainTimes);
}

std::string RowName(const std::string& name, Size size, Caches caches) {
    return name + '/' + std::to_string(size.width) + 'x' + std::to_string(size.height) +
           (caches == Caches::cold ? "/cold" : "/hot");
}

}  // namespace zel::bench
