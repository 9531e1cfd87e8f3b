#include "headless/SharedFrames.h"

#if defined(__linux__)

#include "headless/Error.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <type_traits>

namespace zel {

namespace {

static_assert(std::is_trivially_copyable_v<PF_ParamDef>);

constexpr auto kMark = std::byte{0xA7};

/// Untouchable memory on either side of a frame: some rows of a wide picture.
constexpr std::size_t kFence = std::size_t{1} << (sizeof(void*) == 8 ? 25 : 20);

/// Behind the last row, before the fence: what may be read there, in steps that keep rows
/// aligned.
constexpr std::size_t kBehind = (Frame::kSlack + 63) / 64 * 64;

std::size_t InPages(std::size_t bytes) {
    const auto page = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
    return (bytes + page - 1) / page * page;
}

/// Offsets in the shared memory.
struct Layout {
    std::size_t records, frames;  // first bytes of
    std::size_t pages;            // of each frame
    std::size_t pixels;           // bytes from the first row to behind the last

    Layout(std::size_t recordCount, std::size_t pixelBytes)
        : records((sizeof(RenderExchange) + alignof(PF_ParamDef) - 1) / alignof(PF_ParamDef) *
                  alignof(PF_ParamDef)),
          frames(InPages(records + recordCount * sizeof(PF_ParamDef))),
          pages(InPages(pixelBytes + kBehind)),
          pixels(pixelBytes) {}

    std::size_t Total() const { return frames + 2 * pages; }
    std::size_t PixelsIn(std::size_t pagesFirst) const {
        return pagesFirst + pages - kBehind - pixels;
    }
};

std::size_t PixelBytes(const Frame& frame) {
    return static_cast<std::size_t>(frame.RowBytes()) * static_cast<std::size_t>(frame.Height());
}

std::size_t UsedRowBytes(const Frame& frame) {
    return static_cast<std::size_t>(frame.Width()) *
           static_cast<std::size_t>(frame.Format().BytesPerPixel());
}

[[noreturn]] void FailForMemory(int descriptor, std::size_t bytes, int error) {
    if (descriptor >= 0) close(descriptor);
    throw Error(ErrorKind::Other, "no memory to share " + std::to_string(bytes) +
                                      " bytes with an effect: " + std::strerror(error));
}

bool AllMarked(const std::byte* first, const std::byte* end) {
    return std::all_of(first, end, [](std::byte b) { return b == kMark; });
}

std::string Bytes(std::uintptr_t count) {
    return std::to_string(count) + (count == 1 ? " byte" : " bytes");
}

}  // namespace

SharedRender::SharedRender(const Frame& destination, const Frame& source,
                           std::span<const PF_ParamDef> records) {
    const Layout layout(records.size(), PixelBytes(destination));
    m_bytes = layout.Total();
    m_descriptor = memfd_create("zelfx render", MFD_CLOEXEC);
    if (m_descriptor < 0) FailForMemory(-1, m_bytes, errno);
    // Allocated now: memory that runs out later would be a signal instead of an error.
    if (const int error = posix_fallocate(m_descriptor, 0, static_cast<off_t>(m_bytes)))
        FailForMemory(m_descriptor, m_bytes, error);
    void* memory = mmap(nullptr, m_bytes, PROT_READ | PROT_WRITE, MAP_SHARED, m_descriptor, 0);
    if (memory == MAP_FAILED) FailForMemory(m_descriptor, m_bytes, errno);
    m_memory = static_cast<std::byte*>(memory);
    m_output = layout.PixelsIn(layout.frames + layout.pages);
    m_end = m_bytes;

    RenderExchange exchange{};
    exchange.format = source.Format().code;
    exchange.width = source.Width();
    exchange.height = source.Height();
    exchange.records = records.size();
    std::memcpy(m_memory, &exchange, sizeof exchange);
    if (!records.empty())
        std::memcpy(m_memory + layout.records, records.data(), records.size_bytes());

    std::fill(m_memory + layout.frames + layout.pages, m_memory + m_bytes, kMark);
    const auto copyRows = [&](const Frame& frame, std::size_t pixels) {
        for (int y = 0; y < frame.Height(); ++y)
            std::memcpy(m_memory + pixels + std::ptrdiff_t{y} * frame.RowBytes(), frame.Row(y),
                        UsedRowBytes(frame));
    };
    copyRows(source, layout.PixelsIn(layout.frames));
    copyRows(destination, m_output);  // an effect may leave pixels as they are
}

SharedRender::~SharedRender() {
    munmap(m_memory, m_bytes);
    close(m_descriptor);
}

const RenderExchange& SharedRender::Exchange() const {
    return *reinterpret_cast<const RenderExchange*>(m_memory);
}

std::string SharedRender::WrittenOutside(const Frame& destination) const {
    const std::byte* const first = m_memory + m_output;
    const std::byte* const pages = m_memory + m_end - InPages(PixelBytes(destination) + kBehind);
    const auto touched = std::find_if(std::reverse_iterator(first), std::reverse_iterator(pages),
                                      [](std::byte b) { return b != kMark; });
    if (touched.base() != pages)
        return Bytes(static_cast<std::uintptr_t>(first - touched.base()) + 1) +
               " before its first row";
    const std::size_t used = UsedRowBytes(destination);
    for (int y = 0; y < destination.Height(); ++y) {
        const std::byte* row = first + std::ptrdiff_t{y} * destination.RowBytes();
        if (!AllMarked(row + used, row + destination.RowBytes()))
            return "behind the " + std::to_string(destination.Width()) + " pixels of row " +
                   std::to_string(y);
    }
    if (!AllMarked(first + PixelBytes(destination), m_memory + m_end)) return "behind its last row";
    return {};
}

std::string SharedRender::FaultNear() const {
    const RenderExchange& e = Exchange();
    if (e.fault == 0) return {};
    struct Named {
        const char* name;
        RenderExchange::Place place;
    };
    for (const Named& frame : {Named{"output", e.output}, Named{"input", e.input}}) {
        const auto& [first, end] = frame.place;
        const std::string of = " the " + std::string(frame.name) + " frame";
        // As far as the nearer half of the fence: beyond it is the other frame's.
        if (e.fault < first && first - e.fault <= kFence / 2)
            return Bytes(first - e.fault) + " before" + of;
        if (e.fault >= end && e.fault - end < kFence / 2)
            return Bytes(e.fault - end + 1) + " behind" + of;
    }
    return {};
}

void SharedRender::CopyTo(Frame& destination) const {
    for (int y = 0; y < destination.Height(); ++y)
        std::memcpy(destination.Row(y),
                    m_memory + m_output + std::ptrdiff_t{y} * destination.RowBytes(),
                    UsedRowBytes(destination));
}

std::optional<MappedRender> MapRender(int descriptor) {
    struct stat facts {};
    if (fstat(descriptor, &facts) != 0) return std::nullopt;
    const auto map = [&](void* at, std::size_t from, std::size_t bytes) -> std::byte* {
        void* memory = mmap(at, bytes, PROT_READ | PROT_WRITE, MAP_SHARED | (at ? MAP_FIXED : 0),
                            descriptor, static_cast<off_t>(from));
        return memory == MAP_FAILED ? nullptr : static_cast<std::byte*>(memory);
    };
    std::byte* front = map(nullptr, 0, InPages(sizeof(RenderExchange)));
    if (!front) return std::nullopt;
    auto& exchange = *reinterpret_cast<RenderExchange*>(front);
    const std::size_t pixelBytes =
        Frame::PixelBytes(exchange.format, exchange.width, exchange.height);
    const Layout layout(exchange.records, pixelBytes);
    std::byte* records = map(nullptr, 0, layout.frames);

    void* reserved = mmap(nullptr, 2 * layout.pages + 3 * kFence, PROT_NONE,
                          MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
    if (!records || reserved == MAP_FAILED) return std::nullopt;
    std::byte* const input = static_cast<std::byte*>(reserved) + kFence;
    std::byte* const output = input + layout.pages + kFence;
    if (!map(input, layout.frames, layout.pages) ||
        !map(output, layout.frames + layout.pages, layout.pages))
        return std::nullopt;

    const auto placeOf = [&](std::byte* pages) {
        const auto first = reinterpret_cast<std::uintptr_t>(layout.PixelsIn(0) + pages);
        return RenderExchange::Place{first, first + pixelBytes};
    };
    exchange.input = placeOf(input);
    exchange.output = placeOf(output);
    const auto frameAt = [&](std::byte* pages) {
        return Frame(exchange.format, exchange.width, exchange.height, pages + layout.PixelsIn(0));
    };
    return MappedRender{
        exchange,
        {reinterpret_cast<const PF_ParamDef*>(records + layout.records), exchange.records},
        frameAt(output),
        frameAt(input)};
}

}  // namespace zel

#endif
