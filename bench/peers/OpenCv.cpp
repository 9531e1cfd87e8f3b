#include "bench/LutTables.h"
#include "bench/peers/Peer.h"

#include <opencv2/core.hpp>

namespace {

using namespace zel::bench;

PeerFn Lut8(Size) {
    cv::setNumThreads(1);
    const LutTables tables = RandomTables();
    cv::Mat table(1, 256, CV_8UC4);
    for (int i = 0; i < 256; ++i)
        for (int c = 0; c < 4; ++c)
            table.at<cv::Vec4b>(i)[c] = static_cast<std::uint8_t>(
                tables[static_cast<std::size_t>(c)][static_cast<std::size_t>(i)]);
    return [=](std::byte* dst, std::byte* src, Size size) {
        const cv::Mat from(size.height, size.width, CV_8UC4, src);
        cv::Mat to(size.height, size.width, CV_8UC4, dst);
        cv::LUT(from, table, to);
    };
}

const PeerCase kCases[] = {{"lut 8", 4, 4, Samples::integers, Lut8}};

[[maybe_unused]] const bool kRegistered = (RegisterPeer("OpenCV", kCases), true);

}  // namespace
