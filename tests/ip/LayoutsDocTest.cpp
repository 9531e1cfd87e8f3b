// docs/layouts.md names every routine of the library once, and no others, and draws
// every layout that it says one works on.

#include "ip/Ip.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <regex>
#include <set>
#include <sstream>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;

std::string TextOf(const fs::path& path) {
    std::ifstream file(path);
    EXPECT_TRUE(file) << "cannot read " << path;
    return {std::istreambuf_iterator<char>(file), {}};
}

/// Names followed by an argument list, outside comments.
std::set<std::string> DeclaredRoutines() {
    std::set<std::string> names;
    for (const auto& entry : fs::directory_iterator(ZEL_IP_DIR)) {
        if (entry.path().extension() != ".h") continue;
        const std::string text =
            std::regex_replace(TextOf(entry.path()), std::regex("//[^\n]*"), "");
        const std::regex routine(R"(\b(Ip[A-Z]\w*)\s*\()");
        for (std::sregex_iterator it(text.begin(), text.end(), routine), end; it != end; ++it)
            names.insert((*it)[1]);
    }
    return names;
}

struct Row {
    std::string routine, from, to, effect;
};

std::string Trimmed(const std::string& text) {
    const auto first = text.find_first_not_of(' '), last = text.find_last_not_of(' ');
    return first == std::string::npos ? "" : text.substr(first, last - first + 1);
}

/// The table's rows: those whose first cell is a routine in backquotes.
std::vector<Row> DocumentedRoutines(const std::string& doc) {
    std::vector<Row> rows;
    std::istringstream lines(doc);
    for (std::string line; std::getline(lines, line);) {
        if (!line.starts_with("| `Ip")) continue;
        std::vector<std::string> cells;
        std::istringstream cellText(line.substr(1));
        for (std::string cell; std::getline(cellText, cell, '|');) cells.push_back(Trimmed(cell));
        EXPECT_EQ(cells.size(), 4u) << line;
        if (cells.size() != 4) continue;
        EXPECT_TRUE(cells[0].size() > 2 && cells[0].back() == '`') << line;
        rows.push_back({cells[0].substr(1, cells[0].size() - 2), cells[1], cells[2], cells[3]});
    }
    return rows;
}

TEST(LayoutsDoc, NamesEveryRoutineOnce) {
    const std::set<std::string> declared = DeclaredRoutines();
    ASSERT_GT(declared.size(), 100u) << "the headers were not understood";
    std::map<std::string, int> documented;
    for (const Row& row : DocumentedRoutines(TextOf(ZEL_LAYOUTS_DOC))) ++documented[row.routine];
    for (const std::string& name : declared)
        EXPECT_EQ(documented[name], 1) << name << ": rows in docs/layouts.md";
    for (const auto& [name, count] : documented)
        EXPECT_TRUE(declared.contains(name)) << name << " is in docs/layouts.md, in no header";
}

TEST(LayoutsDoc, RoutinesReferredToExist) {
    const std::set<std::string> declared = DeclaredRoutines();
    const std::string doc = TextOf(ZEL_LAYOUTS_DOC);
    const std::regex quoted("`(Ip\\w+)`");
    for (std::sregex_iterator it(doc.begin(), doc.end(), quoted), end; it != end; ++it)
        EXPECT_TRUE(declared.contains((*it)[1])) << (*it)[1];
}

TEST(LayoutsDoc, EveryRowSaysWhatItDoes) {
    for (const Row& row : DocumentedRoutines(TextOf(ZEL_LAYOUTS_DOC))) {
        EXPECT_FALSE(row.from.empty() || row.to.empty() || row.effect.empty()) << row.routine;
        // The name tells the layouts: ..._<from>_To_<to>.
        std::smatch parts;
        if (std::regex_match(row.routine, parts, std::regex(R"(IpFrame_Copy_(\w+)_To_(\w+))"))) {
            EXPECT_EQ(row.from, parts[1]) << row.routine;
            EXPECT_EQ(row.to, parts[2]) << row.routine;
        }
    }
}

TEST(LayoutsDoc, DrawsEveryLayout) {
    const std::string doc = TextOf(ZEL_LAYOUTS_DOC);
    const std::string drawings = doc.substr(0, doc.find("## Every routine"));
    ASSERT_LT(drawings.size(), doc.size());
    for (const Row& row : DocumentedRoutines(doc))
        for (const std::string& cell : {row.from, row.to}) {
            const std::string word = cell.substr(0, cell.find(' '));
            if (!std::regex_match(word, std::regex("[A-Zv]\\w*\\d\\w*"))) continue;
            EXPECT_TRUE(std::regex_search(drawings, std::regex("\\b" + word + "\\b")))
                << row.routine << ": " << word << " is not drawn";
        }
}

}  // namespace
