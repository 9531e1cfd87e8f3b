#pragma once

/// A file whose content is the fuzzer's input, for readers that want a name.

#include "fuzz/Check.h"

#include <unistd.h>

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <span>
#include <string>

namespace zel::fuzz {

class ScratchFile {
public:
    /// In memory where the system has a folder for that.
    explicit ScratchFile(const std::string& suffix) {
        namespace fs = std::filesystem;
        const fs::path shared = "/dev/shm";
        const fs::path folder = fs::is_directory(shared) ? shared : fs::temp_directory_path();
        m_path = folder / ("zelfx-fuzz-" + std::to_string(::getpid()) + suffix);
    }
    ~ScratchFile() {
        std::error_code ignored;
        std::filesystem::remove(m_path, ignored);
    }
    ScratchFile(const ScratchFile&) = delete;
    ScratchFile& operator=(const ScratchFile&) = delete;

    const std::filesystem::path& Path() const { return m_path; }

    void Fill(std::span<const std::uint8_t> bytes) const {
        std::ofstream out(m_path, std::ios::binary | std::ios::trunc);
        out.write(reinterpret_cast<const char*>(bytes.data()),
                  static_cast<std::streamsize>(bytes.size()));
        Check(out.flush().good(), "the scratch file cannot be written");
    }

private:
    std::filesystem::path m_path;
};

}  // namespace zel::fuzz
