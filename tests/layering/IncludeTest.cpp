/// Reads every #include of the system and holds it to the direction in which includes may
/// point. Tests, benchmarks and fuzzers may include anything; nothing includes them.

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <regex>
#include <set>
#include <sstream>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;
using Names = std::vector<std::string>;

struct Folder {
    const char* name;
    Names mayInclude;   // folders, itself among them
    bool standardOnly;  // <> holds headers of the standard library only
};

// clang-format off
const Folder kFolders[] = {
    {"abi",      {"abi"},                                                          true},
    {"lut",      {"lut"},                                                          true},
    {"ip",       {"ip"},                                                           true},
    {"host",     {"host", "abi", "lut", "ip"},                                     true},
    {"effects",  {"effects", "host", "lut", "abi"},                                true},
    {"headless", {"headless", "abi"},                                              false},
    {"packaging",{"packaging", "abi"},                                             true},
    {"cli",      {"cli", "headless", "effects", "host", "ip", "lut", "abi"},       false},
};
// clang-format on

// Headers of the host vendor's kit, which only abi/ may ask for.
const Names kVendorHeaders = {"AE_Effect.h", "AE_EffectCB.h", "PrSDKPixelFormat.h",
                              "PrSDKAESupport.h", "SPBasic.h"};

// Files of one instruction set live in folders of these names and may use its header.
const Names kInstructionSetFolders = {"x86", "arm"};
const Names kInstructionSetHeaders = {"immintrin.h", "arm_neon.h"};

// clang-format off
const std::set<std::string> kStandardHeaders = {
    "algorithm", "any", "array", "atomic", "barrier", "bit", "bitset", "cassert", "cctype",
    "cerrno", "cfenv", "cfloat", "charconv", "chrono", "cinttypes", "climits", "clocale",
    "cmath", "codecvt", "compare", "complex", "concepts", "condition_variable", "coroutine",
    "csetjmp", "csignal", "cstdarg", "cstddef", "cstdint", "cstdio", "cstdlib", "cstring",
    "ctime", "cuchar", "cwchar", "cwctype", "deque", "exception", "execution", "filesystem",
    "format", "forward_list", "fstream", "functional", "future", "initializer_list", "iomanip",
    "ios", "iosfwd", "iostream", "istream", "iterator", "latch", "limits", "list", "locale",
    "map", "memory", "memory_resource", "mutex", "new", "numbers", "numeric", "optional",
    "ostream", "queue", "random", "ranges", "ratio", "regex", "scoped_allocator", "semaphore",
    "set", "shared_mutex", "source_location", "span", "sstream", "stack", "stdexcept",
    "stop_token", "streambuf", "string", "string_view", "strstream", "syncstream",
    "system_error", "thread", "tuple", "type_traits", "typeindex", "typeinfo",
    "unordered_map", "unordered_set", "utility", "valarray", "variant", "vector", "version",
};
// clang-format on

bool Contains(const Names& names, const std::string& name) {
    return std::ranges::find(names, name) != names.end();
}

std::string FirstPart(const std::string& path) { return path.substr(0, path.find('/')); }

/// Everything wrong with the includes of one file; `path` is relative to the root. Each
/// complaint starts with file and line.
Names Complaints(const fs::path& root, const std::string& path, std::istream& text) {
    const auto folder =
        std::ranges::find_if(kFolders, [&](const Folder& f) { return f.name == FirstPart(path); });
    if (folder == std::end(kFolders)) return {path + ": in no folder of the system"};
    const bool ofOneInstructionSet =
        Contains(kInstructionSetFolders, fs::path(path).parent_path().filename().string());

    const std::regex directive(R"(^\s*#\s*include(_next)?\b\s*(.*)$)");
    const std::regex named(R"(^([<"])([^>"]*)[>"].*$)");
    Names complaints;
    std::string line;
    for (int number = 1; std::getline(text, line); ++number) {
        std::smatch match;
        if (!std::regex_match(line, match, directive)) continue;
        const auto complain = [&](const std::string& what) {
            complaints.push_back(path + ":" + std::to_string(number) + ": " + what);
        };
        const std::string operand = match[2];
        if (!std::regex_match(operand, match, named)) {
            complain("an include that names no file: " + operand);
            continue;
        }
        const std::string file = match[2];
        if (match[1] == "<") {
            const bool allowed = !folder->standardOnly || kStandardHeaders.contains(file) ||
                                 (ofOneInstructionSet && Contains(kInstructionSetHeaders, file));
            if (!allowed) complain("<" + file + "> is no header of the standard library");
        } else if (FirstPart(path) == "abi" && Contains(kVendorHeaders, file)) {
            continue;
        } else if (file.find("..") != std::string::npos || file.find('/') == std::string::npos ||
                   !fs::is_regular_file(root / file)) {
            complain("\"" + file + "\" is no path from the root of the tree");
        } else if (!Contains(folder->mayInclude, FirstPart(file))) {
            complain(std::string(folder->name) + " may not include \"" + file + "\"");
        }
    }
    return complaints;
}

bool IsSource(const fs::path& file) {
    return Contains({".h", ".hpp", ".c", ".cpp", ".cc", ".inc"}, file.extension().string());
}

TEST(Includes, PointOneWayOnly) {
    const fs::path root = ZEL_SOURCE_ROOT;
    int files = 0;
    for (const Folder& folder : kFolders) {
        if (!fs::is_directory(root / folder.name)) continue;
        for (const auto& entry : fs::recursive_directory_iterator(root / folder.name)) {
            if (!entry.is_regular_file() || !IsSource(entry.path())) continue;
            ++files;
            std::ifstream text(entry.path());
            ASSERT_TRUE(text) << entry.path();
            const std::string path = entry.path().lexically_relative(root).generic_string();
            for (const std::string& complaint : Complaints(root, path, text))
                ADD_FAILURE() << complaint;
        }
    }
    EXPECT_GE(files, 40) << "hardly a file was found under " << root;
}

// --- the check itself ---------------------------------------------------------------------

struct Case {
    const char* name;
    const char* path;
    const char* text;
    const char* complaint;  // null: none
};

constexpr Case kCases[] = {
    {"downwards", "host/A.cpp", "#include \"lut/CUtilLut.h\"\n", nullptr},
    {"upwards", "lut/A.cpp", "\n\n#include \"host/CAEFx.h\"\n",
     "lut/A.cpp:3: lut may not include \"host/CAEFx.h\""},
    {"sideways", "ip/A.h", "  #  include \"lut/CUtilLut.h\"  // why\n",
     "ip/A.h:1: ip may not include \"lut/CUtilLut.h\""},
    {"engine to interface", "lut/A.h", "#include \"abi/HostTypes.h\"\n",
     "lut/A.h:1: lut may not include \"abi/HostTypes.h\""},
    {"interface to library", "abi/A.h", "#include \"ip/Ip.h\"\n",
     "abi/A.h:1: abi may not include \"ip/Ip.h\""},
    {"effects past the host", "effects/A.cpp", "#include \"ip/Ip.h\"\n",
     "effects/A.cpp:1: effects may not include \"ip/Ip.h\""},
    {"headless to host", "headless/A.cpp", "#include \"host/CAEFx.h\"\n",
     "headless/A.cpp:1: headless may not include \"host/CAEFx.h\""},
    {"headless to interface", "headless/A.cpp", "#include \"abi/Suites.h\"\n", nullptr},
    {"program to anything", "cli/A.cpp", "#include \"ip/Ip.h\"\n#include <zlib.h>\n", nullptr},
    {"program to tests", "cli/A.cpp", "#include \"tests/support/Bits.h\"\n",
     "cli/A.cpp:1: cli may not include \"tests/support/Bits.h\""},
    {"host to tests", "host/A.cpp", "#include \"tests/support/Bits.h\"\n",
     "host/A.cpp:1: host may not include \"tests/support/Bits.h\""},
    {"neighbour by its bare name", "lut/A.cpp", "#include \"CUtilLut.h\"\n",
     "lut/A.cpp:1: \"CUtilLut.h\" is no path from the root of the tree"},
    {"through the parent folder", "lut/A.cpp", "#include \"lut/../lut/CUtilLut.h\"\n",
     "lut/A.cpp:1: \"lut/../lut/CUtilLut.h\" is no path from the root of the tree"},
    {"file that is not there", "lut/A.cpp", "#include \"lut/NoSuchFile.h\"\n",
     "lut/A.cpp:1: \"lut/NoSuchFile.h\" is no path from the root of the tree"},
    {"standard header", "ip/A.cpp", "#include <cstdint>\n", nullptr},
    {"C header", "ip/A.cpp", "#include <stdint.h>\n",
     "ip/A.cpp:1: <stdint.h> is no header of the standard library"},
    {"system header", "host/A.cpp", "#include <unistd.h>\n",
     "host/A.cpp:1: <unistd.h> is no header of the standard library"},
    {"intrinsics in their folder", "ip/x86/A.cpp", "#include <immintrin.h>\n", nullptr},
    {"intrinsics elsewhere", "ip/A.cpp", "#include <immintrin.h>\n",
     "ip/A.cpp:1: <immintrin.h> is no header of the standard library"},
    {"vendor's header in abi", "abi/A.h", "#include \"AE_Effect.h\"\n", nullptr},
    {"vendor's header elsewhere", "host/A.h", "#include \"AE_Effect.h\"\n",
     "host/A.h:1: \"AE_Effect.h\" is no path from the root of the tree"},
    {"name behind a macro", "lut/A.cpp", "#include HEADER\n",
     "lut/A.cpp:1: an include that names no file: HEADER"},
    {"commented out", "lut/A.cpp", "// #include \"host/CAEFx.h\"\n", nullptr},
};

TEST(Includes, TheCheckSeesWhatIsWrong) {
    for (const Case& c : kCases) {
        std::istringstream text(c.text);
        const Names complaints = Complaints(ZEL_SOURCE_ROOT, c.path, text);
        EXPECT_EQ(complaints, c.complaint ? Names{c.complaint} : Names{}) << c.name;
    }
}

}  // namespace
