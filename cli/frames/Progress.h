#pragma once

/// How far a run is, on standard error: one line that is overwritten on a terminal, else
/// a line every ten seconds. Plain text, no colours. Any thread may call.

#include <chrono>
#include <cstdint>
#include <mutex>
#include <string>

namespace zel {

class Progress {
public:
    /// `total` frames are to come, 0 when that is not known.
    Progress(std::int64_t total, bool quiet);
    ~Progress();
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    /// One more frame is done; `rendered`: it took the time that frames take.
    void Count(bool rendered);

    /// A line of its own, whatever stands there.
    void Say(const std::string& line);

private:
    using Clock = std::chrono::steady_clock;
    std::string Text(double seconds) const;
    void Show();
    void Erase();

    std::mutex m_mutex;
    std::int64_t m_total, m_done = 0, m_rendered = 0;
    bool m_quiet, m_terminal, m_shown = false;
    Clock::time_point m_begin = Clock::now(), m_last = m_begin;
};

/// "4 s", "3 min 20 s", "2 h 5 min".
std::string Duration(double seconds);

}  // namespace zel
