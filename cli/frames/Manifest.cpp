#include "cli/frames/Manifest.h"

#include "headless/Error.h"
#include "headless/Text.h"

#include <openssl/evp.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <cstring>
#include <memory>
#include <string_view>
#include <utility>

namespace zel {

namespace fs = std::filesystem;

namespace {

constexpr std::size_t kSumDigits = 64;

std::string Hex(const unsigned char* bytes, std::size_t count) {
    constexpr std::string_view digits = "0123456789abcdef";
    std::string text;
    for (std::size_t i = 0; i < count; ++i) text += {digits[bytes[i] >> 4], digits[bytes[i] & 15]};
    return text;
}

/// Names with line breaks and backslashes as sha256sum writes them; a line with such a
/// name starts with a backslash.
constexpr std::pair<char, char> kEscapes[] = {{'\\', '\\'}, {'\n', 'n'}, {'\r', 'r'}};

std::string Escaped(const std::string& name) {
    std::string text;
    for (const char c : name) {
        const auto* escape = std::ranges::find(kEscapes, c, &std::pair<char, char>::first);
        if (escape == std::end(kEscapes))
            text += c;
        else
            text += {'\\', escape->second};
    }
    return text;
}

std::optional<std::string> Unescaped(std::string_view text) {
    std::string name;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '\\') {
            name += text[i];
            continue;
        }
        if (++i == text.size()) return std::nullopt;
        const auto* escape = std::ranges::find(kEscapes, text[i], &std::pair<char, char>::second);
        if (escape == std::end(kEscapes)) return std::nullopt;
        name += escape->first;
    }
    return name;
}

/// "# 123 bytes".
std::optional<std::uint64_t> SizeIn(std::string_view line) {
    if (!line.starts_with("# ")) return std::nullopt;
    line.remove_prefix(2);
    std::uint64_t bytes = 0;
    const auto [end, error] = std::from_chars(line.data(), line.data() + line.size(), bytes);
    if (error != std::errc() || std::string_view(end, line.data() + line.size()) != " bytes")
        return std::nullopt;
    return bytes;
}

/// "SUM  NAME", or "SUM *NAME".
std::optional<ManifestEntry> EntryIn(std::string_view line) {
    const bool escaped = line.starts_with('\\');
    line.remove_prefix(escaped);
    if (line.size() < kSumDigits + 3 || line[kSumDigits] != ' ' ||
        (line[kSumDigits + 1] != ' ' && line[kSumDigits + 1] != '*'))
        return std::nullopt;
    ManifestEntry entry;
    entry.sum = Lower(line.substr(0, kSumDigits));
    if (entry.sum.find_first_not_of("0123456789abcdef") != std::string::npos) return std::nullopt;
    const std::string_view name = line.substr(kSumDigits + 2);
    const auto plain = escaped ? Unescaped(name) : std::string(name);
    if (!plain) return std::nullopt;
    entry.name = *plain;
    return entry;
}

}  // namespace

ManifestEntry EntryOf(const fs::path& file) {
    errno = 0;
    std::ifstream in(file, std::ios::binary);
    const auto fail = [&] {
        throw Error(ErrorKind::Other, "cannot read '" + file.string() + "' for its checksum: " +
                                          (errno ? std::strerror(errno) : "it is no file"));
    };
    if (!in) fail();
    const std::unique_ptr<EVP_MD_CTX, decltype(&EVP_MD_CTX_free)> context(EVP_MD_CTX_new(),
                                                                          EVP_MD_CTX_free);
    if (!context || EVP_DigestInit_ex(context.get(), EVP_sha256(), nullptr) != 1)
        throw Error(ErrorKind::Other, "the library for checksums refuses SHA-256");
    ManifestEntry entry{.file = file, .name = {}, .bytes = 0, .sum = {}};
    std::vector<char> block(std::size_t{1} << 18);
    do {
        in.read(block.data(), static_cast<std::streamsize>(block.size()));
        const auto count = static_cast<std::size_t>(in.gcount());
        EVP_DigestUpdate(context.get(), block.data(), count);
        *entry.bytes += count;
    } while (in);
    if (in.bad() || !in.eof()) fail();
    std::array<unsigned char, EVP_MAX_MD_SIZE> sum{};
    unsigned size = 0;
    EVP_DigestFinal_ex(context.get(), sum.data(), &size);
    entry.sum = Hex(sum.data(), size);
    return entry;
}

ManifestWriter::ManifestWriter(const fs::path& manifest)
    : m_manifest(manifest),
      m_folder(fs::weakly_canonical(fs::absolute(manifest).parent_path())),
      m_temporary(manifest),
      m_out(m_temporary.Path(), std::ios::binary) {}

void ManifestWriter::Add(const ManifestEntry& entry) {
    const fs::path whole =
        fs::weakly_canonical(fs::absolute(entry.file).parent_path()) / entry.file.filename();
    const std::string name = whole.lexically_relative(m_folder).generic_string();
    const std::string escaped = Escaped(name);
    m_out << "# " << *entry.bytes << " bytes\n"
          << (escaped != name ? "\\" : "") << entry.sum << "  " << escaped << '\n';
}

void ManifestWriter::Finish() {
    m_out.close();
    if (!m_out) throw Error(ErrorKind::Other, "cannot write '" + m_manifest.string() + "'");
    m_temporary.Commit();
}

std::vector<ManifestEntry> ReadManifest(const fs::path& manifest) {
    const auto fail = [&](const std::string& why) {
        throw Error(ErrorKind::Input, "cannot read '" + manifest.string() + "': " + why);
    };
    std::error_code ignored;
    if (!fs::exists(manifest, ignored)) fail("there is no such file");
    if (fs::is_directory(manifest, ignored)) fail("it is a folder, not a manifest");
    std::ifstream in(manifest, std::ios::binary);
    if (!in) fail(std::strerror(errno));
    std::vector<ManifestEntry> entries;
    std::optional<std::uint64_t> bytes;
    int number = 0;
    for (std::string line; std::getline(in, line);) {
        ++number;
        if (line.empty()) continue;
        if (line.starts_with('#')) {
            bytes = SizeIn(line);
            continue;
        }
        auto entry = EntryIn(line);
        if (!entry) {
            fail("line " + std::to_string(number) + " is none of a manifest: a SHA-256 sum, " +
                 "two blanks and a name");
            break;
        }
        entry->bytes = std::exchange(bytes, std::nullopt);
        entry->file = manifest.parent_path() / entry->name;
        entries.push_back(std::move(*entry));
    }
    if (entries.empty()) fail("it lists no files");
    return entries;
}

std::string FaultOf(const ManifestEntry& entry) {
    std::error_code error;
    const auto status = fs::status(entry.file, error);
    if (!fs::exists(status)) return "is missing";
    if (!fs::is_regular_file(status)) return "is no file";
    const std::uint64_t bytes = fs::file_size(entry.file, error);
    if (!error && entry.bytes && bytes != *entry.bytes)
        return "has " + std::to_string(bytes) + " bytes, not " + std::to_string(*entry.bytes);
    try {
        return EntryOf(entry.file).sum == entry.sum ? "" : "differs in its checksum";
    } catch (const Error& e) {
        return e.what();
    }
}

}  // namespace zel
