#pragma once

/// Takes numbers from a fuzzer's input, byte by byte. Where the input has ended, zeros.

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>
#include <string>

namespace zel::fuzz {

class Feed {
public:
    Feed(const std::uint8_t* data, std::size_t size) : m_rest(data, size) {}

    bool Ended() const { return m_rest.empty(); }

    /// A value of any bits.
    template <class T>
    T Any() {
        unsigned char bytes[sizeof(T)] = {};
        const std::size_t n = m_rest.size() < sizeof(T) ? m_rest.size() : sizeof(T);
        if (n > 0) std::memcpy(bytes, m_rest.data(), n);
        m_rest = m_rest.subspan(n);
        T value;
        std::memcpy(&value, bytes, sizeof value);
        return value;
    }

    /// 0 .. count - 1; takes one byte for up to 256 choices.
    int Below(int count) {
        const unsigned any = count <= 256 ? Any<std::uint8_t>() : Any<std::uint16_t>();
        return static_cast<int>(any % static_cast<unsigned>(count));
    }

    bool Flag() { return Any<std::uint8_t>() & 1; }

    /// Mostly a number that a person would set, in hundredths of -327..327; now and then
    /// any bits.
    float Setting() {
        return Below(8) == 0 ? Any<float>() : static_cast<float>(Any<std::int16_t>()) / 100.0f;
    }

    std::string Rest() {
        std::string text(reinterpret_cast<const char*>(m_rest.data()), m_rest.size());
        m_rest = {};
        return text;
    }

private:
    std::span<const std::uint8_t> m_rest;
};

}  // namespace zel::fuzz
