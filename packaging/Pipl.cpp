#include "packaging/Pipl.h"

#include <cstddef>
#include <string_view>

namespace zel::packaging {

namespace {

constexpr std::uint16_t kPiplVersionMajor = 2;

struct Generation {
    std::uint16_t major, minor;
};

/// Numbers and texts in the order of bytes of one platform.
class Writer {
public:
    explicit Writer(Platform platform) : m_littleEndian(platform == Platform::Windows64) {}

    void Number(std::uint32_t value, int size) {
        for (int i = 0; i < size; ++i) {
            const int shift = 8 * (m_littleEndian ? i : size - 1 - i);
            bytes.push_back(static_cast<std::uint8_t>(value >> shift));
        }
    }
    void Pair(std::uint16_t first, std::uint16_t second) {
        Number(first, 2);
        Number(second, 2);
    }
    /// Four characters are a number: on Windows they lie in memory backwards.
    void FourCharacters(std::string_view text) {
        std::uint32_t value = 0;
        for (const char c : text) value = value << 8 | static_cast<std::uint8_t>(c);
        Number(value, 4);
    }
    void Characters(std::string_view text) { bytes.insert(bytes.end(), text.begin(), text.end()); }
    void PascalString(std::string_view text) {
        Number(static_cast<std::uint32_t>(text.size()), 1);
        Characters(text);
    }
    void CString(std::string_view text) {
        Characters(text);
        Number(0, 1);
    }
    void PadTo4() {
        while (bytes.size() % 4 != 0) bytes.push_back(0);
    }

    Bytes bytes;

private:
    bool m_littleEndian;
};

/// Collects properties; `fill` writes the data of each.
class Properties {
public:
    explicit Properties(Platform platform) : m_platform(platform) {}

    template <class Fill>
    void Add(std::string_view key, Fill fill) {
        Writer data(m_platform);
        fill(data);
        std::size_t length = data.bytes.size();
        data.PadTo4();
        // The Mac's length leaves the padding out, that of Windows counts it.
        if (m_platform == Platform::Windows64) length = data.bytes.size();
        Writer all(m_platform);
        all.FourCharacters("8BIM");
        all.FourCharacters(key);
        all.Number(0, 4);  // id
        all.Number(static_cast<std::uint32_t>(length), 4);
        all.bytes.insert(all.bytes.end(), data.bytes.begin(), data.bytes.end());
        list.push_back({std::string(key), all.bytes});
    }

    std::vector<Property> list;

private:
    Platform m_platform;
};

}  // namespace

std::vector<Property> PiplProperties(const Effect& effect, Platform platform) {
    const Generation spec = platform == Platform::Mac32 ? Generation{12, 13} : Generation{13, 0};
    const auto text = [](std::string_view t) { return [t](Writer& w) { w.PascalString(t); }; };
    const auto number = [](std::uint32_t n) { return [n](Writer& w) { w.Number(n, 4); }; };

    Properties properties(platform);
    properties.Add("kind", [](Writer& w) { w.FourCharacters("eFKT"); });
    properties.Add("name", text(effect.menuName));
    properties.Add("catg", text(effect.category));
    switch (platform) {
        case Platform::Windows64:
            properties.Add("8664", [](Writer& w) { w.CString(kEntryPoint); });
            break;
        case Platform::Mac32: properties.Add("mi32", text(kEntryPoint)); break;
        case Platform::Mac64:
            properties.Add("mi64", text(kEntryPoint));
            properties.Add("ma64", text(kEntryPoint));
            break;
    }
    properties.Add("ePVR", [](Writer& w) { w.Pair(kPiplVersionMajor, 0); });
    properties.Add("eSVR", [&](Writer& w) { w.Pair(spec.major, spec.minor); });
    properties.Add("eVER", number(effect.version));
    properties.Add("eINF", [](Writer& w) { w.Number(0, 2); });
    properties.Add("eGLO", number(effect.flags));
    properties.Add("eGL2", number(effect.flags2));
    properties.Add("eMNA", text(effect.matchName));
    properties.Add("aeFL", number(0));
    return properties.list;
}

Bytes PiplHeader(std::size_t properties, Platform platform) {
    Writer header(platform);
    if (platform == Platform::Windows64) header.Number(1, 2);
    header.Number(0, 4);  // version
    header.Number(static_cast<std::uint32_t>(properties), 4);
    return header.bytes;
}

Bytes Pipl(const Effect& effect, Platform platform) {
    const std::vector<Property> properties = PiplProperties(effect, platform);
    Bytes bytes = PiplHeader(properties.size(), platform);
    for (const Property& property : properties)
        bytes.insert(bytes.end(), property.bytes.begin(), property.bytes.end());
    return bytes;
}

}  // namespace zel::packaging
