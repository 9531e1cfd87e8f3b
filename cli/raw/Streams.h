#pragma once

/// Raw bytes in and out: files or the standard streams ("-").

#include "cli/picture/TemporaryFile.h"

#include <cstddef>
#include <cstdio>
#include <memory>
#include <optional>
#include <span>
#include <string>

namespace zel {

class RawReader {
public:
    /// Throws Error(Input) when the file cannot be opened.
    explicit RawReader(const std::string& name);

    /// Fills `frame` with the next bytes. False at the end of the stream; throws
    /// Error(Input) when it breaks off within a frame.
    bool Read(std::span<std::byte> frame);

private:
    std::string m_name;
    std::unique_ptr<std::FILE, int (*)(std::FILE*)> m_file;
};

class RawWriter {
public:
    /// Throws Error(Other) when the file cannot be made.
    explicit RawWriter(const std::string& name);

    void Write(std::span<const std::byte> bytes);

    /// Gives the file its name. Throws Error(Other), as Write() does.
    void Commit();

private:
    std::string m_name;
    std::optional<TemporaryFile> m_temporary;  // none for the standard stream
    std::unique_ptr<std::FILE, int (*)(std::FILE*)> m_file;
};

}  // namespace zel
