#include "cli/picture/TemporaryFile.h"

#include "headless/Error.h"

#include <cerrno>
#include <cstring>
#include <fstream>
#include <random>
#include <string>
#include <system_error>

namespace zel {

namespace fs = std::filesystem;

namespace {

/// Differs between processes and calls.
std::string UniqueWord() {
    static thread_local std::random_device device;
    constexpr char digits[] = "0123456789abcdefghijklmnopqrstuvwxyz";
    std::string word;
    for (int i = 0; i < 10; ++i) word += digits[device() % 36];
    return word;
}

}  // namespace

TemporaryFile::TemporaryFile(const fs::path& target) : m_target(target) {
    std::error_code ignored;
    const fs::path folder = target.has_parent_path() ? target.parent_path() : fs::path(".");
    if (!fs::is_directory(folder, ignored))
        throw Error(ErrorKind::Other, "cannot write '" + target.string() +
                                          "': there is no folder '" + folder.string() + "'");
    if (fs::is_directory(target, ignored))
        throw Error(ErrorKind::Other,
                    "cannot write '" + target.string() + "': it is a folder; name a file in it");
    // Not after the target: its name may be as long as names can be.
    m_path = folder / (".zelfx-" + UniqueWord() + target.extension().string());
    errno = 0;
    if (!std::ofstream(m_path))
        throw Error(ErrorKind::Other,
                    "cannot write '" + target.string() + "': " + std::strerror(errno));
}

TemporaryFile::~TemporaryFile() {
    std::error_code ignored;
    if (!m_path.empty()) fs::remove(m_path, ignored);
}

void TemporaryFile::Commit() {
    std::error_code error;
    fs::rename(m_path, m_target, error);
    if (error)
        throw Error(ErrorKind::Other,
                    "cannot write '" + m_target.string() + "': " + error.message());
    m_path.clear();
}

}  // namespace zel
