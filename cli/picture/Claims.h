#pragma once

/// Sizes that the header of a picture file claims, held to the bytes that the file has.
/// Asked before the picture library opens the file: it allocates first, as much as claimed,
/// and finds out later.

#include <filesystem>
#include <optional>
#include <string>

namespace zel {

/// What a DPX or OpenEXR file claims to hold and cannot, as in "more user data than it has
/// bytes"; null for a believable file and for one of another type. Says nothing of pixels. User
/// data: SMPTE 268M; attributes: "OpenEXR File Layout".
std::optional<std::string> FalseClaim(const std::filesystem::path& file);

}  // namespace zel
