#include "cli/frames/Manifest.h"

#include "headless/Error.h"

#include <openssl/evp.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <memory>
#include <optional>
#include <string_view>

namespace zel {

namespace fs = std::filesystem;

namespace {

using Json = nlohmann::ordered_json;

constexpr int kVersion = 1;
constexpr std::size_t kSumDigits = 64;
constexpr std::string_view kHexDigits = "0123456789abcdef";

std::string Hex(const unsigned char* bytes, std::size_t count) {
    std::string text;
    for (std::size_t i = 0; i < count; ++i)
        text += {kHexDigits[bytes[i] >> 4], kHexDigits[bytes[i] & 15]};
    return text;
}

fs::path WholeFolder(const fs::path& folder) {
    return fs::weakly_canonical(fs::absolute(folder.empty() ? "." : folder));
}

fs::path WholeName(const fs::path& file) {
    return WholeFolder(file.parent_path()) / file.filename();
}

/// True for names that can lead elsewhere than below the folder they are put behind.
bool LeadsOut(const fs::path& name) {
    return name.empty() || name.has_root_path() ||
           std::ranges::any_of(name, [](const fs::path& part) { return part == ".."; });
}

/// The first thing wrong between two; empty when they are the same.
std::string Difference(const FileFacts& found, const FileFacts& wanted) {
    if (found.bytes != wanted.bytes)
        return "has " + std::to_string(found.bytes) + " bytes, not " + std::to_string(wanted.bytes);
    return found.sum == wanted.sum ? "" : "differs in its checksum";
}

bool IsSum(const std::string& text) {
    return text.size() == kSumDigits && text.find_first_not_of(kHexDigits) == std::string::npos;
}

/// An entry of "files"; null when it is none.
std::optional<ManifestEntry> EntryIn(const Json& json, const fs::path& folder) {
    const auto is = [&](const char* key, auto test) {
        return json.contains(key) && (json[key].*test)();
    };
    if (!json.is_object() || !is("frame", &Json::is_number_integer) ||
        !is("name", &Json::is_string) || !is("size", &Json::is_number_unsigned) ||
        !is("sha256", &Json::is_string) || !IsSum(json["sha256"].get<std::string>()))
        return std::nullopt;
    const auto name = json["name"].get<std::string>();
    if (LeadsOut(name))
        throw Error(ErrorKind::Input, "'" + name + "' is not below the folder of the manifest");
    return ManifestEntry{json["frame"].get<std::int64_t>(),
                         folder / name,
                         {json["size"].get<std::uint64_t>(), json["sha256"].get<std::string>()}};
}

}  // namespace

FileFacts FactsOfFile(const fs::path& file) {
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
    FileFacts facts;
    std::vector<char> block(std::size_t{1} << 18);
    do {
        in.read(block.data(), static_cast<std::streamsize>(block.size()));
        const auto count = static_cast<std::size_t>(in.gcount());
        EVP_DigestUpdate(context.get(), block.data(), count);
        facts.bytes += count;
    } while (in);
    if (in.bad() || !in.eof()) fail();
    std::array<unsigned char, EVP_MAX_MD_SIZE> sum{};
    unsigned size = 0;
    EVP_DigestFinal_ex(context.get(), sum.data(), &size);
    facts.sum = Hex(sum.data(), size);
    return facts;
}

// --- writing --------------------------------------------------------------------

ManifestWriter::ManifestWriter(const fs::path& manifest, const fs::path& folder)
    : m_manifest(manifest), m_temporary(manifest), m_out(m_temporary.Path(), std::ios::binary) {
    m_prefix = WholeFolder(folder).lexically_relative(WholeFolder(manifest.parent_path()));
    if (LeadsOut(m_prefix))
        throw Error(ErrorKind::Usage, "the manifest '" + manifest.string() +
                                          "' must be in the folder of its files, '" +
                                          folder.string() + "', or above it");
    m_out << "{\n  \"version\": " << kVersion << ",\n  \"files\": [";
}

void ManifestWriter::Add(std::int64_t frame, const fs::path& file, const FileFacts& facts) {
    const std::string name = (m_prefix / file.filename()).lexically_normal().generic_string();
    Json line;
    line["frame"] = frame;
    line["name"] = name;
    line["size"] = facts.bytes;
    line["sha256"] = facts.sum;
    try {
        m_out << m_separator << "\n    " << line.dump();
    } catch (const Json::type_error&) {
        throw Error(ErrorKind::Other,
                    "'" + name + "' cannot stand in a manifest: the name is no UTF-8 text");
    }
    m_separator = ",";
}

void ManifestWriter::Finish() {
    m_out << "\n  ]\n}\n";
    m_out.close();
    if (!m_out) throw Error(ErrorKind::Other, "cannot write '" + m_manifest.string() + "'");
    m_temporary.Commit(TemporaryFile::OnDisk);
}

// --- reading --------------------------------------------------------------------

std::vector<ManifestEntry> ReadManifest(const fs::path& manifest) {
    const auto fail = [&](const std::string& why) {
        throw Error(ErrorKind::Input, "cannot read '" + manifest.string() + "': " + why);
    };
    std::error_code ignored;
    if (!fs::exists(manifest, ignored)) fail("there is no such file");
    if (fs::is_directory(manifest, ignored)) fail("it is a folder, not a manifest");
    std::ifstream in(manifest, std::ios::binary);
    if (!in) fail(std::strerror(errno));
    const Json json = Json::parse(in, nullptr, false);
    if (!json.is_object() || !json.contains("version") || !json.contains("files") ||
        !json["files"].is_array())
        fail("it is no manifest: JSON with \"version\" and \"files\"");
    if (json["version"] != kVersion)
        fail("it has version " + json["version"].dump() + ", and this program knows " +
             std::to_string(kVersion));
    std::vector<ManifestEntry> entries;
    for (const Json& file : json["files"]) {
        std::optional<ManifestEntry> entry;
        try {
            entry = EntryIn(file, manifest.parent_path());
        } catch (const Error& e) {
            fail(e.what());
        }
        if (!entry)
            fail("file " + std::to_string(entries.size() + 1) +
                 " of it lacks a frame, a name, a size or a SHA-256 sum");
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
    // A file of another size needs no reading.
    const std::uint64_t bytes = fs::file_size(entry.file, error);
    if (!error && bytes != entry.facts.bytes) return Difference({bytes, ""}, entry.facts);
    try {
        return Difference(FactsOfFile(entry.file), entry.facts);
    } catch (const Error& e) {
        return e.what();
    }
}

ExpectedFiles::ExpectedFiles(const fs::path& manifest) {
    for (const ManifestEntry& entry : ReadManifest(manifest))
        m_files.insert_or_assign(WholeName(entry.file), entry.facts);
}

std::string ExpectedFiles::FaultOf(const fs::path& file, const FileFacts& found) const {
    const auto expected = m_files.find(WholeName(file));
    return expected == m_files.end() ? "is not in the manifest"
                                     : Difference(found, expected->second);
}

}  // namespace zel
