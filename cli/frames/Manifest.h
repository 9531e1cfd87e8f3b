#pragma once

/// A list of files with their sizes and SHA-256 sums, for knowing later that all of them
/// are there and whole. `sha256sum -c` checks it too: the sizes stand in comments.
///
///   # 8302592 bytes
///   9f86d081...0f00a08  shot.0001.dpx
///
/// Names are relative to the folder of the manifest.

#include "cli/picture/TemporaryFile.h"

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string>
#include <vector>

namespace zel {

struct ManifestEntry {
    std::filesystem::path file;  // can be opened from here
    std::string name;            // as it stands in the manifest
    std::optional<std::uint64_t> bytes;
    std::string sum;  // 64 hexadecimal digits
};

/// What a file is. Throws Error(Other) when it cannot be read.
ManifestEntry EntryOf(const std::filesystem::path& file);

class ManifestWriter {
public:
    /// Throws Error(Other) when no file can be made there.
    explicit ManifestWriter(const std::filesystem::path& manifest);

    void Add(const ManifestEntry& entry);

    /// Gives the manifest its name. Without, there is none.
    void Finish();

private:
    std::filesystem::path m_manifest, m_folder;
    TemporaryFile m_temporary;
    std::ofstream m_out;
};

/// Throws Error(Input) when it cannot be read or is no manifest.
std::vector<ManifestEntry> ReadManifest(const std::filesystem::path& manifest);

/// What is wrong with a file of a manifest: "is missing", "has 3 bytes, not 8302592";
/// empty when it is as it should be.
std::string FaultOf(const ManifestEntry& entry);

}  // namespace zel
