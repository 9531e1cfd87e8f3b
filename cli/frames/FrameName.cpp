#include "cli/frames/FrameName.h"

#include "headless/Error.h"

#include <algorithm>
#include <charconv>

namespace zel {

namespace fs = std::filesystem;

namespace {

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

std::string Padded(std::string digits, std::size_t width) {
    return digits.size() < width ? std::string(width - digits.size(), '0') + digits : digits;
}

/// Length of the %d or %04d at the start of `text`, 0 when there is none.
std::size_t LengthOfPlace(std::string_view text) {
    std::size_t end = 1;
    if (text.size() > end && text[end] == '0')
        while (end < text.size() && IsDigit(text[end])) ++end;
    return end < text.size() && text[end] == 'd' ? end + 1 : 0;
}

/// Digits of a %04d, of which there may be none; too wide when they are no number.
int WidthOf(std::string_view digits) {
    int width = 1;
    if (digits.empty()) return width;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), width);
    return error == std::errc() ? std::max(width, 1) : kMostDigits + 1;
}

[[noreturn]] void Reject(const fs::path& pattern, const std::string& why) {
    throw Error(ErrorKind::Usage, "'" + pattern.string() + "' " + why);
}

}  // namespace

std::optional<FrameName> FrameName::Parse(const fs::path& pattern) {
    const std::string text = pattern.filename().string();
    FrameName name(pattern.parent_path(), "", 1, "");
    int places = 0;
    bool printf = false;
    std::string part;  // of the name that is being read
    for (std::size_t at = 0; at < text.size();) {
        const std::string_view rest = std::string_view(text).substr(at);
        std::size_t length = 0;
        int digits = 1;
        if (rest[0] == '#') {
            length = std::min(rest.find_first_not_of('#'), rest.size());
            digits = static_cast<int>(std::min<std::size_t>(length, kMostDigits + 1));
            name.m_style = Style::Hashes;
        } else if (rest[0] == '%' && (length = LengthOfPlace(rest)) > 0) {
            digits = WidthOf(rest.substr(1, length - 2));
            name.m_style = Style::Printf;
            printf = true;
        }
        if (length == 0) {
            part += rest[0];
            ++at;
            // Half of a %%, which is one percent sign beside a %d alone.
            if (rest.starts_with("%%")) part += rest[1], ++at;
            continue;
        }
        if (++places > 1)
            Reject(pattern, "has several places for the number: leave one #### or %04d");
        if (digits > kMostDigits)
            Reject(pattern, "has a place of more than " + std::to_string(kMostDigits) + " digits");
        name.m_digits = digits;
        name.m_before = std::move(part);
        part.clear();
        at += length;
    }
    if (places == 0) return std::nullopt;
    name.m_behind = std::move(part);
    if (printf)
        for (std::string* side : {&name.m_before, &name.m_behind})
            for (auto at = side->find("%%"); at != std::string::npos; at = side->find("%%", at + 1))
                side->erase(at, 1);
    return name;
}

FrameName FrameName::Literal(const fs::path& file) {
    FrameName name(file.parent_path(), file.filename().string(), 1, "");
    name.m_style = Style::Literal;
    return name;
}

FrameName::FrameName(fs::path folder, std::string before, int digits, std::string behind)
    : m_folder(std::move(folder)),
      m_before(std::move(before)),
      m_behind(std::move(behind)),
      m_digits(digits) {}

FrameName FrameName::In(const fs::path& folder) const {
    FrameName name = *this;
    name.m_folder = folder;
    return name;
}

fs::path FrameName::Of(std::int64_t number) const {
    if (m_style == Style::Literal) return m_folder / m_before;
    const std::string digits = std::to_string(number < 0 ? -number : number);
    const bool minus = number < 0;
    const bool inside = minus && m_style == Style::Printf;
    const auto width = static_cast<std::size_t>(m_digits - inside);
    return m_folder / (m_before + (minus ? "-" : "") + Padded(digits, width) + m_behind);
}

std::optional<std::int64_t> FrameName::NumberOf(std::string_view fileName) const {
    if (!HasPlace() || fileName.size() <= m_before.size() + m_behind.size() ||
        !fileName.starts_with(m_before) || !fileName.ends_with(m_behind))
        return std::nullopt;
    const std::string_view text =
        fileName.substr(m_before.size(), fileName.size() - m_before.size() - m_behind.size());
    if (text.size() > kMostDigits + 1) return std::nullopt;
    std::int64_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
    if (Of(number).filename().string() != fileName) return std::nullopt;
    return number;
}

bool FrameName::Names(const fs::path& file) const {
    const auto folderOf = [](const fs::path& folder) {
        return folder.empty() ? fs::path(".") : folder;
    };
    std::error_code ignored;
    const std::string name = file.filename().string();
    return (HasPlace() ? NumberOf(name).has_value() : name == m_before) &&
           fs::equivalent(folderOf(m_folder), folderOf(file.parent_path()), ignored);
}

std::string FrameName::Text() const {
    const std::string place = m_style == Style::Literal ? ""
                              : m_style == Style::Hashes
                                  ? std::string(static_cast<std::size_t>(m_digits), '#')
                                  : (m_digits == 1 ? "%d" : "%0" + std::to_string(m_digits) + "d");
    return (m_folder / (m_before + place + m_behind)).string();
}

}  // namespace zel
