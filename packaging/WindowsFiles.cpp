#include "packaging/Files.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iomanip>
#include <sstream>

namespace zel::packaging {

namespace {

/// Bytes as the 16-bit numbers of a resource script. Every property and the header have
/// an even number of bytes.
std::string Words(const Bytes& bytes) {
    std::ostringstream out;
    out << std::hex << std::setfill('0');
    for (std::size_t i = 0; i + 1 < bytes.size(); i += 2)
        out << (i ? ", " : "") << "0x" << std::setw(4) << (bytes[i] | bytes[i + 1] << 8);
    return out.str();
}

/// "4,0,0,1": the fields of a packed version that the file manager has room for.
std::string FileVersion(std::uint32_t version) {
    std::ostringstream out;
    out << (version >> 19 & 7) << ',' << (version >> 15 & 15) << ',' << (version >> 11 & 15) << ','
        << (version & 0x1FF);
    return out.str();
}

/// "0,1,0,0" from "0.1.0".
std::string ProductVersion(std::string product) {
    std::ranges::replace(product, '.', ',');
    for (auto parts = std::ranges::count(product, ',') + 1; parts < 4; ++parts) product += ",0";
    return product;
}

}  // namespace

std::string WindowsScript(const Effect& effect, const std::string& product) {
    const auto properties = PiplProperties(effect, Platform::Windows64);
    std::ostringstream out;
    out << kPiplId << " PiPL DISCARDABLE\nBEGIN\n    "
        << Words(PiplHeader(properties.size(), Platform::Windows64));
    for (const Property& property : properties)
        out << ",\n    /* " << property.key << " */ " << Words(property.bytes);
    out << "\nEND\n\n";

    const auto value = [&](const char* name, const std::string& text) {
        out << "            VALUE \"" << name << "\", \"" << text << "\\0\"\n";
    };
    std::string fileVersion = FileVersion(effect.version);
    out << "1 VERSIONINFO\nFILEVERSION " << fileVersion << "\nPRODUCTVERSION "
        << ProductVersion(product)
        << "\nFILEOS 0x40004L\nFILETYPE 0x2L\n"  // for 32-bit Windows and later, a library
        << "BEGIN\n    BLOCK \"StringFileInfo\"\n    BEGIN\n"
        << "        BLOCK \"040904B0\"\n        BEGIN\n";  // English, Unicode
    std::ranges::replace(fileVersion, ',', '.');
    value("FileDescription", effect.menuName);
    value("FileVersion", fileVersion);
    value("InternalName", effect.module);
    value("OriginalFilename", std::string(effect.module) + ".aex");
    value("ProductName", "zelfx");
    value("ProductVersion", product);
    out << "        END\n    END\n    BLOCK \"VarFileInfo\"\n    BEGIN\n"
        << "        VALUE \"Translation\", 0x0409, 0x04B0\n    END\nEND\n";
    return out.str();
}

}  // namespace zel::packaging
