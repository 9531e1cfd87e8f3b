#include "cli/frames/Pipeline.h"

#include <chrono>
#include <condition_variable>
#include <exception>
#include <limits>
#include <mutex>
#include <semaphore>
#include <thread>
#include <vector>

namespace zel {

namespace {

/// Every thread carries one frame at a time through all of its stations, so as many frames
/// are held as there are threads.
class Pipeline {
public:
    Pipeline(FrameSource& source, FrameSink& sink, const PipelineOptions& options,
             const std::function<void(Shot&)>& load, const std::function<void(Shot&)>& render)
        : m_source(source),
          m_sink(sink),
          m_options(options),
          m_load(load),
          m_render(render),
          m_renders(options.jobs) {}

    std::int64_t Run() {
        {
            std::vector<std::jthread> carriers;
            for (int i = 0; i < m_options.jobs + 2; ++i) carriers.emplace_back([this] { Carry(); });
        }
        if (m_failure) std::rethrow_exception(m_failure);
        return m_delivered;
    }

private:
    void Carry() {
        for (;;) {
            std::int64_t place = 0;
            std::optional<Shot> shot = Take(place);
            if (!shot) return;
            const auto begin = std::chrono::steady_clock::now();
            std::exception_ptr failure;
            try {
                m_load(*shot);
                Render(*shot);
                m_sink.Encode(*shot);
            } catch (...) {
                failure = Fail(place);
            }
            const std::chrono::duration<double, std::milli> taken =
                std::chrono::steady_clock::now() - begin;
            shot->milliseconds = taken.count();
            InOrder(place, *shot, failure);
        }
    }

    std::optional<Shot> Take(std::int64_t& place) {
        const std::lock_guard lock(m_taking);
        if (m_ended || (m_options.stop && *m_options.stop)) return std::nullopt;
        place = m_taken;
        try {
            std::optional<Shot> shot = m_source.Next();
            if (shot)
                ++m_taken;
            else
                m_ended = true;
            return shot;
        } catch (...) {
            Fail(place);
            return std::nullopt;
        }
    }

    void Render(Shot& shot) {
        m_renders.acquire();
        struct Release {
            std::counting_semaphore<>& slots;
            ~Release() { slots.release(); }
        } release{m_renders};
        m_render(shot);
    }

    /// Waits for the frames before; what comes behind a failed one is not delivered.
    void InOrder(std::int64_t place, Shot& shot, std::exception_ptr failure) {
        std::unique_lock lock(m_order);
        m_turn.wait(lock, [&] { return m_next == place; });
        const bool deliver = place < m_failed;
        lock.unlock();
        if (deliver) {
            try {
                m_sink.Deliver(shot);
                ++m_delivered;
            } catch (...) {
                failure = Fail(place);
            }
        }
        try {
            if (m_options.ended) m_options.ended(shot, failure);
        } catch (...) {
            Fail(place);
        }
        lock.lock();
        ++m_next;
        m_turn.notify_all();
    }

    /// Keeps the exception in flight, if it is the earliest; returns it.
    std::exception_ptr Fail(std::int64_t place) {
        m_ended = true;
        const std::exception_ptr failure = std::current_exception();
        const std::lock_guard lock(m_order);
        if (place < m_failed) {
            m_failed = place;
            m_failure = failure;
        }
        return failure;
    }

    FrameSource& m_source;
    FrameSink& m_sink;
    const PipelineOptions& m_options;
    const std::function<void(Shot&)>& m_load;
    const std::function<void(Shot&)>& m_render;
    std::counting_semaphore<> m_renders;

    std::mutex m_taking;
    std::int64_t m_taken = 0;
    std::atomic<bool> m_ended = false;

    std::mutex m_order;
    std::condition_variable m_turn;
    std::int64_t m_next = 0;       // whose turn it is to be delivered
    std::int64_t m_delivered = 0;  // touched in order only
    std::int64_t m_failed = std::numeric_limits<std::int64_t>::max();  // the earliest
    std::exception_ptr m_failure;
};

}  // namespace

std::int64_t RunPipeline(FrameSource& source, FrameSink& sink, const PipelineOptions& options,
                         const std::function<void(Shot&)>& load,
                         const std::function<void(Shot&)>& render) {
    return Pipeline(source, sink, options, load, render).Run();
}

}  // namespace zel
