#include "cli/picture/Claims.h"

#include <array>
#include <cstdint>
#include <fstream>
#include <string>
#include <string_view>

namespace zel {

namespace fs = std::filesystem;

namespace {

std::uint32_t Word(std::string_view bytes, bool bigEndian) {
    std::uint32_t value = 0;
    for (unsigned i = 0; i < 4; ++i)
        value |= std::uint32_t{static_cast<unsigned char>(bytes[bigEndian ? 3 - i : i])} << 8 * i;
    return value;
}

/// `Bytes` of a file from where it is read; all zero where it ends before.
template <std::size_t Bytes>
std::array<char, Bytes> Take(std::istream& in) {
    std::array<char, Bytes> bytes{};
    if (!in.read(bytes.data(), Bytes)) bytes.fill('\0');
    return bytes;
}

std::uint32_t TakeWord(std::istream& in, bool bigEndian) {
    const auto bytes = Take<4>(in);
    return Word({bytes.data(), bytes.size()}, bigEndian);
}

// --- DPX ------------------------------------------------------------------------

bool DpxClaimsTooMuch(std::istream& in, bool bigEndian, std::uint64_t fileBytes) {
    constexpr std::streamoff kUserDataOffset = 32;
    constexpr std::uint32_t kUndefined = 0xFFFFFFFF;
    in.seekg(kUserDataOffset);
    const std::uint32_t userData = TakeWord(in, bigEndian);
    return userData != kUndefined && userData > fileBytes;
}

// --- OpenEXR --------------------------------------------------------------------

/// A text and the zero that ends it; null where the file ends in it, or it is longer than
/// names may be.
std::optional<std::string> TakeText(std::istream& in) {
    constexpr std::size_t kLongest = 255;
    std::string text;
    for (char c; in.get(c) && text.size() <= kLongest; text += c)
        if (c == '\0') return text;
    return std::nullopt;
}

struct TypeBytes {
    std::string_view type;
    std::uint32_t bytes;
};

// clang-format off
constexpr TypeBytes kFixedTypes[] = {
    {"box2f",  16}, {"box2i",  16}, {"chromaticities", 32}, {"compression", 1},
    {"double",  8}, {"envmap",  1}, {"deepImageState",  1}, {"lineOrder",   1},
    {"float",   4}, {"int",     4}, {"rational",        8}, {"keycode",    28},
    {"m33d",   72}, {"m33f",   36}, {"tiledesc",        9}, {"timecode",    8},
    {"m44d",  128}, {"m44f",   64},
    {"v2d",    16}, {"v2f",     8}, {"v2i",             8},
    {"v3d",    24}, {"v3f",    12}, {"v3i",            12},
};
// clang-format on

/// Names with 16 bytes each, and an empty name.
void PassChannels(std::istream& in) {
    while (in && !TakeText(in).value_or("").empty()) in.seekg(16, std::ios::cur);
}

/// Texts behind their lengths.
void PassTexts(std::istream& in, std::streamoff end) {
    while (in && in.tellg() < end) in.seekg(TakeWord(in, false), std::ios::cur);
}

/// True when the value that begins here has the bytes that it claims, as far as its type
/// tells: the library goes by the type, and reads what follows from where that ends.
bool HasItsLength(std::istream& in, std::string_view type, std::uint32_t bytes) {
    for (const TypeBytes& fixed : kFixedTypes)
        if (type == fixed.type) return bytes == fixed.bytes;
    const std::streamoff end = in.tellg() + std::streamoff{bytes};
    if (type == "preview") {
        const std::uint64_t width = TakeWord(in, false), height = TakeWord(in, false);
        return width <= bytes && height <= bytes && 8 + 4 * width * height == bytes;
    }
    if (type == "chlist")
        PassChannels(in);
    else if (type == "stringvector")
        PassTexts(in, end);
    else
        return true;
    return in && in.tellg() == end;
}

/// What is wrong in the header, or in several behind each other, each a list of attributes
/// that an empty name ends, and an empty header behind them all. An attribute: name, type,
/// bytes of the value, value.
std::optional<std::string> FalseClaimOfExr(std::istream& in, std::uint64_t fileBytes) {
    constexpr std::uint32_t kSeveralParts = 0x1000;
    const bool several = TakeWord(in, false) & kSeveralParts;
    for (bool more = true; more;) {
        bool empty = true;
        for (auto name = TakeText(in); !name || !name->empty(); name = TakeText(in)) {
            const auto type = TakeText(in);
            const std::uint32_t bytes = TakeWord(in, false);
            if (!name || !type || !in) return std::nullopt;  // the library says so
            const std::streamoff begin = in.tellg();
            if (bytes > fileBytes - static_cast<std::uint64_t>(begin))
                return "an attribute of more bytes than it has";
            if (!HasItsLength(in, *type, bytes))
                return "an attribute of other bytes than its type has";
            in.clear();
            in.seekg(begin + std::streamoff{bytes});
            empty = false;
        }
        more = several && !empty;
    }
    return std::nullopt;
}

}  // namespace

std::optional<std::string> FalseClaim(const fs::path& file) {
    std::error_code ignored;
    if (!fs::is_regular_file(file, ignored)) return std::nullopt;
    const std::uint64_t fileBytes = fs::file_size(file, ignored);
    std::ifstream in(file, std::ios::binary);
    const auto magic = Take<4>(in);
    const std::string_view type(magic.data(), magic.size());
    if ((type == "SDPX" || type == "XPDS") && DpxClaimsTooMuch(in, type == "SDPX", fileBytes))
        return "more user data than it has bytes";
    if (type == "\x76\x2F\x31\x01") return FalseClaimOfExr(in, fileBytes);
    return std::nullopt;
}

}  // namespace zel
