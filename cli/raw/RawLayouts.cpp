#include "cli/raw/RawLayouts.h"

#include "headless/Error.h"
#include "headless/Text.h"
#include "ip/Ip.h"

#include <algorithm>
#include <charconv>
#include <limits>

namespace zel {

namespace {

constexpr int kMostPixels = 1 << 20;  // of a side; far above any picture

template <int Bytes>
std::int64_t PerPixel(std::int64_t width) {
    return width * Bytes;
}
std::int64_t PerPair(std::int64_t width) { return (width + 1) / 2 * 4; }
std::int64_t PerGroup(std::int64_t width) { return (width + 5) / 6 * 16; }

// clang-format off
constexpr RawLayout kLayouts[] = {
    // name       row bytes     test pattern         fill
    {"RGBA8",     PerPixel<4>,  nullptr,             IpFrame_Fill_RGBA8},
    {"BGRA8",     PerPixel<4>,  IpFrame_Test_BGRA8,  IpFrame_Fill_BGRA8},
    {"ARGB8",     PerPixel<4>,  nullptr,             IpFrame_Fill_ARGB8},
    {"ABGR8",     PerPixel<4>,  nullptr,             nullptr},
    {"RGB8",      PerPixel<3>,  nullptr,             nullptr},
    {"BGR8",      PerPixel<3>,  nullptr,             nullptr},
    {"RGB16",     PerPixel<6>,  nullptr,             nullptr},
    {"RGB16LE",   PerPixel<6>,  nullptr,             nullptr},
    {"RGB10",     PerPixel<4>,  IpFrame_Test_RGB10,  IpFrame_Fill_RGB10},
    {"DpxLE",     PerPixel<4>,  IpFrame_Test_DpxLe,  IpFrame_Fill_DpxLe},
    {"DpxBE",     PerPixel<4>,  IpFrame_Test_DpxBe,  IpFrame_Fill_DpxBe},
    {"YUYV8",     PerPair,      IpFrame_Test_YUYV8,  IpFrame_Fill_YUYV8},
    {"UYVY8",     PerPair,      IpFrame_Test_UYVY8,  IpFrame_Fill_UYVY8},
    {"YCbYCr8",   PerPair,      nullptr,             IpFrame_Fill_YUYV8},
    {"VUYA8",     PerPixel<4>,  nullptr,             nullptr},
    {"VUY8",      PerPixel<4>,  nullptr,             nullptr},
    {"v210",      PerGroup,     nullptr,             IpFrame_Fill_v210},
};

constexpr RawConversion kConversions[] = {
    {"BGRA8",   "RGB8",    IpFrame_Copy_BGRA8_To_RGB8},
    {"BGRA8",   "BGR8",    IpFrame_Copy_BGRA8_To_BGR8},
    {"BGRA8",   "ARGB8",   IpFrame_Copy_BGRA8_To_ARGB8},
    {"BGRA8",   "ABGR8",   IpFrame_Copy_BGRA8_To_ABGR8},
    {"BGRA8",   "RGBA8",   IpFrame_Copy_BGRA8_To_RGBA8},
    {"BGRA8",   "RGB16",   IpFrame_Copy_BGRA8_To_RGB16},
    {"BGRA8",   "RGB10",   IpFrame_Copy_BGRA8_To_RGB10},
    {"BGRA8",   "DpxLE",   IpFrame_Copy_BGRA8_To_DpxLE},
    {"BGRA8",   "DpxBE",   IpFrame_Copy_BGRA8_To_DpxBE},
    {"BGRA8",   "v210",    IpFrame_Copy_BGRA8_To_v210},
    {"RGBA8",   "BGRA8",   IpFrame_Copy_RGBA8_To_BGRA8},
    {"RGBA8",   "v210",    IpFrame_Copy_RGBA8_To_v210},
    {"RGB8",    "BGRA8",   IpFrame_Copy_RGB8_To_BGRA8},
    {"RGB8",    "RGBA8",   IpFrame_Copy_RGB8_To_RGBA8},
    {"RGB8",    "ARGB8",   IpFrame_Copy_RGB8_To_ARGB8},
    {"RGB8",    "RGB10",   IpFrame_Copy_RGB8_To_RGB10},
    {"RGB8",    "v210",    IpFrame_Copy_RGB8_To_v210},
    {"RGB16LE", "RGB10",   IpFrame_Copy_RGB16LE_To_RGB10},
    {"RGB10",   "BGRA8",   IpFrame_Copy_RGB10_To_BGRA8},
    {"DpxLE",   "BGRA8",   IpFrame_Copy_DpxLE_To_BGRA8},
    {"DpxBE",   "BGRA8",   IpFrame_Copy_DpxBE_To_BGRA8},
    {"DpxLE",   "DpxBE",   IpFrame_Copy_Endian32},
    {"DpxBE",   "DpxLE",   IpFrame_Copy_Endian32},
    {"v210",    "YCbYCr8", IpFrame_Copy_v210_To_YCbYCr8},
    {"VUYA8",   "VUY8",    IpFrame_Copy_VUYA8_To_VUY8},
    {"VUYA8",   "YCbYCr8", IpFrame_Copy_VUYA8_To_YCbYCr8},
};
// clang-format on

}  // namespace

std::span<const RawLayout> RawLayouts() { return kLayouts; }
std::span<const RawConversion> RawConversions() { return kConversions; }

const RawLayout& RawLayoutNamed(std::string_view name) {
    std::vector<std::string> names;
    for (const RawLayout& layout : kLayouts) {
        if (Lower(layout.name) == Lower(name)) return layout;
        names.emplace_back(layout.name);
    }
    throw Error(ErrorKind::Usage, "there is no layout '" + std::string(name) +
                                      "'; the library has " + Alternatives(names));
}

const RawConversion& FindConversion(const RawLayout& from, const RawLayout& to) {
    std::vector<std::string> targets;
    for (const RawConversion& conversion : kConversions) {
        if (conversion.from != from.name) continue;
        if (conversion.to == to.name) return conversion;
        targets.emplace_back(conversion.to);
    }
    throw Error(
        ErrorKind::Usage,
        "the library does not convert " + std::string(from.name) + " to " + std::string(to.name) +
            (targets.empty()
                 ? ", nor " + std::string(from.name) + " to anything"
                 : "; from " + std::string(from.name) + " it makes " + Alternatives(targets)));
}

FrameSize ParseSize(const std::string& text) {
    FrameSize size{};
    const char* const end = text.data() + text.size();
    const auto width = std::from_chars(text.data(), end, size.width);
    if (width.ec == std::errc{} && width.ptr != end && *width.ptr == 'x') {
        const auto height = std::from_chars(width.ptr + 1, end, size.height);
        if (height.ec == std::errc{} && height.ptr == end && size.width > 0 && size.height > 0 &&
            size.width <= kMostPixels && size.height <= kMostPixels)
            return size;
    }
    throw Error(ErrorKind::Usage, "'" + text + "' is no size: write WIDTHxHEIGHT, as in 1920x1080");
}

int NumberOption(const Arguments& arguments, const std::string& key, int otherwise, int low,
                 int high) {
    const auto text = arguments.Last(key);
    if (!text) return otherwise;
    int value = 0;
    const char* const end = text->data() + text->size();
    const auto [rest, error] = std::from_chars(text->data(), end, value);
    if (error != std::errc{} || rest != end || value < low || value > high)
        throw Error(ErrorKind::Usage, "--" + key + " cannot be '" + *text +
                                          "': it takes a whole number from " + std::to_string(low) +
                                          " to " + std::to_string(high));
    return value;
}

int RowBytesOption(const Arguments& arguments, const std::string& key, const RawLayout& layout,
                   int width) {
    constexpr int most = std::numeric_limits<std::int32_t>::max();
    const std::int64_t least = layout.rowBytes(width);
    if (least > most)
        throw Error(ErrorKind::Usage, "a row of " + std::to_string(width) + " pixels in " +
                                          std::string(layout.name) + " is too long");
    return NumberOption(arguments, key, static_cast<int>(least), static_cast<int>(least), most);
}

}  // namespace zel
