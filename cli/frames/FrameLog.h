#pragma once

/// A line of JSON for every frame, for whoever watches a run from outside.

#include "cli/frames/Shot.h"

#include <filesystem>
#include <string>

namespace zel {

class FrameLog {
public:
    /// Appends to `file`; writes nothing when that is empty. Throws Error(Other).
    explicit FrameLog(const std::filesystem::path& file);
    ~FrameLog();
    FrameLog(const FrameLog&) = delete;
    FrameLog& operator=(const FrameLog&) = delete;

    /// {"frame":1,"in":"a.dpx","out":"b.dpx","ms":31.25,"status":"done"}, and "error" with
    /// its text when that is not empty; null where there is no file. The line is with the
    /// system on return, in one piece even when several runs append to one log.
    void Add(const Shot& shot, const std::string& error);

private:
    std::filesystem::path m_file;
    int m_descriptor = -1;
};

}  // namespace zel
