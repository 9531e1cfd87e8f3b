#include "packaging/Files.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <sstream>
#include <string_view>

namespace zel::packaging {

namespace {

void Append(Bytes& to, const Bytes& from) { to.insert(to.end(), from.begin(), from.end()); }

Bytes BigEndian(std::size_t value, int size) {
    Bytes bytes;
    for (int shift = 8 * (size - 1); shift >= 0; shift -= 8)
        bytes.push_back(static_cast<std::uint8_t>(value >> shift));
    return bytes;
}

Bytes Characters(std::string_view text) { return {text.begin(), text.end()}; }

std::string Escaped(std::string_view text) {
    std::string escaped;
    for (const char c : text)
        escaped += c == '&' ? "&amp;" : c == '<' ? "&lt;" : c == '>' ? "&gt;" : std::string(1, c);
    return escaped;
}

}  // namespace

Bytes MacResources(const Effect& effect, Platform platform) {
    constexpr std::size_t kDataAt = 256, kMapBytes = 50;
    constexpr std::size_t kTypesAt = 28;       // from the start of the map
    constexpr std::size_t kReferencesAt = 10;  // from the start of the list of types
    const Bytes pipl = Pipl(effect, platform);
    const std::size_t dataBytes = 4 + pipl.size();

    Bytes header;
    for (const std::size_t field : {kDataAt, kDataAt + dataBytes, dataBytes, kMapBytes})
        Append(header, BigEndian(field, 4));

    Bytes file = header;
    file.resize(kDataAt);
    Append(file, BigEndian(pipl.size(), 4));
    Append(file, pipl);

    Append(file, header);                  // the map repeats it
    file.resize(file.size() + 4 + 2 + 2);  // next map, file reference, attributes
    Append(file, BigEndian(kTypesAt, 2));
    Append(file, BigEndian(kMapBytes, 2));  // names: none
    Append(file, BigEndian(0, 2));          // one type
    Append(file, Characters("PiPL"));
    Append(file, BigEndian(0, 2));  // one resource of it
    Append(file, BigEndian(kReferencesAt, 2));
    Append(file, BigEndian(kPiplId, 2));
    Append(file, BigEndian(0xFFFF, 2));     // no name
    Append(file, BigEndian(0, 1 + 3 + 4));  // attributes, place in the data, handle
    return file;
}

std::string InfoPlist(const Effect& effect, const std::string& product) {
    std::ostringstream out;
    out << "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
           "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" "
           "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n"
           "<plist version=\"1.0\">\n<dict>\n";
    const auto entry = [&](const char* key, std::string_view value) {
        out << "\t<key>" << key << "</key>\n\t<string>" << Escaped(value) << "</string>\n";
    };
    // Identifiers hold letters, digits, dots and hyphens.
    std::string identifier = effect.matchName;
    std::ranges::replace(identifier, '_', '-');
    entry("CFBundleExecutable", effect.module);
    entry("CFBundleIdentifier", identifier);
    entry("CFBundleInfoDictionaryVersion", "6.0");
    entry("CFBundleName", effect.menuName);
    entry("CFBundlePackageType", "eFKT");
    entry("CFBundleShortVersionString", product);
    entry("CFBundleSignature", "FXTC");
    entry("CFBundleVersion", product);
    out << "\t<key>CSResourcesFileMapped</key>\n\t<true/>\n</dict>\n</plist>\n";
    return out.str();
}

}  // namespace zel::packaging
