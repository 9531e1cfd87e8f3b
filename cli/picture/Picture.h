#pragma once

/// Picture files: reading one into a frame, writing a frame as one. The only part of
/// the program that knows files of pictures; what reads and writes them stays behind
/// this interface.

#include "cli/picture/DpxTags.h"
#include "headless/Frame.h"

#include <filesystem>
#include <memory>
#include <optional>
#include <span>
#include <string>

namespace zel {

/// How a picture file stores its samples.
enum class Depth { U8, U10, U12, U16, Half, Float };

const char* NameOf(Depth depth);                    // "8", "10", ..., "half", "float"
std::optional<Depth> DepthNamed(std::string_view);  // null for another text

/// Everything of the file that is no pixel and goes into the next file as it is.
struct PictureAttributes;

struct PictureHeader {
    std::filesystem::path file;
    int width = 0, height = 0;
    bool hasAlpha = false;
    bool associated = false;  // the file's colours are multiplied with alpha
    Depth depth = Depth::U8;
    std::optional<DpxTags> dpx;  // of DPX files only
    std::shared_ptr<const PictureAttributes> attributes;
};

/// A picture whose header is known and whose pixels can be had: of a file or of a video.
class PictureSource {
public:
    virtual ~PictureSource() = default;

    virtual const PictureHeader& Header() const = 0;

    /// Fills a frame of the header's size: samples on the full scale of the frame's
    /// format, straight alpha, opaque where there is none; grey becomes R = G = B. Called
    /// once. Throws Error(Input) when the picture breaks off or is damaged.
    virtual void Read(Frame& to) = 0;
};

class PictureReader : public PictureSource {
public:
    /// Throws Error(Input) when the file is missing, a folder, or no picture.
    explicit PictureReader(const std::filesystem::path& file);
    ~PictureReader() override;

    const PictureHeader& Header() const override { return m_header; }
    void Read(Frame& to) override;

    /// False when the file ends before its picture, as far as its last bytes tell.
    bool GoesToItsEnd();

private:
    struct Impl;
    PictureHeader m_header;
    std::unique_ptr<Impl> m_impl;
};

/// True when the suffix is one of pictures that can be read.
bool IsPictureName(const std::filesystem::path& file);

/// What tells a picture from another without its pixels.
struct PictureShape {
    int width, height;
    Depth depth;
    bool alpha;
    bool operator==(const PictureShape&) const = default;
};

/// True when `file` is there as a picture of that shape and goes on to its end. Reads the
/// header and the end alone, so it does not see damage in between.
bool IsWholePicture(const std::filesystem::path& file, const PictureShape& shape);

struct WriteOptions {
    std::optional<Depth> depth;  // default: the source's, or the nearest the file can hold
    bool alpha = true;           // write the frame's alpha, where the file can hold it
    std::optional<DpxTags> dpx;  // default: the source's, else big-endian and undefined
};

/// The depth that `file` gets for a wish: the same, or the nearest that its type can
/// hold. Throws Error(Usage) when pictures of that type cannot be written.
Depth DepthFor(const std::filesystem::path& file, Depth wish);

/// True when pictures of the type of `file` can hold alpha.
bool HoldsAlpha(const std::filesystem::path& file);

/// Writes `frame` with the attributes of `source`, under a temporary name beside
/// `file` that becomes `file` when all is written. Throws Error(Usage) for a type that
/// cannot be written, Error(Other) when writing fails; nothing is left then.
void WritePicture(const std::filesystem::path& file, const Frame& frame,
                  const PictureHeader& source, const WriteOptions& options);

}  // namespace zel
