#include "cli/raw/Streams.h"

#include "headless/Error.h"

#include <cerrno>
#include <cstring>
#include <filesystem>

#if defined(_WIN32)
#include <fcntl.h>
#include <io.h>
#endif

namespace zel {

namespace {

using File = std::unique_ptr<std::FILE, int (*)(std::FILE*)>;

File Standard(std::FILE* stream) {
#if defined(_WIN32)
    _setmode(_fileno(stream), _O_BINARY);
#endif
    return {stream, std::fflush};
}

File OpenForReading(const std::string& name) {
    if (name == "-") return Standard(stdin);
    std::error_code ignored;
    if (std::filesystem::is_directory(name, ignored))
        throw Error(ErrorKind::Input, "cannot read '" + name + "': it is a folder");
    File file(std::fopen(name.c_str(), "rb"), std::fclose);
    if (!file) throw Error(ErrorKind::Input, "cannot read '" + name + "': " + std::strerror(errno));
    return file;
}

}  // namespace

RawReader::RawReader(const std::string& name) : m_name(name), m_file(OpenForReading(name)) {}

bool RawReader::Read(std::span<std::byte> frame) {
    const std::size_t count = std::fread(frame.data(), 1, frame.size(), m_file.get());
    if (std::ferror(m_file.get()))
        throw Error(ErrorKind::Input, "cannot read '" + m_name + "': " + std::strerror(errno));
    if (count != 0 && count != frame.size())
        throw Error(ErrorKind::Input, "'" + m_name + "' breaks off: its last frame has " +
                                          std::to_string(count) + " bytes of " +
                                          std::to_string(frame.size()));
    return count != 0;
}

RawWriter::RawWriter(const std::string& name) : m_name(name), m_file(nullptr, std::fclose) {
    if (name == "-") {
        m_file = Standard(stdout);
        return;
    }
    m_temporary.emplace(name);
    m_file.reset(std::fopen(m_temporary->Path().string().c_str(), "wb"));
    if (!m_file)
        throw Error(ErrorKind::Other, "cannot write '" + name + "': " + std::strerror(errno));
}

void RawWriter::Write(std::span<const std::byte> bytes) {
    if (std::fwrite(bytes.data(), 1, bytes.size(), m_file.get()) != bytes.size())
        throw Error(ErrorKind::Other, "cannot write '" + m_name + "': " + std::strerror(errno));
}

void RawWriter::Commit() {
    const auto close = m_file.get_deleter();
    if (close(m_file.release()) != 0)
        throw Error(ErrorKind::Other, "cannot write '" + m_name + "': " + std::strerror(errno));
    if (m_temporary) m_temporary->Commit();
}

}  // namespace zel
