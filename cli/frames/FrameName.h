#pragma once

/// The name of a frame's file, with a place for the number: "shot.####.dpx".

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace zel {

/// Numbers with more digits are no frame numbers.
inline constexpr int kMostDigits = 18;

class FrameName {
public:
    /// The number stands at
    ///   ####          as many digits as #; a minus comes in front of them
    ///   %d, %04d      as printf writes it; %% is a percent sign then
    /// in the last part of the path; the folders are taken as they are. Null when there
    /// is no such place. Throws Error(Usage) when there are several or one is too wide.
    static std::optional<FrameName> Parse(const std::filesystem::path& pattern);

    /// A name without a place: every frame has it.
    static FrameName Literal(const std::filesystem::path& file);

    FrameName(std::filesystem::path folder, std::string before, int digits, std::string behind);

    /// The same in another folder.
    FrameName In(const std::filesystem::path& folder) const;

    /// The file of a frame. Numbers wider than the place take what they need.
    std::filesystem::path Of(std::int64_t number) const;

    /// The frame whose file has that name, in the same folder; null for another's. The
    /// names of a sequence are those that Of() makes: "a.7.png" is no "a.####.png".
    std::optional<std::int64_t> NumberOf(std::string_view fileName) const;

    /// True when that path, however it is written, is the file of some frame.
    bool Names(const std::filesystem::path& file) const;

    bool HasPlace() const { return m_style != Style::Literal; }
    const std::filesystem::path& Folder() const { return m_folder; }

    /// As a pattern: "in/shot.####.dpx".
    std::string Text() const;

private:
    enum class Style { Literal, Hashes, Printf };

    std::filesystem::path m_folder;
    std::string m_before, m_behind;
    Style m_style = Style::Hashes;
    int m_digits = 1;  // at least, with the minus in a Printf place
};

}  // namespace zel
