/// docs/quirks.md against the sources: every entry that a comment names exists, and
/// every test that an entry names exists.

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <regex>
#include <set>
#include <sstream>
#include <string>

namespace {

namespace fs = std::filesystem;

const fs::path kRoot = ZEL_SOURCE_ROOT;

std::string TextOf(const fs::path& file) {
    std::ifstream in(file);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

/// Calls fn(path below the root, text) for every source file below `folders`.
template <class Fn>
void ForEachSource(std::initializer_list<const char*> folders, Fn fn) {
    for (const char* folder : folders)
        for (const auto& entry : fs::recursive_directory_iterator(kRoot / folder))
            if (entry.path().extension() == ".h" || entry.path().extension() == ".cpp")
                fn(fs::relative(entry.path(), kRoot).string(), TextOf(entry.path()));
}

/// Everything that group 1 of `pattern` matches in `text`.
std::set<std::string> Matches(const std::string& text, const std::string& pattern) {
    const std::regex regex(pattern);
    std::set<std::string> found;
    for (auto m = std::sregex_iterator(text.begin(), text.end(), regex);
         m != std::sregex_iterator(); ++m)
        found.insert((*m)[1]);
    return found;
}

const std::string kQuirks = TextOf(kRoot / "docs/quirks.md");

TEST(QuirksDoc, HasEveryEntryThatACommentNames) {
    const auto entries = Matches(kQuirks, "### \"([^\"]+)\"");
    ASSERT_GT(entries.size(), 20u);
    std::size_t named = 0;
    ForEachSource({"abi", "lut", "ip", "host", "effects", "headless", "cli"},
                  [&](const std::string& file, const std::string& text) {
                      for (const auto& title : Matches(text, "quirks\\.md, \"([^\"]+)\"")) {
                          EXPECT_TRUE(entries.contains(title))
                              << file << " names \"" << title << '"';
                          ++named;
                      }
                  });
    EXPECT_GT(named, 20u);
}

TEST(QuirksDoc, NamesATestThatExistsInEveryEntry) {
    std::set<std::string> tests;
    ForEachSource({"tests"}, [&](const std::string&, const std::string& text) {
        const std::regex test("TEST(?:_F|_P)?\\((\\w+),\\s*(\\w+)\\)");
        for (auto m = std::sregex_iterator(text.begin(), text.end(), test);
             m != std::sregex_iterator(); ++m)
            tests.insert((*m)[1].str() + "." + (*m)[2].str());
    });
    std::istringstream lines(kQuirks);
    std::string line, entry, body;
    const auto check = [&] {
        if (entry.empty()) return;
        const auto named = Matches(body, "`([A-Z]\\w+\\.\\w+)`");
        EXPECT_FALSE(named.empty()) << entry << " names no test";
        for (const auto& name : named)
            EXPECT_TRUE(tests.contains(name)) << entry << " names " << name;
    };
    while (std::getline(lines, line)) {
        if (line.starts_with("#")) {
            check();
            entry = line.starts_with("### ") ? line : "";
            body.clear();
        }
        body += line + '\n';
    }
    check();
}

TEST(QuirksDoc, NamesPlacesThatExist) {
    for (const auto& place : Matches(kQuirks, "`((?:lut|ip|host|effects)/[^`]*)`"))
        EXPECT_TRUE(fs::exists(kRoot / place)) << place;
}

}  // namespace
