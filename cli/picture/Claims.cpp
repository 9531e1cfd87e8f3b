#include "cli/picture/Claims.h"

#include <array>
#include <cstdint>
#include <fstream>
#include <limits>
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

bool DpxClaimsTooMuch(std::istream& in, bool bigEndian, std::uint64_t fileBytes) {
    constexpr std::streamoff kUserDataOffset = 32;
    constexpr std::uint32_t kUndefined = 0xFFFFFFFF;
    in.seekg(kUserDataOffset);
    const std::uint32_t userData = TakeWord(in, bigEndian);
    return userData != kUndefined && userData > fileBytes;
}

/// Passes over a text and the zero that ends it; its length, 0 where the file ends in it.
std::streamsize PassText(std::istream& in) {
    in.ignore(std::numeric_limits<std::streamsize>::max(), '\0');
    return in.good() ? in.gcount() - 1 : 0;
}

/// Of a header, or of several behind each other, each a list of attributes that an empty
/// name ends, and an empty header behind them all: name, type, bytes of the value, value.
bool ExrClaimsTooMuch(std::istream& in, std::uint64_t fileBytes) {
    constexpr std::uint32_t kSeveralParts = 0x1000;
    const bool several = TakeWord(in, false) & kSeveralParts;
    do {
        bool empty = true;
        for (; PassText(in) > 0; empty = false) {
            PassText(in);  // the type, which may be empty
            const std::uint32_t bytes = TakeWord(in, false);
            if (!in) return false;  // it ends here: the library says so
            if (bytes > fileBytes - static_cast<std::uint64_t>(in.tellg())) return true;
            in.seekg(bytes, std::ios::cur);
        }
        if (empty) return false;
    } while (several && in);
    return false;
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
    if (type == "\x76\x2F\x31\x01" && ExrClaimsTooMuch(in, fileBytes))
        return "an attribute of more bytes than it has";
    return std::nullopt;
}

}  // namespace zel
