#include "cli/frames/FrameLog.h"

#include "headless/Error.h"

#include <nlohmann/json.hpp>

#include <cerrno>
#include <cmath>
#include <cstring>

#include <fcntl.h>
#include <unistd.h>

namespace zel {

namespace {

using Json = nlohmann::ordered_json;

const char* NameOf(Fate fate) {
    switch (fate) {
        case Fate::Rendered: return "done";
        case Fate::Nearest: return "nearest";
        case Fate::Kept: return "kept";
        case Fate::Missing: return "missing";
    }
    return "";
}

Json NameOrNull(const std::filesystem::path& file) {
    return file.empty() ? Json() : Json(file.string());
}

[[noreturn]] void Fail(const std::filesystem::path& file) {
    throw Error(ErrorKind::Other,
                "cannot write the log '" + file.string() + "': " + std::strerror(errno));
}

}  // namespace

FrameLog::FrameLog(const std::filesystem::path& file) : m_file(file) {
    if (file.empty()) return;
    m_descriptor = open(file.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0666);
    if (m_descriptor < 0) Fail(file);
}

FrameLog::~FrameLog() {
    if (m_descriptor >= 0) close(m_descriptor);
}

void FrameLog::Add(const Shot& shot, const std::string& error) {
    if (m_descriptor < 0) return;
    Json line;
    line["frame"] = shot.number;
    line["in"] = NameOrNull(shot.in);
    line["out"] = NameOrNull(shot.out);
    line["ms"] = std::round(shot.milliseconds * 100) / 100;
    line["status"] = error.empty() ? NameOf(shot.fate) : "failed";
    if (!error.empty()) line["error"] = error;
    const std::string text = line.dump(-1, ' ', false, Json::error_handler_t::replace) + '\n';
    const ssize_t written = write(m_descriptor, text.data(), text.size());
    if (written != static_cast<ssize_t>(text.size())) Fail(m_file);
}

}  // namespace zel
