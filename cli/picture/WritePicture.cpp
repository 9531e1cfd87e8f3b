/// Writing picture files through OpenImageIO.

#include "cli/picture/Oiio.h"
#include "cli/picture/Picture.h"
#include "cli/picture/Pixels.h"
#include "cli/picture/QuietLibraries.h"
#include "cli/picture/TemporaryFile.h"
#include "headless/Error.h"
#include "headless/Text.h"

#include <OpenEXR/ImfInputFile.h>
#include <OpenImageIO/filesystem.h>
#include <OpenImageIO/imageio.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <string_view>
#include <vector>

namespace zel {

namespace fs = std::filesystem;

namespace {

enum class Alpha { None, Straight, Associated };

/// What a type of file can hold, best depth last.
struct FileType {
    std::string_view suffix;
    std::vector<Depth> depths;
    Alpha alpha;
};

// clang-format off
const FileType kFileTypes[] = {
    {".png",  {Depth::U8, Depth::U16},                            Alpha::Straight},
    {".tif",  {Depth::U8, Depth::U16, Depth::Half, Depth::Float}, Alpha::Straight},
    {".tiff", {Depth::U8, Depth::U16, Depth::Half, Depth::Float}, Alpha::Straight},
    {".exr",  {Depth::Half, Depth::Float},                        Alpha::Associated},
    {".dpx",  {Depth::U8, Depth::U10, Depth::U12, Depth::U16},    Alpha::Straight},
    {".jpg",  {Depth::U8},                                        Alpha::None},
    {".jpeg", {Depth::U8},                                        Alpha::None},
};
// clang-format on

const FileType& TypeOf(const fs::path& file) {
    const auto* type =
        std::ranges::find(kFileTypes, Lower(file.extension().string()), &FileType::suffix);
    if (type == std::end(kFileTypes))
        throw Error(ErrorKind::Usage, "cannot write '" + file.string() +
                                          "': the suffix must be .png, .tif, " +
                                          ".tiff, .exr, .dpx, .jpg or .jpeg");
    return *type;
}

[[noreturn]] void FailToWrite(const fs::path& file, const std::string& why) {
    throw Error(ErrorKind::Other, "cannot write '" + file.string() + "': " + why);
}

}  // namespace

Depth DepthFor(const fs::path& file, Depth wish) {
    const std::vector<Depth>& held = TypeOf(file).depths;
    if (std::ranges::find(held, wish) != held.end()) return wish;
    // The first that loses nothing, else the best there is.
    const auto enough = std::ranges::find_if(held, [=](Depth d) { return d >= wish; });
    return enough == held.end() ? held.back() : *enough;
}

bool HoldsAlpha(const fs::path& file) { return TypeOf(file).alpha != Alpha::None; }

namespace {

/// True when a file has what belongs to a TIFF's end: its directory, which is written last,
/// and the last row. Failures there are not told by the library.
bool LastRowReads(const fs::path& file, const OIIO::ImageSpec& wanted) {
    const auto in = OIIO::ImageInput::open(file.string());
    if (!in) {
        OIIO::geterror();  // the library complains of errors that nobody took
        return false;
    }
    const OIIO::ImageSpec& spec = in->spec();
    if (spec.width != wanted.width || spec.height != wanted.height ||
        spec.nchannels != wanted.nchannels || spec.format != wanted.format)
        return false;
    std::vector<std::byte> row(spec.scanline_bytes(true));
    return in->read_native_scanline(0, 0, spec.y + spec.height - 1, 0, row.data()) &&
           !in->has_error();
}

/// Where the picture libraries write to. Those for PNG and OpenEXR pass over some writes
/// that fail, as on a full disk, none looks at what closing the file comes to, and the one
/// for JPEG ends the program. So to them every write succeeds, and Finish() tells.
class CheckedFile : public OIIO::Filesystem::IOFile {
public:
    explicit CheckedFile(const fs::path& file)
        : IOFile(OIIO::Filesystem::fopen(file.string(), "wb"), Write),
          m_failure(m_file ? 0 : errno) {}
    ~CheckedFile() override { Finish(); }

    // Not "file", for which the stream would be written past write().
    const char* proxytype() const override { return "checked file"; }

    std::size_t write(const void* data, std::size_t size) override {
        errno = 0;
        if (m_failure == 0 && IOFile::write(data, size) != size) m_failure = errno ? errno : EIO;
        return size;
    }

    /// Closes the file. 0 when all of it was written, else the first error number.
    int Finish() {
        errno = 0;
        if (m_file && std::fclose(m_file) != 0 && m_failure == 0) m_failure = errno ? errno : EIO;
        m_file = nullptr;
        return m_failure;
    }

private:
    int m_failure;
};

/// The library writes the table of its rows last, in a destructor, and passes over a
/// failure there.
bool ExrIsComplete(const fs::path& file) {
    try {
        return Imf::InputFile(file.c_str()).isComplete();
    } catch (const std::exception&) {
        return false;
    }
}

OIIO::ImageSpec SpecFor(const FileType& type, const Frame& frame, const PictureHeader& source,
                        const DepthFacts& depth, int channels, const DpxTags& dpx) {
    OIIO::ImageSpec spec = source.attributes ? source.attributes->spec : OIIO::ImageSpec();
    const bool sameSize = spec.width == frame.Width() && spec.height == frame.Height();
    const OIIO::ImageSpec fresh(frame.Width(), frame.Height(), channels, depth.type);
    if (!sameSize) spec.x = spec.y = spec.full_x = spec.full_y = 0;
    if (!sameSize) spec.full_width = frame.Width(), spec.full_height = frame.Height();
    spec.width = frame.Width();
    spec.height = frame.Height();
    spec.tile_width = spec.tile_height = spec.tile_depth = 0;
    spec.nchannels = channels;
    spec.channelnames = fresh.channelnames;
    spec.channelformats.clear();
    spec.alpha_channel = fresh.alpha_channel;
    spec.format = depth.type;
    spec["oiio:BitsPerSample"] = depth.bits;
    if (type.alpha == Alpha::Straight) spec["oiio:UnassociatedAlpha"] = 1;
    if (type.suffix == ".dpx") {
        spec["oiio:Endian"] = dpx.bigEndian ? "big" : "little";
        spec.erase_attribute("oiio:ColorSpace");  // the tags say it
    }
    // Where no date is given, the library writes the time of day; the same render shall
    // give the same bytes. A value that it cannot write as a date leaves the file without.
    if (!spec.find_attribute("DateTime")) {
        if (type.suffix == ".exr")
            spec["DateTime"] = "";
        else if (type.suffix.starts_with(".tif"))
            spec["DateTime"] = 0;
    }
    if (type.alpha == Alpha::None && !spec.find_attribute("CompressionQuality"))
        spec["CompressionQuality"] = 95;
    return spec;
}

/// One row in the order R, G, B(, A) of a file. `keepGlow`: colours beside an alpha of 0
/// stay as they are, as reading them from associated alpha left them.
template <class T>
void PackRow(const Frame& frame, int y, int channels, Alpha alpha, bool keepGlow,
             std::vector<T>& row) {
    const auto element = frame.Format().element;
    const std::byte* from = frame.Row(y);
    auto to = row.begin();
    for (int x = 0; x < frame.Width(); ++x, from += 4 * sizeof(T)) {
        std::array<T, 4> pixel;
        std::memcpy(&pixel, from, sizeof pixel);
        const auto sample = [&](int k) {
            return pixel[static_cast<std::size_t>(element[static_cast<std::size_t>(k)])];
        };
        const bool multiply = alpha == Alpha::Associated && !(keepGlow && sample(3) == T{0});
        for (int k = 0; k < channels; ++k)
            *to++ = multiply && k < 3 ? Multiplied(sample(k), sample(3)) : sample(k);
    }
}

}  // namespace

void WritePicture(const fs::path& file, const Frame& frame, const PictureHeader& source,
                  const WriteOptions& options) {
    UseOneThread();
    const FileType& type = TypeOf(file);
    const DepthFacts& depth = FactsOf(DepthFor(file, options.depth.value_or(source.depth)));
    const int channels = options.alpha && type.alpha != Alpha::None ? 4 : 3;
    const DpxTags dpx = options.dpx ? *options.dpx : source.dpx.value_or(DpxTags{});
    const OIIO::ImageSpec spec = SpecFor(type, frame, source, depth, channels, dpx);

    const QuietLibraries quiet;
    TemporaryFile temporary(file);
    CheckedFile target(temporary.Path());
    auto out = OIIO::ImageOutput::create(temporary.Path().string());
    if (!out) FailToWrite(file, FirstLine(OIIO::geterror()));
    const bool isTiff = type.suffix.starts_with(".tif");
    if (!isTiff) out->set_ioproxy(&target);  // that library reads what it has written

    const Alpha alpha = channels == 4 ? type.alpha : Alpha::None;
    const auto writeRows = [&](auto sample) {
        using T = decltype(sample);
        std::vector<T> row(static_cast<std::size_t>(frame.Width()) *
                           static_cast<std::size_t>(channels));
        for (int y = 0; y < frame.Height(); ++y) {
            PackRow<T>(frame, y, channels, alpha, source.associated, row);
            if (!out->write_scanline(spec.y + y, 0, OIIO::BaseTypeFromC<T>::value, row.data()))
                FailToWrite(file, FirstLine(out->geterror()));
        }
    };
    try {
        if (!out->open(temporary.Path().string(), spec))
            FailToWrite(file, FirstLine(out->geterror()));
        WithSampleType(frame.Format().sample, writeRows);
        if (!out->close()) FailToWrite(file, FirstLine(out->geterror()));
    } catch (const std::bad_alloc&) {
        // Its destructor would go on writing, which crashes the library for JPEG.
        static_cast<void>(out.release());
        throw;
    }
    if (const int error = target.Finish()) FailToWrite(file, std::strerror(error));
    if (isTiff && !LastRowReads(temporary.Path(), spec))
        FailToWrite(file, "not all of it was kept; is the disk full?");
    if (type.suffix == ".exr" && !ExrIsComplete(temporary.Path()))
        FailToWrite(file, "not all of it was kept; is there memory left?");
    if (type.suffix == ".dpx") WriteDpxTags(temporary.Path(), dpx, file.filename().string());
    temporary.Commit();
}

}  // namespace zel
