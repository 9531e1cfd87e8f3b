#pragma once

/// A file that exists under its final name only when it is complete.

#include <filesystem>

namespace zel {

/// An empty file beside `target` with the same suffix, removed on destruction unless
/// Commit() was called.
class TemporaryFile {
public:
    /// Throws Error(Other) when no file can be made there or `target` is a folder.
    explicit TemporaryFile(const std::filesystem::path& target);
    ~TemporaryFile();
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    const std::filesystem::path& Path() const { return m_path; }

    /// Renames to the target, replacing what was there. Throws Error(Other).
    void Commit();

private:
    std::filesystem::path m_target, m_path;
};

}  // namespace zel
