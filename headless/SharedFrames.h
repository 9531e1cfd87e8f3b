#pragma once

/// What a render in another process needs, in memory that both processes map: the
/// parameter records, the two frames, and what came of it.
///
/// Where the effect works, each frame stands between stretches of memory that nobody can
/// touch; what page borders leave between these and the pixels is filled with a mark and
/// looked through afterwards.

#include "headless/EffectSession.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>

namespace zel {

/// At the front of the shared memory.
struct RenderExchange {
    // From the host.
    PrPixelFormat format;
    std::int32_t width, height;
    std::size_t records;

    // From the process that renders.
    enum class State : std::int32_t { None, Answered, Threw } state;
    PF_Err code;
    char text[1024];  // the effect's message, or what was thrown
    struct Place {
        std::uintptr_t first, end;  // addresses of the pixels there
    } input, output;
    std::uintptr_t fault;  // address that it must not touch and did; 0: none
};

/// The host's side.
class SharedRender {
public:
    /// Throws Error(Other) when there is no memory.
    SharedRender(const Frame& destination, const Frame& source,
                 std::span<const PF_ParamDef> records);
    ~SharedRender();
    SharedRender(const SharedRender&) = delete;
    SharedRender& operator=(const SharedRender&) = delete;

    int Descriptor() const { return m_descriptor; }
    const RenderExchange& Exchange() const;

    /// "4 bytes before its first row": where the mark is gone; empty when it is whole.
    std::string WrittenOutside(const Frame& destination) const;

    /// "64 bytes behind the output frame", when the fault was near a frame; else empty.
    std::string FaultNear() const;

    void CopyTo(Frame& destination) const;

private:
    int m_descriptor = -1;
    std::size_t m_bytes = 0, m_output = 0, m_end = 0;  // m_output: pixels; m_end: of its pages
    std::byte* m_memory = nullptr;
};

/// The side of the process that renders; lives until that ends.
struct MappedRender {
    RenderExchange& exchange;
    std::span<const PF_ParamDef> records;
    Frame destination, source;
};

/// Maps what SharedRender made; null when there is no address space for it.
std::optional<MappedRender> MapRender(int descriptor);

}  // namespace zel
