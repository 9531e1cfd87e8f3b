#include "cli/video/VideoFrames.h"

#include "cli/picture/Pixels.h"
#include "headless/Error.h"

#include <algorithm>
#include <cstring>
#include <vector>

namespace zel {

namespace {

/// Raw frames are blue, green, red, alpha in 8 bits, or in 16 of this machine's order.
constexpr std::array<int, 4> kRawElement{2, 1, 0, 3};

std::size_t BytesOfRawPixel(SampleType sample) { return sample == SampleType::U8 ? 4 : 8; }

/// A picture whose pixels have come through the pipe.
class VideoPicture : public PictureSource {
public:
    VideoPicture(const PictureHeader& header, std::vector<std::byte> pixels)
        : m_header(header), m_pixels(std::move(pixels)) {}

    const PictureHeader& Header() const override { return m_header; }

    void Read(Frame& to) override {
        if (to.Format().sample == SampleType::Float)
            ReadFloats(to);
        else
            ReadRows(to);
        if (to.Format().element != kRawElement) Rearrange(to, kRawElement);
        m_pixels = {};  // the run goes on holding the picture for its header
    }

private:
    std::size_t RowBytes() const {
        return m_pixels.size() / static_cast<std::size_t>(m_header.height);
    }

    void ReadRows(Frame& to) const {
        for (int y = 0; y < m_header.height; ++y)
            std::memcpy(to.Row(y), m_pixels.data() + static_cast<std::size_t>(y) * RowBytes(),
                        RowBytes());
    }

    void ReadFloats(Frame& to) const {
        const std::byte* from = m_pixels.data();
        ForEachPixel<float>(to, [&](auto& pixel) {
            std::array<std::uint16_t, 4> raw;
            std::memcpy(&raw, from, sizeof raw);
            from += sizeof raw;
            for (std::size_t k = 0; k < 4; ++k) pixel[k] = static_cast<float>(raw[k]) / 65535.0f;
        });
    }

    const PictureHeader& m_header;
    std::vector<std::byte> m_pixels;
};

/// Full scale of 16 bits, rounded to nearest; NaN is 0.
std::uint16_t CodeOf(float value) {
    if (!(value > 0)) return 0;
    return value >= 1 ? 65535 : static_cast<std::uint16_t>(value * 65535.0f + 0.5f);
}
std::uint16_t CodeOf(std::uint16_t value) { return value; }
std::uint8_t CodeOf(std::uint8_t value) { return value; }

/// Raw pixels from the front of the frame on, one behind the other: no wider than the
/// frame's, so none is written over before it is read.
template <class T>
void Pack(Frame& frame) {
    using Raw = std::array<decltype(CodeOf(T{})), 4>;
    const std::array<int, 4> element = frame.Format().element;
    std::byte* to = frame.Row(0);
    ForEachPixel<T>(const_cast<const Frame&>(frame), [&](const auto& pixel) {
        Raw raw;
        for (std::size_t k = 0; k < 4; ++k)
            raw[static_cast<std::size_t>(kRawElement[k])] =
                CodeOf(pixel[static_cast<std::size_t>(element[k])]);
        std::memcpy(to, &raw, sizeof raw);
        to += sizeof raw;
    });
}

/// True when ffmpeg reads it to its end without a complaint.
bool SoundIsWhole(const std::filesystem::path& file) {
    Process reading({"ffmpeg", "-nostdin", "-v", "error", "-i", FfmpegName(file), "-map", "0:a?",
                     "-vn", "-c", "copy", "-f", "null", "-"},
                    Process::FromChild);
    return reading.Wait() == 0 && reading.Complaint().empty();
}

void PackRows(Frame& frame) {
    const auto bytes = static_cast<std::size_t>(frame.Width()) *
                       static_cast<std::size_t>(frame.Format().BytesPerPixel());
    for (int y = 1; y < frame.Height(); ++y)
        std::memmove(frame.Row(0) + static_cast<std::size_t>(y) * bytes, frame.Row(y), bytes);
}

Depth DepthOf(int bits) {
    return bits <= 8 ? Depth::U8 : bits <= 10 ? Depth::U10 : bits <= 12 ? Depth::U12 : Depth::U16;
}

}  // namespace

// --- reading --------------------------------------------------------------------

VideoSource::VideoSource(const VideoFacts& facts, const ColourReading& reading, SampleType sample)
    : m_pixelBytes(BytesOfRawPixel(sample)),
      m_ffmpeg(DecoderCommand(facts, reading, m_pixelBytes == 4), Process::FromChild) {
    m_header.file = facts.file;
    m_header.width = facts.width;
    m_header.height = facts.height;
    m_header.hasAlpha = facts.pixels.alpha;
    m_header.depth = DepthOf(facts.pixels.bits);
}

std::optional<Shot> VideoSource::Next() {
    std::vector<std::byte> pixels(static_cast<std::size_t>(m_header.width) *
                                  static_cast<std::size_t>(m_header.height) * m_pixelBytes);
    const std::size_t got = m_ffmpeg.Read(pixels);
    const std::string complaint = m_ffmpeg.Complaint();
    if (got < pixels.size() || !complaint.empty()) {
        RequireGoodEnd(got == 0);
        return std::nullopt;
    }
    Shot shot;
    shot.number = m_next++;
    shot.in = m_header.file;
    shot.picture = std::make_unique<VideoPicture>(m_header, std::move(pixels));
    return shot;
}

void VideoSource::RequireGoodEnd(bool betweenFrames) {
    const int status = m_ffmpeg.Wait();
    if (status == 0 && betweenFrames && m_ffmpeg.Complaint().empty() && m_next > 0) return;
    const std::string why = status != 0 || !m_ffmpeg.Complaint().empty() ? m_ffmpeg.EndText()
                            : m_next == 0                                ? "it has no frames"
                                                                         : "it breaks off";
    throw Error(ErrorKind::Input, "cannot read '" + m_header.file.string() + "' from frame " +
                                      std::to_string(m_next) + " on: it is damaged (" + why + ")");
}

// --- writing --------------------------------------------------------------------

VideoSink::VideoSink(const VideoFacts& facts, const ColourReading& reading,
                     const Encoding& encoding, SampleType sample, const std::filesystem::path& out)
    : m_in(facts.file),
      m_out(out),
      m_temporary(out),
      m_ffmpeg(EncoderCommand(facts, reading, encoding, BytesOfRawPixel(sample) == 4,
                              m_temporary.Path()),
               Process::ToChild) {}

void VideoSink::Encode(Shot& shot) {
    Frame& frame = *shot.frame;
    if (frame.Format().sample == SampleType::Float)
        Pack<float>(frame);
    else if (frame.Format().element == kRawElement)
        PackRows(frame);
    else if (frame.Format().sample == SampleType::U16)
        Pack<std::uint16_t>(frame);
    else
        Pack<std::uint8_t>(frame);
}

void VideoSink::Deliver(Shot& shot) {
    const Frame& frame = *shot.frame;
    const std::size_t bytes = static_cast<std::size_t>(frame.Width()) *
                              static_cast<std::size_t>(frame.Height()) *
                              BytesOfRawPixel(frame.Format().sample);
    if (!m_ffmpeg.Write({frame.Row(0), bytes})) Fail();
}

void VideoSink::Finish() {
    // Sound that breaks off is no failure to ffmpeg, but it says so.
    if (m_ffmpeg.Wait() != 0 || !m_ffmpeg.Complaint().empty()) Fail();
    m_temporary.Commit();
}

void VideoSink::Fail() {
    m_ffmpeg.Wait();
    const bool sound = !SoundIsWhole(m_in);
    throw Error(sound ? ErrorKind::Input : ErrorKind::Other,
                "cannot write '" + m_out.string() + "'" +
                    (sound ? ": the sound of '" + m_in.string() + "' is damaged (" : ": ") +
                    m_ffmpeg.EndText() + (sound ? ")" : ""));
}

}  // namespace zel
