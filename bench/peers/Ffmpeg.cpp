#include "bench/peers/Peer.h"

#include <memory>
#include <stdexcept>

extern "C" {
#include <libavfilter/avfilter.h>
#include <libavfilter/buffersink.h>
#include <libavfilter/buffersrc.h>
#include <libavutil/buffer.h>
#include <libavutil/frame.h>
#include <libavutil/pixdesc.h>
#include <libswscale/swscale.h>
}

namespace {

using namespace zel::bench;

struct Free {
    void operator()(AVFilterGraph* graph) const { avfilter_graph_free(&graph); }
    void operator()(AVFrame* frame) const { av_frame_free(&frame); }
    void operator()(SwsContext* context) const { sws_freeContext(context); }
};
template <class T>
using Owned = std::shared_ptr<T>;

template <class T>
Owned<T> Own(T* t) {
    if (!t) throw std::runtime_error("FFmpeg has no memory");
    return {t, Free{}};
}

void Check(int result, const char* what) {
    if (result < 0) throw std::runtime_error(std::string("FFmpeg failed: ") + what);
}

struct Filters {
    Owned<AVFilterGraph> graph = Own(avfilter_graph_alloc());
    AVFilterContext *in, *lut, *out;
};

/// The table filter on one thread. It takes its destination from a pool of its own.
template <AVPixelFormat kFormat>
PeerFn Lut(Size size) {
    Filters filters;
    AVFilterGraph* const graph = filters.graph.get();
    graph->nb_threads = 1;
    const std::string input = "video_size=" + std::to_string(size.width) + "x" +
                              std::to_string(size.height) + ":pix_fmt=" + std::to_string(kFormat) +
                              ":time_base=1/25";
    const auto add = [&](AVFilterContext** filter, const char* name, const char* options) {
        Check(avfilter_graph_create_filter(filter, avfilter_get_by_name(name), name, options,
                                           nullptr, graph),
              name);
    };
    add(&filters.in, "buffer", input.c_str());
    add(&filters.lut, "lutrgb", "r=maxval-val:g=val/2:b=val*val/maxval");
    add(&filters.out, "buffersink", nullptr);
    Check(avfilter_link(filters.in, 0, filters.lut, 0), "link");
    Check(avfilter_link(filters.lut, 0, filters.out, 0), "link");
    Check(avfilter_graph_config(graph, nullptr), "configuration");
    const Owned<AVFrame> from = Own(av_frame_alloc()), to = Own(av_frame_alloc());
    const int pixelBytes = av_get_bits_per_pixel(av_pix_fmt_desc_get(kFormat)) / 8;
    return [=](std::byte*, std::byte* src, Size) {
        from->format = kFormat;
        from->width = size.width;
        from->height = size.height;
        from->linesize[0] = size.width * pixelBytes;
        from->data[0] = reinterpret_cast<std::uint8_t*>(src);
        // Read-only, or the filter would write over its source.
        from->buf[0] = av_buffer_create(
            from->data[0], FrameBytes(from->linesize[0], size), [](void*, std::uint8_t*) {},
            nullptr, AV_BUFFER_FLAG_READONLY);
        Check(av_buffersrc_add_frame(filters.in, from.get()), "a frame in");
        Check(av_buffersink_get_frame(filters.out, to.get()), "a frame out");
        av_frame_unref(to.get());
    };
}

template <AVPixelFormat kTo, AVPixelFormat kFrom, int kDstBytes, int kSrcBytes>
PeerFn Convert(Size size) {
    const auto context = Own(sws_getContext(size.width, size.height, kFrom, size.width, size.height,
                                            kTo, SWS_POINT, nullptr, nullptr, nullptr));
    return [=](std::byte* dst, std::byte* src, Size) {
        const auto* const from = reinterpret_cast<const std::uint8_t*>(src);
        auto* const to = reinterpret_cast<std::uint8_t*>(dst);
        const int fromRow = kSrcBytes * size.width, toRow = kDstBytes * size.width;
        sws_scale(context.get(), &from, &fromRow, 0, size.height, &to, &toRow);
    };
}

// clang-format off
const PeerCase kCases[] = {
    {"lut 8",          4, 4, Samples::integers, Lut<AV_PIX_FMT_BGRA>},
    {"lut 16",         8, 8, Samples::integers, Lut<AV_PIX_FMT_RGBA64LE>},
    {"BGRA8 to RGB8",  3, 4, Samples::integers, Convert<AV_PIX_FMT_RGB24, AV_PIX_FMT_BGRA,   3, 4>},
    {"BGRA8 to BGR8",  3, 4, Samples::integers, Convert<AV_PIX_FMT_BGR24, AV_PIX_FMT_BGRA,   3, 4>},
    {"BGRA8 to RGBA8", 4, 4, Samples::integers, Convert<AV_PIX_FMT_RGBA,  AV_PIX_FMT_BGRA,   4, 4>},
    {"BGRA8 to ARGB8", 4, 4, Samples::integers, Convert<AV_PIX_FMT_ARGB,  AV_PIX_FMT_BGRA,   4, 4>},
    {"RGB8 to BGRA8",  4, 3, Samples::integers, Convert<AV_PIX_FMT_BGRA,  AV_PIX_FMT_RGB24,  4, 3>},
    {"BGRA8 to RGB16", 6, 4, Samples::integers, Convert<AV_PIX_FMT_RGB48BE, AV_PIX_FMT_BGRA, 6, 4>},
};
// clang-format on

[[maybe_unused]] const bool kRegistered = (RegisterPeer("FFmpeg", kCases), true);

}  // namespace
