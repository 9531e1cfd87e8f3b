#pragma once

/// The header fields of a DPX file that say how its codes are meant. The picture
/// library reads and writes only some of their values, so they are taken from and put
/// into the file itself. Offsets and values: SMPTE 268M.

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace zel {

struct DpxTags {
    bool bigEndian = true;
    std::uint8_t transfer = 255;  // 2 linear, 3 logarithmic, ..., 255 undefined
    std::uint8_t colorimetric = 255;
};

/// The tags of a DPX file; null when the file is none.
std::optional<DpxTags> ReadDpxTags(const std::filesystem::path& file);

/// True when the file is shorter than its picture: the library reads past the end
/// without a word. Says nothing of run-length coded pictures.
bool DpxBreaksOff(const std::filesystem::path& file);

/// Puts transfer and colorimetric tag into a DPX file, and `name` as the file name that
/// its header tells. Throws Error(Other).
void WriteDpxTags(const std::filesystem::path& file, const DpxTags& tags, std::string name);

/// "log", "linear", "rec709", ...; null for another text.
std::optional<std::uint8_t> DpxTransferNamed(std::string_view name);

/// The names that DpxTransferNamed() takes.
std::vector<std::string> DpxTransferNames();

}  // namespace zel
