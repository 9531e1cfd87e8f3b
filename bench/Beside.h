#pragma once

/// Timing a routine on frames beside a plain copy, or a plain clear, of as many bytes.
/// The two take turns, so that their quotient stands when the machine is not quiet.

#include <benchmark/benchmark.h>

#include <cstddef>
#include <functional>
#include <string>

namespace zel::bench {

struct Size {
    int width, height;
};
inline constexpr Size kSizes[] = {{720, 486}, {1920, 1080}, {3840, 2160}};

enum class Caches {
    cold,  // a buffer comes round again after more than the last-level cache holds
    hot,   // one pair of buffers
};

/// What the source buffers hold: samples without order, the worst case for a table
/// look-up; floats lie in 0..1.
enum class Samples { integers, floats };

void FillSamples(std::byte* to, std::size_t bytes, Samples samples);

/// Pairs of buffers to be used in turn. All rings share their memory: only the last one
/// made may be used.
class Ring {
public:
    Ring(std::size_t dstBytes, std::size_t srcBytes, Samples samples, Caches caches);

    struct Pair {
        std::byte *dst, *src;
    };
    Pair Next() {
        const std::size_t i = m_next++ % m_pairs;
        return {m_dst + i * m_dstStep, m_src + i * m_srcStep};
    }

private:
    std::byte *m_dst, *m_src;
    std::size_t m_dstStep, m_srcStep, m_pairs, m_next = 0;
};

/// How many pairs of buffers it takes until the first has left the caches.
std::size_t PairsFor(std::size_t pairBytes, Caches caches);

/// A row of the table: one way of doing something. The scalar variant comes before the
/// others of its routine, which are compared with it.
struct Row {
    std::string routine, variant;
    Size size;
    Caches caches;
};

/// What a routine is compared with. Clearing stands for it where nothing is read.
enum class Plain { memcpy, memset };

/// Times `routine` and `plain` in turn. The row's time is the routine's median; beside it
/// stand the quotient of the two medians and, behind the scalar row's, how many times
/// faster than that the routine is.
void RunBeside(benchmark::State& state, const Row& row, const std::function<void()>& routine,
               Plain kind, const std::function<void()>& plain);

/// Adds "<routine>/<variant>/1920x1080/cold".
void Register(const Row& row, const std::function<void(benchmark::State&, const Row&)>& run);

/// Calls fn(size, caches) for every size, cold and hot.
template <class Fn>
void ForEverySize(Fn fn) {
    for (const Size size : kSizes)
        for (const Caches caches : {Caches::cold, Caches::hot}) fn(size, caches);
}

}  // namespace zel::bench
