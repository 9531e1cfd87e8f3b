#pragma once

/// Timing a routine on frames beside a plain copy, or a plain clear, of as many bytes.
/// The two take turns, so that their quotient stands when the machine is not quiet.

#include <benchmark/benchmark.h>

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace zel::bench {

struct Size {
    int width, height;
};
inline constexpr Size kSizes[] = {{720, 486}, {1920, 1080}, {3840, 2160}};

enum class Caches {
    cold,  // a buffer comes round again after more than the last-level cache holds
    hot,   // one pair of buffers
};

/// What the source buffers hold.
enum class Samples { integers, floats };

/// Samples without order, the worst case for a table look-up; floats lie in 0..1.
void FillSamples(std::byte* to, std::size_t bytes, Samples samples);

/// Pairs of buffers in one block, to be used in turn.
class Ring {
public:
    Ring(std::size_t dstBytes, std::size_t srcBytes, Samples samples, Caches caches);

    struct Pair {
        std::byte *dst, *src;
    };
    Pair Next() { return m_pairs[m_next++ % m_pairs.size()]; }

private:
    std::unique_ptr<std::byte[]> m_memory;
    std::vector<Pair> m_pairs;
    std::size_t m_next = 0;
};

/// How many pairs of buffers it takes until the first has left the caches.
std::size_t PairsFor(std::size_t pairBytes, Caches caches);

/// Times `routine` and `plain` in turn. The row's time is the routine's; beside it stand
/// its median, in microseconds, and `counter`, the quotient of the two medians.
void RunBeside(benchmark::State& state, const char* counter, const std::function<void()>& routine,
               const std::function<void()>& plain);

/// "<name>/1920x1080/cold"
std::string RowName(const std::string& name, Size size, Caches caches);

/// Calls fn(size, caches) for every size, cold and hot.
template <class Fn>
void ForEverySize(Fn fn) {
    for (const Size size : kSizes)
        for (const Caches caches : {Caches::cold, Caches::hot}) fn(size, caches);
}

}  // namespace zel::bench
