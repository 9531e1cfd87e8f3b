#include "tests/endurance/LongRun.h"

#include "tests/endurance/Effects.h"

#include <unistd.h>

#include <algorithm>
#include <deque>
#include <fstream>
#include <map>
#include <tuple>

namespace zel::test {

namespace {

long ResidentKiB() {
    std::ifstream in("/proc/self/statm");
    long total = 0, resident = 0;
    in >> total >> resident;
    return resident * (sysconf(_SC_PAGESIZE) / 1024);
}

/// FNV-1a of the pixels.
std::uint64_t HashOf(const Frame& frame) {
    std::uint64_t hash = 0xcbf29ce484222325;
    const int bytes = frame.Width() * frame.Format().BytesPerPixel();
    for (int y = 0; y < frame.Height(); ++y)
        for (int i = 0; i < bytes; ++i)
            hash = (hash ^ static_cast<std::uint64_t>(frame.Row(y)[i])) * 0x100000001b3;
    return hash;
}

constexpr struct {
    int width, height;
} kSizes[] = {{64, 36}, {1, 1}, {97, 13}, {256, 64}, {7, 90}, {512, 8}, {31, 31}};

class Stage {
public:
    /// One render; false when its result is not that of the first one of its kind.
    bool Render(long number) {
        if (number % kLoadings == 0) Load();
        const auto index = static_cast<std::size_t>(number);
        const std::size_t which = index % m_sessions.size();
        const EffectSession& session = m_sessions[which];
        const std::size_t f = index / 3 % session.Formats().size(), s = index % std::size(kSizes);
        const PrPixelFormat format = session.Formats()[f];
        Frame source(format, kSizes[s].width, kSizes[s].height);
        Frame result(format, kSizes[s].width, kSizes[s].height);
        Fill(source, static_cast<std::uint32_t>(s));
        session.Render(result, source, m_values[which]);
        const std::uint64_t hash = HashOf(result);
        return m_hashes.try_emplace({which, f, s}, hash).first->second == hash;
    }

private:
    static constexpr long kLoadings = 1000;

    void Load() {
        m_values.clear();
        m_sessions.clear();
        for (const Personality host : {Personality::Premiere, Personality::AfterEffects})
            for (const auto& file : EffectFiles())
                m_values.push_back(SlidersAt(m_sessions.emplace_back(file, host), 0.7));
    }

    std::deque<EffectSession> m_sessions;
    std::vector<ParameterValues> m_values;
    std::map<std::tuple<std::size_t, std::size_t, std::size_t>, std::uint64_t> m_hashes;
};

}  // namespace

LongRunReport RunLong(long renders, const std::function<void(long, long)>& progress) {
    Stage stage;
    LongRunReport report{};
    const long tenth = std::max(1L, renders / 10), sample = std::max(1L, renders / 1000);
    for (long i = 0; i < renders; ++i) {
        report.wrong += !stage.Render(i);
        if (i % sample == 0 && i > tenth) {
            long& largest = i < renders / 2 ? report.settledKiB : report.largestKiB;
            largest = std::max(largest, ResidentKiB());
        }
        if ((i + 1) % tenth == 0) progress(i + 1, ResidentKiB());
    }
    return report;
}

}  // namespace zel::test
