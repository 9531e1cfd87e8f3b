#include "cli/lutfile/LutFile.h"

#include "cli/lutfile/Cube3d.h"
#include "cli/picture/TemporaryFile.h"
#include "headless/Error.h"
#include "headless/Text.h"
#include "lut/CUtilLut.h"

#include <algorithm>
#include <charconv>
#include <fstream>

namespace zel {

namespace {

/// Seven decimals tell 16-bit codes apart; with a point, whatever the locale.
std::string Decimal(double unit) {
    char text[32];
    const auto end = std::to_chars(text, text + sizeof text, unit, std::chars_format::fixed, 7).ptr;
    return {text, end};
}

void WriteRow(double red, double green, double blue, std::ostream& out) {
    out << Decimal(red) << ' ' << Decimal(green) << ' ' << Decimal(blue) << '\n';
}

/// A row per code. NaN becomes 0, as in the tables of the modules.
void WriteRows(const Curve& curve, std::ostream& out) {
    for (std::size_t i = 0; i < kCurveCodes; ++i)
        WriteRow(UnitOf(curve.channel[0][i]), UnitOf(curve.channel[1][i]),
                 UnitOf(curve.channel[2][i]), out);
}

/// Lines of what the table is, each behind `mark`, broken behind commas: some readers
/// take no lines of more than 250 characters.
void WriteDescription(const LutFile& lut, const char* mark, std::ostream& out) {
    constexpr std::size_t kWidth = 90;
    out << mark << lut.title << (lut.curve.exact ? ", whole codes" : "") << '\n';
    std::string line;
    for (std::size_t begin = 0; begin < lut.setting.size();) {
        const std::size_t comma = std::min(lut.setting.find(", ", begin), lut.setting.size() - 1);
        const std::string piece = lut.setting.substr(begin, comma + 1 - begin);
        if (!line.empty() && line.size() + piece.size() > kWidth) {
            out << mark << line << '\n';
            line.clear();
        }
        line += line.empty() && piece.starts_with(' ') ? piece.substr(1) : piece;
        begin = comma + 1;
    }
    out << mark << line << '\n';
}

void WriteCube(const LutFile& lut, std::ostream& out) {
    const bool resolve = lut.dialect == LutFile::Dialect::Resolve;
    const int n = lut.size3d;
    WriteDescription(lut, "# ", out);
    if (n == 0) {
        out << "LUT_1D_SIZE " << kCurveCodes << '\n';
        if (resolve) out << "LUT_1D_INPUT_RANGE 0.0 1.0\n";
        return WriteRows(lut.curve, out);
    }
    out << "LUT_3D_SIZE " << n << '\n';
    if (resolve) out << "LUT_3D_INPUT_RANGE 0.0 1.0\n";
    const auto point = [&](int channel, int i) { return CubePoint(lut.curve, channel, i, n); };
    for (int b = 0; b < n; ++b)
        for (int g = 0; g < n; ++g)
            for (int r = 0; r < n; ++r)  // red runs fastest
                WriteRow(point(0, r), point(1, g), point(2, b), out);
}

void WriteSpi1d(const LutFile& lut, std::ostream& out) {
    out << "Version 1\nFrom 0.0 1.0\nLength " << kCurveCodes << "\nComponents 3\n{\n";
    WriteRows(lut.curve, out);
    out << "}\n";
}

void WriteCsp(const LutFile& lut, std::ostream& out) {
    out << "CSPLUTV100\n1D\n\nBEGIN METADATA\n";
    WriteDescription(lut, "", out);
    out << "END METADATA\n\n";
    for (int c = 0; c < 3; ++c) out << "2\n0.0 1.0\n0.0 1.0\n";  // nothing in front of the table
    out << '\n' << kCurveCodes << '\n';
    WriteRows(lut.curve, out);
}

std::string Escaped(const std::string& text) {
    std::string xml;
    for (const char c : text) switch (c) {
            case '&': xml += "&amp;"; break;
            case '<': xml += "&lt;"; break;
            case '>': xml += "&gt;"; break;
            default: xml += c;
        }
    return xml;
}

void WriteClf(const LutFile& lut, std::ostream& out) {
    LutFile escaped = lut;
    escaped.title = Escaped(lut.title);
    escaped.setting = Escaped(lut.setting);
    out << "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
           "<ProcessList compCLFversion=\"3\" id=\"zelfx\">\n"
           "  <Description>\n";
    WriteDescription(escaped, "    ", out);
    out << "  </Description>\n"
           "  <LUT1D inBitDepth=\"32f\" outBitDepth=\"32f\" interpolation=\"linear\">\n"
           "    <Array dim=\""
        << kCurveCodes << " 3\">\n";
    WriteRows(lut.curve, out);
    out << "    </Array>\n  </LUT1D>\n</ProcessList>\n";
}

/// The packed device table, made by the engine.
void WriteZlut(const LutFile& lut, std::ostream& out) {
    CUtilLut table;
    table.Open();
    for (std::size_t c = 0; c < 3; ++c)
        std::ranges::copy(lut.curve.channel[c], table.m_pLut + c * kCurveCodes);
    char packed[6144];
    table.BuildZelLut(packed, 0);
    out.write(packed, sizeof packed);
}

struct FileType {
    std::string_view suffix;
    void (*write)(const LutFile& lut, std::ostream& out);
    bool hasDialects, holds3d;
};

constexpr FileType kFileTypes[] = {
    {".cube", WriteCube, true, true},   {".spi1d", WriteSpi1d, false, false},
    {".csp", WriteCsp, false, false},   {".clf", WriteClf, false, false},
    {".zlut", WriteZlut, false, false},
};

const FileType& TypeFor(const LutFile& lut, const std::filesystem::path& file) {
    const auto refuse = [&](const std::string& why) {
        return Error(ErrorKind::Usage, "cannot write '" + file.string() + "': " + why);
    };
    const std::string suffix = Lower(file.extension().string());
    const auto* type = std::ranges::find(kFileTypes, suffix, &FileType::suffix);
    if (type == std::end(kFileTypes))
        throw refuse("the suffix must be .cube, .spi1d, .csp, .clf or .zlut");
    if (lut.size3d != 0 && !type->holds3d)
        throw refuse("3D tables go into .cube files, " + suffix + " is one-dimensional");
    if (lut.dialect != LutFile::Dialect::Adobe && !type->hasDialects)
        throw refuse("dialects are for .cube files, " + suffix + " has one form");
    return *type;
}

}  // namespace

void WriteLutFile(const LutFile& lut, const std::filesystem::path& file) {
    const FileType& type = TypeFor(lut, file);
    TemporaryFile temporary(file);
    std::ofstream out(temporary.Path(), std::ios::binary);
    type.write(lut, out);
    out.close();
    if (!out) throw Error(ErrorKind::Other, "cannot write '" + file.string() + "'");
    temporary.Commit();
}

}  // namespace zel
