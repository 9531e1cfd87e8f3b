/// What has one form only: planes into pairs, nearest pixels, a flip in place.

#include "bench/Frames.h"
#include "ip/Ip.h"

namespace {

using namespace zel::bench;

void RunPlanar(benchmark::State& state, const Row& row) {
    const int w = row.size.width, h = row.size.height;
    const std::size_t luma = FrameBytes(w, row.size), chroma = luma / 4;
    RunBesideCopy(state, row, 2 * luma, luma + 2 * chroma, Samples::integers,
                  [=](std::byte* dst, std::byte* src) {
                      IpPlanar_Copy_420_To_CbYCrY8_2(dst, 2 * w, src, w, src + luma, w / 2,
                                                     src + luma + chroma, w / 2, w, h);
                  });
}

void RunScale(benchmark::State& state, const Row& row) {
    const int w = row.size.width, h = row.size.height;
    const std::size_t bytes = FrameBytes(4 * w, row.size);
    RunBesideCopy(state, row, bytes, bytes, Samples::integers, [=](void* dst, void* src) {
        IpFrame_Scale_RGB10_To_BGRA8(dst, 4 * w, w, h, src, 4 * w, w, h);
    });
}

/// Every byte is read and written, half of the frame by each word.
void RunFlip(benchmark::State& state, const Row& row) {
    const int rowBytes = 4 * row.size.width;
    const std::size_t bytes = FrameBytes(rowBytes, row.size);
    RunBesideCopy(state, row, bytes, bytes, Samples::integers,
                  [=](void* dst, void*) { IpFrame_Flip(dst, rowBytes, row.size.height); });
}

[[maybe_unused]] const bool kRegistered = [] {
    ForEverySize([](Size size, Caches caches) {
        Register({"420 to CbYCrY8", "scalar", size, caches}, RunPlanar);
        Register({"scale RGB10 to BGRA8", "scalar", size, caches}, RunScale);
        Register({"flip", "scalar", size, caches}, RunFlip);
    });
    return true;
}();

}  // namespace
