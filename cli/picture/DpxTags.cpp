#include "cli/picture/DpxTags.h"

#include "headless/Error.h"
#include "headless/Text.h"

#include <algorithm>
#include <array>
#include <fstream>
#include <iterator>

namespace zel {

namespace {

constexpr std::size_t kHeaderBytes = 2048;
constexpr std::size_t kFileNameOffset = 36, kFileNameBytes = 100;

// Of the first image element; single bytes, so the byte order does not matter.
constexpr std::streamoff kTransferOffset = 801;
constexpr std::streamoff kColorimetricOffset = 802;

// A field without a value.
constexpr std::uint64_t kUndefined = 0xFFFFFFFF;

/// Numbers of a header, in the byte order that its first word tells.
class Header {
public:
    explicit Header(const std::filesystem::path& file) {
        std::ifstream in(file, std::ios::binary);
        in.read(m_bytes.data(), kHeaderBytes);
    }

    std::uint64_t Number(std::size_t offset, std::size_t bytes) const {
        const bool bigEndian = m_bytes[0] == 'S';
        std::uint64_t value = 0;
        for (std::size_t i = 0; i < bytes; ++i) {
            const std::size_t at = offset + (bigEndian ? i : bytes - 1 - i);
            value = value << 8 | static_cast<unsigned char>(m_bytes[at]);
        }
        return value;
    }

private:
    std::array<char, kHeaderBytes> m_bytes{};
};

std::uint64_t SamplesPerPixel(std::uint64_t descriptor) {
    switch (descriptor) {
        case 50:
        case 102: return 3;
        case 51:
        case 52:
        case 103: return 4;
        case 100: return 2;
        default: return 1;
    }
}

/// Bytes of a row without the padding that may follow it.
std::uint64_t RowBytes(std::uint64_t samples, std::uint64_t bits, bool filled) {
    if (filled && bits == 10) return (samples + 2) / 3 * 4;
    if (filled && bits == 12) return samples * 2;
    return (samples * bits + 7) / 8;
}

struct TransferName {
    std::string_view name;
    std::uint8_t value;
};

constexpr TransferName kTransfers[] = {
    {"user", 0},      {"printing", 1}, {"linear", 2},    {"log", 3},       {"video", 4},
    {"smpte274m", 5}, {"rec709", 6},   {"bt601-625", 7}, {"bt601-525", 8}, {"undefined", 255},
};

}  // namespace

std::optional<DpxTags> ReadDpxTags(const std::filesystem::path& file) {
    std::ifstream in(file, std::ios::binary);
    std::array<char, 4> magic{};
    if (!in.read(magic.data(), magic.size())) return std::nullopt;
    const std::string_view text(magic.data(), magic.size());
    if (text != "SDPX" && text != "XPDS") return std::nullopt;

    DpxTags tags{.bigEndian = text == "SDPX"};
    std::array<char, 2> bytes{};
    in.seekg(kTransferOffset);
    if (in.read(bytes.data(), bytes.size())) {
        tags.transfer = static_cast<std::uint8_t>(bytes[0]);
        tags.colorimetric = static_cast<std::uint8_t>(bytes[1]);
    }
    return tags;
}

bool DpxBreaksOff(const std::filesystem::path& file) {
    const Header header(file);
    if (header.Number(806, 2) == 1) return false;  // run-length coded
    const std::uint64_t width = header.Number(772, 4), height = header.Number(776, 4);
    const std::uint64_t ofElement = header.Number(808, 4);
    const std::uint64_t begin =
        ofElement == kUndefined || ofElement == 0 ? header.Number(4, 4) : ofElement;
    const std::uint64_t row = RowBytes(width * SamplesPerPixel(header.Number(800, 1)),
                                       header.Number(803, 1), header.Number(804, 2) != 0);
    return std::filesystem::file_size(file) < begin + row * height;
}

void WriteDpxTags(const std::filesystem::path& file, const DpxTags& tags, std::string name) {
    static_assert(kColorimetricOffset == kTransferOffset + 1);
    const std::array<char, 2> bytes{static_cast<char>(tags.transfer),
                                    static_cast<char>(tags.colorimetric)};
    name.resize(kFileNameBytes - 1);
    name.push_back('\0');
    std::fstream out(file, std::ios::binary | std::ios::in | std::ios::out);
    out.seekp(kFileNameOffset);
    out.write(name.data(), kFileNameBytes);
    out.seekp(kTransferOffset);
    out.write(bytes.data(), bytes.size());
    out.close();
    if (!out)
        throw Error(ErrorKind::Other, "cannot write the DPX header of '" + file.string() + "'");
}

std::optional<std::uint8_t> DpxTransferNamed(std::string_view name) {
    const auto* found = std::ranges::find(kTransfers, Lower(name), &TransferName::name);
    if (found == std::end(kTransfers)) return std::nullopt;
    return found->value;
}

std::vector<std::string> DpxTransferNames() {
    std::vector<std::string> names;
    for (const TransferName& t : kTransfers) names.emplace_back(t.name);
    return names;
}

}  // namespace zel
