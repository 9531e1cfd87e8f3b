/// Picture files of any content: a frame of the size that the header claims, or an error
/// in one line.

#include "cli/picture/Picture.h"
#include "fuzz/ScratchFile.h"
#include "headless/Error.h"

#include <array>
#include <cstring>

namespace {

using namespace zel;
using namespace zel::fuzz;

constexpr std::int64_t kMostPixels = 1 << 20;  // larger ones cost time and show nothing more

void ReadWhole(const std::filesystem::path& path, PrPixelFormat format) {
    PictureReader reader(path);
    const PictureHeader& header = reader.Header();
    Check(header.width > 0 && header.height > 0, "a picture without pixels was taken");
    if (std::int64_t{header.width} * header.height > kMostPixels) return;
    Frame frame(format, header.width, header.height);
    reader.Read(frame);
}

}  // namespace

/// The picture library loses a few bytes of its own on damaged files. Asked for by a shared
/// library when the compiler is g++: not to be hidden.
extern "C" __attribute__((visibility("default"))) const char* __asan_default_options();
extern "C" const char* __asan_default_options() { return "detect_leaks=0"; }

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const std::array<ScratchFile, 5> files{ScratchFile(".png"), ScratchFile(".dpx"),
                                                  ScratchFile(".tif"), ScratchFile(".jpg"),
                                                  ScratchFile(".exr")};
    constexpr std::array formats{PrPixelFormat_BGRA_4444_8u, PrPixelFormat_BGRA_4444_16u,
                                 PrPixelFormat_BGRA_4444_32f};
    if (size == 0) return 0;
    const ScratchFile& file = files[data[0] % files.size()];
    file.Fill({data + 1, size - 1});
    try {
        ReadWhole(file.Path(), formats[data[0] / files.size() % formats.size()]);
    } catch (const Error& e) {
        Check(e.what()[0] != '\0' && !std::strchr(e.what(), '\n'), "an error is not one line");
    }
    return 0;
}
