#include "bench/peers/Peer.h"

#include <libyuv.h>

namespace {

using namespace zel::bench;

std::uint8_t* Bytes(std::byte* p) { return reinterpret_cast<std::uint8_t*>(p); }

template <auto kConvert, int kDstBytes, int kSrcBytes>
void Convert(std::byte* dst, std::byte* src, Size size) {
    const auto [w, h] = size;
    kConvert(Bytes(src), kSrcBytes * w, Bytes(dst), kDstBytes * w, w, h);
}

void PackPlanes(std::byte* dst, std::byte* src, Size size) {
    const auto [w, h] = size;
    const std::size_t luma = FrameBytes(w, size), chroma = luma / 4;
    libyuv::I420ToUYVY(Bytes(src), w, Bytes(src + luma), w / 2, Bytes(src + luma + chroma), w / 2,
                       Bytes(dst), 2 * w, w, h);
}

// The library counts the bytes of a word from its top: its ARGB is BGRA8.
// clang-format off
const PeerCase kCases[] = {
    {"copy",           4, 4, Samples::integers, Ready(Convert<libyuv::ARGBCopy,    4, 4>)},
    {"BGRA8 to RGB8",  3, 4, Samples::integers, Ready(Convert<libyuv::ARGBToRAW,   3, 4>)},
    {"BGRA8 to BGR8",  3, 4, Samples::integers, Ready(Convert<libyuv::ARGBToRGB24, 3, 4>)},
    {"BGRA8 to RGBA8", 4, 4, Samples::integers, Ready(Convert<libyuv::ARGBToABGR,  4, 4>)},
    {"BGRA8 to ARGB8", 4, 4, Samples::integers, Ready(Convert<libyuv::ARGBToBGRA,  4, 4>)},
    {"RGB8 to BGRA8",  4, 3, Samples::integers, Ready(Convert<libyuv::RAWToARGB,   4, 3>)},
    {"BGRA8 to RGB10", 4, 4, Samples::integers, Ready(Convert<libyuv::ARGBToAR30,  4, 4>)},
    {"420 to CbYCrY8", 2, 2, Samples::integers, Ready(PackPlanes)},
};
// clang-format on

[[maybe_unused]] const bool kRegistered = (RegisterPeer("libyuv", kCases), true);

}  // namespace
