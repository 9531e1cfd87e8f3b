#include "cli/picture/DpxTags.h"

#include "headless/Error.h"
#include "headless/Text.h"

#include <algorithm>
#include <array>
#include <fstream>
#include <iterator>

namespace zel {

namespace {

// Of the first image element; single bytes, so the byte order does not matter.
constexpr std::streamoff kTransferOffset = 801;
constexpr std::streamoff kColorimetricOffset = 802;

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

void WriteDpxTags(const std::filesystem::path& file, const DpxTags& tags) {
    static_assert(kColorimetricOffset == kTransferOffset + 1);
    const std::array<char, 2> bytes{static_cast<char>(tags.transfer),
                                    static_cast<char>(tags.colorimetric)};
    std::fstream out(file, std::ios::binary | std::ios::in | std::ios::out);
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

std::string DpxTransferNames() {
    std::vector<std::string> names;
    for (const TransferName& t : kTransfers) names.emplace_back(t.name);
    return Alternatives(names);
}

}  // namespace zel
