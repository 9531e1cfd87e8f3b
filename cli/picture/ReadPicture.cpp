/// Reading picture files through OpenImageIO.

#include "cli/picture/Claims.h"
#include "cli/picture/Oiio.h"
#include "cli/picture/Picture.h"
#include "cli/picture/Pixels.h"
#include "cli/picture/QuietLibraries.h"
#include "headless/Error.h"
#include "headless/Text.h"

#include <OpenImageIO/imageio.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <string_view>
#include <system_error>
#include <vector>

namespace zel {

namespace fs = std::filesystem;

struct PictureReader::Impl {
    std::unique_ptr<OIIO::ImageInput> file;
    std::array<int, 4> channel{};  // of the file: red, green, blue, alpha; -1 where absent
};

namespace {

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

[[noreturn]] void FailToRead(const fs::path& file, const std::string& why) {
    throw Error(ErrorKind::Input, "cannot read '" + file.string() + "': " + why);
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

}  // namespace

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

}  // namespace zel
