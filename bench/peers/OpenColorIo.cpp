#include "bench/LutTables.h"
#include "bench/peers/Peer.h"

#include <OpenColorIO/OpenColorIO.h>

namespace {

using namespace zel::bench;
namespace OCIO = OCIO_NAMESPACE;

/// A table of 1024 entries for red, green and blue; alpha passes through.
template <OCIO::BitDepth kDepth, int kSampleBytes>
PeerFn Lut(Size) {
    const LutTables tables = RandomTables();
    const auto table = OCIO::Lut1DTransform::Create(1024, false);
    for (unsigned long i = 0; i < 1024; ++i) {
        const auto entry = [&](std::size_t c) { return static_cast<float>(tables[c][i]) / 1023; };
        table->setValue(i, entry(0), entry(1), entry(2));
    }
    const auto processor = OCIO::Config::CreateRaw()->getProcessor(table);
    const auto cpu =
        processor->getOptimizedCPUProcessor(kDepth, kDepth, OCIO::OPTIMIZATION_DEFAULT);
    return [=](std::byte* dst, std::byte* src, Size size) {
        const auto image = [=](std::byte* pixels) {
            constexpr std::ptrdiff_t kPixel = 4 * kSampleBytes;
            return OCIO::PackedImageDesc(pixels, size.width, size.height,
                                         OCIO::CHANNEL_ORDERING_BGRA, kDepth, kSampleBytes, kPixel,
                                         kPixel * size.width);
        };
        OCIO::PackedImageDesc from = image(src), to = image(dst);
        cpu->apply(from, to);
    };
}

// clang-format off
const PeerCase kCases[] = {
    {"lut 8",      4,  4, Samples::integers, Lut<OCIO::BIT_DEPTH_UINT8,  1>},
    {"lut 16",     8,  8, Samples::integers, Lut<OCIO::BIT_DEPTH_UINT16, 2>},
    {"lut float", 16, 16, Samples::floats,   Lut<OCIO::BIT_DEPTH_F32,    4>},
};
// clang-format on

[[maybe_unused]] const bool kRegistered = (RegisterPeer("OpenColorIO", kCases), true);

}  // namespace
