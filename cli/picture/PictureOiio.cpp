/// Picture files through OpenImageIO.

#include "cli/picture/Claims.h"
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
#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <system_error>
#include <vector>

namespace zel {

namespace fs = std::filesystem;

struct PictureAttributes {
    OIIO::ImageSpec spec;
};

struct PictureReader::Impl {
    std::unique_ptr<OIIO::ImageInput> file;
    std::array<int, 4> channel{};  // of the file: red, green, blue, alpha; -1 where absent
};

namespace {

// --- kinds of file and of sample ------------------------------------------------

struct DepthFacts {
    Depth depth;
    const char* name;
    OIIO::TypeDesc::BASETYPE type;
    int bits;
};

// clang-format off
constexpr DepthFacts kDepths[] = {
    {Depth::U8,    "8",     OIIO::TypeDesc::UINT8,  8},
    {Depth::U10,   "10",    OIIO::TypeDesc::UINT16, 10},
    {Depth::U12,   "12",    OIIO::TypeDesc::UINT16, 12},
    {Depth::U16,   "16",    OIIO::TypeDesc::UINT16, 16},
    {Depth::Half,  "half",  OIIO::TypeDesc::HALF,   16},
    {Depth::Float, "float", OIIO::TypeDesc::FLOAT,  32},
};

enum class Alpha { None, Straight, Associated };

/// What a type of file can hold, best depth last.
struct FileType {
    std::string_view suffix;
    std::vector<Depth> depths;
    Alpha alpha;
};

const FileType kFileTypes[] = {
    {".png",  {Depth::U8, Depth::U16},                         Alpha::Straight},
    {".tif",  {Depth::U8, Depth::U16, Depth::Half, Depth::Float}, Alpha::Straight},
    {".tiff", {Depth::U8, Depth::U16, Depth::Half, Depth::Float}, Alpha::Straight},
    {".exr",  {Depth::Half, Depth::Float},                     Alpha::Associated},
    {".dpx",  {Depth::U8, Depth::U10, Depth::U12, Depth::U16}, Alpha::Straight},
    {".jpg",  {Depth::U8},                                     Alpha::None},
    {".jpeg", {Depth::U8},                                     Alpha::None},
};
// clang-format on

const DepthFacts& FactsOf(Depth depth) {
    return *std::ranges::find(kDepths, depth, &DepthFacts::depth);
}

const FileType& TypeOf(const fs::path& file) {
    const auto* type =
        std::ranges::find(kFileTypes, Lower(file.extension().string()), &FileType::suffix);
    if (type == std::end(kFileTypes))
        throw Error(ErrorKind::Usage, "cannot write '" + file.string() +
                                          "': the suffix must be .png, .tif, " +
                                          ".tiff, .exr, .dpx, .jpg or .jpeg");
    return *type;
}

OIIO::TypeDesc TypeDescOf(SampleType type) {
    return type == SampleType::U8    ? OIIO::TypeDesc::UINT8
           : type == SampleType::U16 ? OIIO::TypeDesc::UINT16
                                     : OIIO::TypeDesc::FLOAT;
}

Depth DepthOf(const OIIO::ImageSpec& spec) {
    switch (spec.format.basetype) {
        case OIIO::TypeDesc::UINT8:
        case OIIO::TypeDesc::INT8: return Depth::U8;
        case OIIO::TypeDesc::HALF: return Depth::Half;
        case OIIO::TypeDesc::FLOAT:
        case OIIO::TypeDesc::DOUBLE: return Depth::Float;
        default: {
            const int bits = spec.get_int_attribute("oiio:BitsPerSample", 16);
            return bits == 10 ? Depth::U10 : bits == 12 ? Depth::U12 : Depth::U16;
        }
    }
}

/// Error texts of the library may have several lines, the first of which says most.
std::string FirstLine(const std::string& text) {
    const std::string first = OneLine(text.substr(0, text.find('\n')));
    return first.empty() ? "no reason given" : first;
}

[[noreturn]] void FailToRead(const fs::path& file, const std::string& why) {
    throw Error(ErrorKind::Input, "cannot read '" + file.string() + "': " + why);
}

[[noreturn]] void FailToWrite(const fs::path& file, const std::string& why) {
    throw Error(ErrorKind::Other, "cannot write '" + file.string() + "': " + why);
}

/// What a header claims is refused before anything is allocated for it. 16384 x 16384 is
/// several times what cameras and scanners make.
void RequireBelievable(const fs::path& file, const OIIO::ImageSpec& spec) {
    std::uint64_t most = std::uint64_t{1} << 28;
    if (const char* given = std::getenv("ZELFX_MAX_PIXELS")) {
        const char* const end = given + std::strlen(given);
        const auto [rest, error] = std::from_chars(given, end, most);
        if (error != std::errc{} || rest != end)
            throw Error(ErrorKind::Usage, "ZELFX_MAX_PIXELS cannot be '" + std::string(given) +
                                              "': it takes a whole number");
    }
    const std::string claim =
        "it claims " + std::to_string(spec.width) + " x " + std::to_string(spec.height) + " pixels";
    if (spec.width < 1 || spec.height < 1) FailToRead(file, claim + ": it is damaged");
    if (spec.image_pixels() > most)
        FailToRead(file, claim + ", and " + std::to_string(most) +
                             " is the limit; if that is its size, set ZELFX_MAX_PIXELS to more");
}

/// Channels of the file that hold red, green, blue and alpha, by name where the names
/// tell, else by position.
std::array<int, 4> ColourChannels(const OIIO::ImageSpec& spec) {
    // That of a GIF file is said to be behind the last.
    const int alpha =
        spec.alpha_channel < spec.nchannels ? spec.alpha_channel : spec.channelindex("A");
    if (spec.nchannels < 3) {
        const int grey = alpha == 0 ? 1 : 0;
        return {grey, grey, grey, alpha};
    }
    std::array<int, 4> channel{spec.channelindex("R"), spec.channelindex("G"),
                               spec.channelindex("B"), alpha};
    if (channel[0] < 0 || channel[1] < 0 || channel[2] < 0) channel = {0, 1, 2, alpha};
    return channel;
}

struct FirstBytes {
    std::string_view bytes, type;
};

// clang-format off
constexpr FirstBytes kFirstBytes[] = {
    {"\x89PNG",          "png"},
    {"\xFF\xD8\xFF",     "jpeg"},
    {{"II*\0", 4},       "tiff"},
    {{"MM\0*", 4},       "tiff"},
    {"\x76\x2F\x31\x01", "openexr"},
    {"SDPX",             "dpx"},
    {"XPDS",             "dpx"},
};
// clang-format on

/// Empty for another type.
std::string TypeByFirstBytes(const fs::path& file) {
    std::array<char, 4> begin{};
    std::ifstream(file, std::ios::binary).read(begin.data(), begin.size());
    for (const FirstBytes& known : kFirstBytes)
        if (std::string_view(begin.data(), begin.size()).starts_with(known.bytes))
            return std::string(known.type);
    return {};
}

/// Opens a file of the type that its suffix tells, or else its first bytes. The library by
/// itself would try every type that it knows, and some of its readers crash on what is no
/// file of theirs.
std::unique_ptr<OIIO::ImageInput> Open(const fs::path& file, const OIIO::ImageSpec& config) {
    const std::string suffix = Lower(file.extension().string());
    std::string why = "no reader for '" + suffix + "'";
    for (const std::string& type :
         {suffix.substr(suffix.empty() ? 0 : 1), TypeByFirstBytes(file)}) {
        if (type.empty()) continue;
        auto input = OIIO::ImageInput::create(type, false);
        OIIO::ImageSpec spec;
        if (input && input->open(file.string(), spec, config)) return input;
        const std::string error = input ? input->geterror() : OIIO::geterror();
        if (input) why = FirstLine(error);
    }
    FailToRead(file, "it is damaged or no picture of a known type (" + why + ")");
}

/// The library works in the thread that calls it: threads of its own make a picture no
/// faster, and when memory runs out in one of them, it goes on with what is gone already.
void UseOneThread() {
    static const bool done = OIIO::attribute("threads", 1) && OIIO::attribute("exr_threads", -1);
    static_cast<void>(done);
}

}  // namespace

const char* NameOf(Depth depth) { return FactsOf(depth).name; }

std::optional<Depth> DepthNamed(std::string_view name) {
    for (const DepthFacts& facts : kDepths)
        if (Lower(name) == facts.name) return facts.depth;
    return std::nullopt;
}

// --- reading --------------------------------------------------------------------

PictureReader::PictureReader(const fs::path& file) : m_impl(std::make_unique<Impl>()) {
    UseOneThread();
    std::error_code ignored;
    if (!fs::exists(file, ignored)) FailToRead(file, "there is no such file");
    if (fs::is_directory(file, ignored)) FailToRead(file, "it is a folder, not a picture");

    if (const auto claim = FalseClaim(file)) FailToRead(file, "it is damaged: it claims " + *claim);

    const QuietLibraries quiet;
    OIIO::ImageSpec straight;
    straight["oiio:UnassociatedAlpha"] = 1;
    m_impl->file = Open(file, straight);

    const OIIO::ImageSpec& spec = m_impl->file->spec();
    if (spec.depth > 1) FailToRead(file, "it is a volume, not a picture");
    RequireBelievable(file, spec);
    m_impl->channel = ColourChannels(spec);
    m_header.file = file;
    m_header.width = spec.width;
    m_header.height = spec.height;
    m_header.hasAlpha = m_impl->channel[3] >= 0;
    m_header.depth = DepthOf(spec);
    m_header.dpx = ReadDpxTags(file);
    if (m_header.dpx && DpxBreaksOff(file))
        FailToRead(file, "it is damaged: it ends before its last row");
    m_header.attributes = std::make_shared<PictureAttributes>(PictureAttributes{spec});
    m_header.associated =
        m_header.hasAlpha && spec.get_int_attribute("oiio:UnassociatedAlpha") == 0 && !m_header.dpx;
}

PictureReader::~PictureReader() = default;

void PictureReader::Read(Frame& to) {
    std::array<int, 4> position = m_impl->channel;
    const auto [first, last] = [&] {
        int low = position[0], high = position[0];
        for (const int c : position)
            if (c >= 0) low = std::min(low, c), high = std::max(high, c);
        return std::pair{low, high};
    }();
    const OIIO::stride_t pixel = to.Format().BytesPerPixel();
    const QuietLibraries quiet;
    const auto read = [&](int begin, int end, int element) {
        const bool done = m_impl->file->read_image(
            0, 0, begin, end, TypeDescOf(to.Format().sample),
            to.Row(0) + element * BytesOf(to.Format().sample), pixel, to.RowBytes());
        // The text alone tells of TIFF strips and JPEG scans that end too early.
        if (!done || m_impl->file->has_error())
            FailToRead(m_header.file,
                       "it is damaged or breaks off (" + FirstLine(m_impl->file->geterror()) + ")");
    };
    if (last - first < 4) {  // the usual case: one pass over the file
        read(first, last + 1, 0);
        for (int& p : position)
            if (p >= 0) p -= first;
    } else {
        for (int k = 0; k < 4; ++k)
            if (int& p = position[static_cast<std::size_t>(k)]; p >= 0) read(p, p + 1, k), p = k;
    }
    Rearrange(to, position);
    if (m_header.associated) Unassociate(to);
}

// --- asking ---------------------------------------------------------------------

bool IsPictureName(const fs::path& file) {
    // "openexr:exr,sxr,mxr;tiff:tif,tiff,..."
    static const std::string all = [] {
        std::string list = OIIO::get_string_attribute("extension_list");
        std::ranges::replace_if(
            list, [](char c) { return c == ':' || c == ';'; }, ',');
        return "," + list + ",";
    }();
    const std::string suffix = Lower(file.extension().string());
    return suffix.size() > 1 && all.find("," + suffix.substr(1) + ",") != std::string::npos;
}

namespace {

/// True when the last bytes of the file, as many as `end` has, are these.
bool EndsWith(const fs::path& file, std::string_view end) {
    std::ifstream in(file, std::ios::binary);
    in.seekg(-static_cast<std::streamoff>(end.size()), std::ios::end);
    std::string bytes(end.size(), '\0');
    return in.read(bytes.data(), static_cast<std::streamsize>(bytes.size())) && bytes == end;
}

/// Reads the last row or tile: files of these types have an index of their parts.
bool LastPartReads(OIIO::ImageInput& file) {
    const OIIO::ImageSpec spec = file.spec();
    const int bottom = spec.y + spec.height - 1;
    const bool tiled = spec.tile_width > 0;
    std::vector<std::byte> part(tiled ? spec.tile_bytes(true) : spec.scanline_bytes(true));
    const auto start = [](int last, int origin, int tile) {
        return origin + (last - origin) / tile * tile;
    };
    const bool read =
        tiled ? file.read_native_tile(0, 0, start(spec.x + spec.width - 1, spec.x, spec.tile_width),
                                      start(bottom, spec.y, spec.tile_height), spec.z, part.data())
              : file.read_native_scanline(0, 0, bottom, spec.z, part.data());
    return read && !file.has_error();
}

}  // namespace

bool PictureReader::GoesToItsEnd() {
    const std::string suffix = Lower(m_header.file.extension().string());
    constexpr std::string_view pngEnd("\0\0\0\0IEND\xAE\x42\x60\x82", 12);
    if (suffix == ".png") return EndsWith(m_header.file, pngEnd);
    if (suffix == ".jpg" || suffix == ".jpeg") return EndsWith(m_header.file, "\xFF\xD9");
    if (m_header.dpx) return true;  // or it would not have been opened
    const QuietLibraries quiet;
    const bool whole = LastPartReads(*m_impl->file);
    m_impl->file->geterror();  // it complains of errors that nobody took
    return whole;
}

bool IsWholePicture(const fs::path& file, const PictureShape& shape) {
    std::error_code ignored;
    if (!fs::is_regular_file(file, ignored)) return false;
    try {
        PictureReader reader(file);
        const PictureHeader& is = reader.Header();
        return shape == PictureShape{is.width, is.height, is.depth, is.hasAlpha} &&
               reader.GoesToItsEnd();
    } catch (const Error&) {
        return false;
    }
}

// --- writing --------------------------------------------------------------------

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
