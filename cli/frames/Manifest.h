#pragma once

/// A list of files with their sizes and SHA-256 sums, for knowing later that all of them
/// are there and whole:
///
///   {
///     "version": 1,
///     "files": [
///       {"frame": 1, "name": "shot.0001.dpx", "size": 8302592, "sha256": "9f86d081..."},
///       {"frame": 2, "name": "shot.0002.dpx", "size": 8302592, "sha256": "60303ae2..."}
///     ]
///   }
///
/// Names are relative to the folder of the manifest and never lead out of it.

#include "cli/picture/TemporaryFile.h"

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <map>
#include <string>
#include <vector>

namespace zel {

/// What tells a file from another.
struct FileFacts {
    std::uint64_t bytes = 0;
    std::string sum;  // 64 hexadecimal digits
};

/// Throws Error(Other) when the file cannot be read.
FileFacts FactsOfFile(const std::filesystem::path& file);

struct ManifestEntry {
    std::int64_t frame;
    std::filesystem::path file;  // can be opened from here
    FileFacts facts;
};

class ManifestWriter {
public:
    /// For files in `folder`. Throws Error(Usage) unless that is the folder of the manifest
    /// or below it, Error(Other) when no file can be made there.
    ManifestWriter(const std::filesystem::path& manifest, const std::filesystem::path& folder);

    /// Throws Error(Other) for a name that JSON cannot hold.
    void Add(std::int64_t frame, const std::filesystem::path& file, const FileFacts& facts);

    /// Gives the manifest its name, when it is on the disk. Without, there is none.
    void Finish();

private:
    std::filesystem::path m_manifest, m_prefix;  // of names, "graded" for graded/1.dpx
    TemporaryFile m_temporary;
    std::ofstream m_out;
    const char* m_separator = "";
};

/// Throws Error(Input) when it cannot be read, is no manifest, or names a file outside of
/// its folder.
std::vector<ManifestEntry> ReadManifest(const std::filesystem::path& manifest);

/// What is wrong with a file of a manifest: "is missing", "has 3 bytes, not 8302592";
/// empty when it is as it should be.
std::string FaultOf(const ManifestEntry& entry);

/// The files of a manifest, for looking them up by name.
class ExpectedFiles {
public:
    /// Throws as ReadManifest does.
    explicit ExpectedFiles(const std::filesystem::path& manifest);

    /// As FaultOf, for a file as it was found; one that is not listed has a fault too.
    std::string FaultOf(const std::filesystem::path& file, const FileFacts& found) const;

private:
    std::map<std::filesystem::path, FileFacts> m_files;  // by absolute names
};

}  // namespace zel
