#include "cli/frames/Progress.h"

#include "cli/picture/QuietLibraries.h"

#include <algorithm>
#include <cstdio>

namespace zel {

namespace {

constexpr auto kOnTerminal = std::chrono::milliseconds(100);
constexpr auto kElsewhere = std::chrono::seconds(10);

constexpr const char* kEraseLine = "\r\x1b[K";

}  // namespace

std::string Duration(double seconds) {
    const auto whole = static_cast<long long>(std::max(seconds, 0.0) + 0.5);
    const auto text = [](long long big, const char* bigUnit, long long small,
                         const char* smallUnit) {
        return std::to_string(big) + bigUnit + std::to_string(small) + smallUnit;
    };
    if (whole < 60) return std::to_string(whole) + " s";
    if (whole < 3600) return text(whole / 60, " min ", whole % 60, " s");
    return text(whole / 3600, " h ", whole % 3600 / 60, " min");
}

Progress::Progress(std::int64_t total, bool quiet)
    : m_total(total), m_quiet(quiet), m_terminal(!quiet && StderrIsTerminal()) {}

Progress::~Progress() { Erase(); }

/// "12/200 frames, 33.1 per second, 6 s left".
std::string Progress::Text(double seconds) const {
    std::string text = std::to_string(m_done);
    if (m_total > 0) text += '/' + std::to_string(m_total);
    text += m_done == 1 && m_total <= 0 ? " frame" : " frames";
    if (m_rendered == 0 || !(seconds > 0)) return text;
    const double rate = static_cast<double>(m_rendered) / seconds;
    char number[40];
    std::snprintf(number, sizeof number, rate < 100 ? "%.1f" : "%.0f", rate);
    text += std::string(", ") + number + " per second";
    if (m_total > m_done)
        text += ", " + Duration(static_cast<double>(m_total - m_done) / rate) + " left";
    return text;
}

void Progress::Count(bool rendered) {
    const std::lock_guard lock(m_mutex);
    ++m_done;
    m_rendered += rendered;
    const auto now = Clock::now();
    if (m_quiet || (now - m_last < kElsewhere && !m_terminal)) return;
    if (m_terminal && now - m_last < kOnTerminal && m_done != m_total) return;
    m_last = now;
    Show();
}

void Progress::Show() {
    const std::string text = Text(std::chrono::duration<double>(m_last - m_begin).count());
    WriteToStderr(m_terminal ? kEraseLine + text : "zelfx: " + text + '\n');
    m_shown = m_terminal;
}

void Progress::Erase() {
    if (m_shown) WriteToStderr(kEraseLine);
    m_shown = false;
}

void Progress::Say(const std::string& line) {
    const std::lock_guard lock(m_mutex);
    Erase();
    WriteToStderr("zelfx: " + line + '\n');
}

}  // namespace zel
