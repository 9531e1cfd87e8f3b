/// Copies and conversions of whole frames.

#include "bench/Frames.h"
#include "ip/detail/CopyVariants.h"

namespace {

using namespace zel::bench;
using namespace zel::ip;

/// A plain copy counts bytes: the frame is a row of them.
void RunPlain(benchmark::State& state, const Row& row, const CopyVariant& variant) {
    const std::size_t bytes = FrameBytes(row.size.width * 4, row.size);
    const int all = static_cast<int>(bytes);
    RunBesideCopy(state, row, bytes, bytes, Samples::integers, [&](void* dst, void* src) {
        CopyFrame(kPlainCopy, variant, dst, all, src, all, all, 1);
    });
}

void Run(benchmark::State& state, const Row& row, const CopyFamily& family,
         const CopyVariant& variant) {
    const int width = row.size.width, height = row.size.height;
    const int dstRow = RowBytes(width, family.pixels, family.dstBytes);
    const int srcRow = RowBytes(width, family.pixels, family.srcBytes);
    RunBesideCopy(state, row, FrameBytes(dstRow, row.size), FrameBytes(srcRow, row.size),
                  Samples::integers, [&](void* dst, void* src) {
                      CopyFrame(family, variant, dst, dstRow, src, srcRow, width, height);
                  });
}

[[maybe_unused]] const bool kRegistered = [] {
    for (const CopyFamily* const family : CopyFamilies())
        ForEverySize([=](Size size, Caches caches) {
            for (const CopyVariant& variant : family->variants)
                if (variant.needs <= SupportedCpu())
                    Register({family->name, variant.name, size, caches},
                             [=, &variant](auto& state, const Row& row) {
                                 if (family == &kPlainCopy)
                                     RunPlain(state, row, variant);
                                 else
                                     Run(state, row, *family, variant);
                             });
        });
    return true;
}();

}  // namespace
