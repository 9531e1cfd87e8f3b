#pragma once

/// Reads the resource as a host does: written apart from what writes it.

#include <cstddef>
#include <cstdint>
#include <map>
#include <stdexcept>
#include <string>
#include <vector>

namespace zel::test {

/// The data of each property by its key in reading order, and the keys as they came.
struct PiplContents {
    std::map<std::string, std::vector<std::uint8_t>> data;
    std::vector<std::string> keys;
    bool littleEndian = false;

    std::uint32_t Number(const std::string& key) const {
        const auto& bytes = data.at(key);
        std::uint32_t value = 0;
        for (std::size_t i = 0; i < 4; ++i)
            value |= std::uint32_t{bytes.at(i)} << 8 * (littleEndian ? i : 3 - i);
        return value;
    }
    std::string Pascal(const std::string& key) const {
        const auto& bytes = data.at(key);
        if (bytes.at(0) >= bytes.size()) throw std::runtime_error(key + ": text too long");
        return {bytes.begin() + 1, bytes.begin() + 1 + bytes[0]};
    }
    std::string CString(const std::string& key) const {
        return reinterpret_cast<const char*>(data.at(key).data());
    }
};

/// Throws std::runtime_error or std::out_of_range where the bytes are no such resource.
inline PiplContents ReadPipl(const std::vector<std::uint8_t>& bytes, bool windows) {
    PiplContents contents;
    contents.littleEndian = windows;
    std::size_t at = 0;
    const auto number = [&] {
        std::uint32_t value = 0;
        for (std::size_t i = 0; i < 4; ++i)
            value |= std::uint32_t{bytes.at(at + i)} << 8 * (windows ? i : 3 - i);
        at += 4;
        return value;
    };
    const auto four = [&] {
        const std::uint32_t value = number();
        std::string text;
        for (int shift = 24; shift >= 0; shift -= 8) text += static_cast<char>(value >> shift);
        return text;
    };
    if (windows) {
        if (bytes.at(0) != 1 || bytes.at(1) != 0) throw std::runtime_error("no leading 1");
        at = 2;
    }
    if (number() != 0) throw std::runtime_error("not version 0");
    for (std::uint32_t left = number(); left > 0; --left) {
        if (four() != "8BIM") throw std::runtime_error("a property of another vendor");
        const std::string key = four();
        if (number() != 0) throw std::runtime_error(key + ": id is not 0");
        const std::size_t length = number(), padded = (length + 3) / 4 * 4;
        if (at + padded > bytes.size()) throw std::runtime_error(key + ": runs past the end");
        const auto first = bytes.begin() + static_cast<std::ptrdiff_t>(at);
        contents.data[key] = {first, first + static_cast<std::ptrdiff_t>(padded)};
        contents.keys.push_back(key);
        at += padded;
    }
    if (at != bytes.size()) throw std::runtime_error("bytes behind the last property");
    return contents;
}

}  // namespace zel::test
