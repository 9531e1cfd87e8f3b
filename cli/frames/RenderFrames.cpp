#include "cli/frames/RenderFrames.h"

#include "cli/Choice.h"
#include "cli/frames/FrameLog.h"
#include "cli/frames/Interrupt.h"
#include "cli/frames/Pipeline.h"
#include "cli/frames/Progress.h"
#include "cli/picture/QuietLibraries.h"
#include "headless/Error.h"

#include <algorithm>
#include <charconv>
#include <chrono>
#include <cstdio>
#include <mutex>
#include <new>
#include <thread>

#if defined(__GLIBC__)
#include <malloc.h>
#endif

namespace zel {

namespace {

constexpr int kMostJobs = 256;

std::string TextOf(const std::exception_ptr& failure) {
    if (!failure) return {};
    try {
        std::rethrow_exception(failure);
    } catch (const std::bad_alloc&) {
        return "out of memory";
    } catch (const std::exception& e) {
        return e.what();
    } catch (...) {
        return "an error of unknown type";
    }
}

std::string MiB(double bytes) {
    char text[40];
    std::snprintf(text, sizeof text, "%.1f MiB", bytes / (1024.0 * 1024.0));
    return text;
}

/// What the frames in flight take at most: each carrier has the pixels of one, and each
/// render those of its result beside.
std::string MemoryText(int jobs, const Frame& frame) {
    const double bytes = static_cast<double>(frame.RowBytes()) * frame.Height();
    const int buffers = 2 * jobs + 2;
    return std::to_string(jobs) + (jobs == 1 ? " job" : " jobs") + ": at most " +
           std::to_string(jobs + 2) + " frames in flight, in " + std::to_string(buffers) +
           " buffers of " + MiB(bytes) + ": " + MiB(bytes * buffers);
}

/// Buffers of frames go back to the system when they are freed. Left to itself, the
/// allocator of glibc soon holds some for every thread: several times what is in use.
void ReturnLargeBuffers() {
#if defined(__GLIBC__)
    mallopt(M_MMAP_THRESHOLD, 1 << 20);
#endif
}

class Run {
public:
    Run(FrameSource& source, FrameSink& sink, const Chain& chain, const FramesOptions& options)
        : m_source(source),
          m_sink(sink),
          m_chain(chain),
          m_options(options),
          m_progress(options.total, options.quiet),
          m_log(options.log) {}

    FramesReport operator()() {
        const auto begin = std::chrono::steady_clock::now();
        const PipelineOptions pipeline{
            .jobs = m_options.jobs,
            .stop = &InterruptGuard::Asked(),
            .ended = [this](const Shot& s, const std::exception_ptr& e) { Ended(s, e); }};
        const std::int64_t delivered = RunPipeline(
            m_source, m_sink, pipeline, [this](Shot& s) { Load(s); },
            [this](Shot& s) { Render(s); });
        if (InterruptGuard::Asked() && delivered != m_options.total) {
            const bool known = m_options.total > 0;
            throw Interrupted(InterruptGuard::Signal(),
                              "interrupted after " + std::to_string(delivered) +
                                  (known ? " of " + std::to_string(m_options.total) : "") +
                                  (!known && delivered == 1 ? " frame" : " frames"));
        }
        m_sink.Finish();
        const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - begin;
        m_report.seconds = taken.count();
        return m_report;
    }

private:
    void Load(Shot& shot) {
        m_source.Load(shot);
        if (!shot.IsRendered()) return;
        shot.frame = ReadForChain(m_chain, *shot.picture, m_options.render, shot.report);
        if (m_options.verbose)
            std::call_once(m_first,
                           [&] { m_progress.Say(MemoryText(m_options.jobs, *shot.frame)); });
    }

    void Render(Shot& shot) {
        if (shot.IsRendered()) RenderFrame(m_chain, shot.frame, m_options.render, shot.report);
    }

    void Ended(const Shot& shot, const std::exception_ptr& failure) {
        const std::string error = TextOf(failure);
        m_log.Add(shot, error);
        if (failure) {
            // The earliest is thrown in the end, and told by whoever catches it.
            if (m_failed) m_progress.Say(error);
            m_failed = true;
            return;
        }
        Count(shot);
        m_progress.Count(shot.IsRendered());
        if (m_options.verbose) m_progress.Say(Told(shot));
    }

    static std::string Told(const Shot& shot) {
        char time[40];
        std::snprintf(time, sizeof time, "%.1f ms", shot.milliseconds);
        const std::string frame = "frame " + std::to_string(shot.number) + ": ";
        switch (shot.fate) {
            case Fate::Missing: return frame + "'" + shot.in.string() + "' is missing";
            case Fate::Kept: return frame + "'" + shot.out.string() + "' was there already";
            case Fate::Nearest:
                return frame + "from the nearest, '" + shot.in.string() + "', " + time;
            case Fate::Rendered: break;
        }
        return frame + time;
    }

    void Count(const Shot& shot) {
        m_report.kept += shot.fate == Fate::Kept;
        m_report.missing += shot.fate == Fate::Missing;
        m_report.nearest += shot.fate == Fate::Nearest;
        if (!shot.IsRendered()) return;
        RenderReport& sum = m_report.picture;
        if (m_report.rendered++ == 0) {
            sum = shot.report;
            return;
        }
        sum.clipped += shot.report.clipped;
        sum.samples += shot.report.samples;
        sum.alphaDropped |= shot.report.alphaDropped;
        sum.floatNarrowed |= shot.report.floatNarrowed;
        if (shot.report.effect.code != 0) sum.effect = shot.report.effect;
    }

    FrameSource& m_source;
    FrameSink& m_sink;
    const Chain& m_chain;
    const FramesOptions& m_options;
    const QuietLibraries m_quiet;
    const InterruptGuard m_guard{InterruptGuard::FinishFrames};
    Progress m_progress;
    FrameLog m_log;
    FramesReport m_report;
    bool m_failed = false;
    std::once_flag m_first;
};

}  // namespace

FramesReport RenderFrames(FrameSource& source, FrameSink& sink, const Chain& chain,
                          const FramesOptions& options) {
    ReturnLargeBuffers();
    return Run(source, sink, chain, options)();
}

int JobsFrom(const std::string& text) {
    int jobs = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), jobs);
    if (error != std::errc() || end != text.data() + text.size() || jobs < 1 || jobs > kMostJobs)
        RejectOption("jobs", text, "a number of renders at a time, 1 to 256");
    return jobs;
}

int JobsByDefault() {
    const auto processors = static_cast<int>(std::thread::hardware_concurrency());
    return std::clamp(processors, 1, kMostJobs);
}

}  // namespace zel
