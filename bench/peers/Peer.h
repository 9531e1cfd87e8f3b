#pragma once

/// What other libraries take for the same. Their rows are variants of the routine that
/// they are compared with; they need not give the same bits.

#include "bench/Frames.h"

#include <functional>

namespace zel::bench {

/// Converts one frame; rows without gaps.
using PeerFn = std::function<void(std::byte* dst, std::byte* src, Size size)>;

struct PeerCase {
    const char* routine;
    int dstBytes, srcBytes;  // of a pixel
    Samples samples;
    /// Sets up what frames of this size share, which does not count.
    std::function<PeerFn(Size size)> start;
};

/// Registers "<routine>/peer/<library>" at every size, cold and hot. `cases` outlives all.
template <std::size_t kCount>
void RegisterPeer(const char* library, const PeerCase (&cases)[kCount]) {
    for (const PeerCase& peer : cases)
        ForEverySize([&](Size size, Caches caches) {
            const auto run = [&peer](benchmark::State& state, const Row& row) {
                const PeerFn convert = peer.start(row.size);
                const auto bytes = [&](int pixelBytes) {
                    return FrameBytes(row.size.width * pixelBytes, row.size);
                };
                RunBesideCopy(state, row, bytes(peer.dstBytes), bytes(peer.srcBytes), peer.samples,
                              [&](std::byte* dst, std::byte* src) { convert(dst, src, row.size); });
            };
            Register({peer.routine, std::string("peer/") + library, size, caches}, run);
        });
}

/// For libraries that have nothing to set up.
inline std::function<PeerFn(Size)> Ready(PeerFn convert) {
    return [=](Size) { return convert; };
}

}  // namespace zel::bench
