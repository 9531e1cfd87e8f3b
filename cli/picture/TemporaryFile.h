#pragma once

/// A file that exists under its final name only when it is complete.

#include <cstddef>
#include <filesystem>

namespace zel {

/// An empty file beside `target` with the same suffix, removed on destruction unless
/// Commit() was called. Locked (flock) as long as this lives, so that others can tell it
/// from one whose program was killed. Whoever writes it must write to this very file.
class TemporaryFile {
public:
    /// Throws Error(Other) when no file can be made there or `target` is a folder.
    explicit TemporaryFile(const std::filesystem::path& target);
    ~TemporaryFile();
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    const std::filesystem::path& Path() const { return m_path; }

    enum Safety { InCache, OnDisk };  // OnDisk: the content outlives a power cut

    /// Renames to the target, replacing what was there. Throws Error(Other).
    void Commit(Safety safety = InCache);

private:
    void Close();

    std::filesystem::path m_target, m_path;
    int m_lock = -1;  // file descriptor that holds the lock
    int m_slot = -1;  // among those that RemoveTemporaryFiles() knows
};

/// Removes temporary files in `folder` that a killed run of this machine left. Those of
/// other machines stay: on a shared disk a lock need not reach from one to the other.
/// Returns how many.
std::size_t RemoveDeadTemporaryFiles(const std::filesystem::path& folder);

/// Removes the temporary files of this process, as far as it can: for a program that
/// ends at once. Safe in a signal handler.
void RemoveTemporaryFiles() noexcept;

}  // namespace zel
