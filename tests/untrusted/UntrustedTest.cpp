/// Pictures, presets and names from strangers: what they claim is not believed, and they
/// choose neither files nor commands.

#include "tests/cli/CliTest.h"

#include <algorithm>
#include <fstream>
#include <regex>

namespace {

using namespace zel::test;

class Untrusted : public CliTest {
protected:
    Untrusted() { MakeWithMagick("in.png", 8, 4, std::vector<unsigned char>(96, 77)); }

    void Write(const std::string& name, const std::string& content) const {
        WriteFile(In(name), content.data(), content.size());
    }
};

std::string BigEndian(std::uint32_t value) {
    std::string bytes;
    for (int shift = 24; shift >= 0; shift -= 8)
        bytes += static_cast<char>(static_cast<unsigned char>(value >> shift));
    return bytes;
}

std::uint32_t Crc32(const std::string& bytes) {
    std::uint32_t crc = 0xFFFFFFFF;
    for (const char byte : bytes) {
        crc ^= static_cast<unsigned char>(byte);
        for (int bit = 0; bit < 8; ++bit) crc = (crc >> 1) ^ (crc & 1 ? 0xEDB88320 : 0);
    }
    return ~crc;
}

std::string PngClaiming(std::uint32_t width, std::uint32_t height) {
    using namespace std::string_literals;
    const auto chunk = [](const std::string& typeAndData) {
        return BigEndian(static_cast<std::uint32_t>(typeAndData.size() - 4)) + typeAndData +
               BigEndian(Crc32(typeAndData));
    };
    return "\x89PNG\r\n\x1A\n" +
           chunk("IHDR" + BigEndian(width) + BigEndian(height) + "\x10\x06\0\0\0"s) +
           chunk("IDAT\x78\x9C\x03\0\0\0\0\x01"s) + chunk("IEND");
}

TEST_F(Untrusted, PicturesThatClaimTooMuch) {
    const struct {
        const char *name, *size;
        std::string content;
    } cases[] = {
        {"wide.png", "1000000 x 1000", PngClaiming(1000000, 1000)},
        {"square.png", "40000 x 25000", PngClaiming(40000, 25000)},
        {"tall.png", "1000 x 1000000", PngClaiming(1000, 1000000)},
        {"most.png", "1000000 x 1000000", PngClaiming(1000000, 1000000)},
        {"square.ppm", "40000 x 25000", "P6\n40000 25000\n255\nabc"},
    };
    const long usual = Render("in.png", "usual.png").peakKiB;
    for (const auto& c : cases) {
        Write(c.name, c.content);
        ExpectRefused({"render", c.name, "out.png", "-e", "color_balance"}, 3,
                      {std::string("'") + c.name + "'", c.size, "268435456", "ZELFX_MAX_PIXELS"});
        EXPECT_LT(Zelfx({"scope", c.name, "-o", "out.png"}).peakKiB, usual + 64 * 1024) << c.name;
    }
}

TEST_F(Untrusted, ADpxFileThatClaimsTooMuch) {
    Render("in.png", "good.dpx");
    Bytes bytes = ReadFile(In("good.dpx"));
    const std::string size = BigEndian(50000);
    for (const std::size_t field : {772u, 776u}) std::copy_n(size.begin(), 4, &bytes[field]);
    WriteFile(In("bad.dpx"), bytes);
    ExpectRefused({"render", "bad.dpx", "out.png", "-e", "color_balance"}, 3,
                  {"'bad.dpx'", "50000 x 50000", "ZELFX_MAX_PIXELS"});
}

TEST_F(Untrusted, ADpxFileThatClaimsUserData) {
    Render("in.png", "good.dpx");
    Bytes bytes = ReadFile(In("good.dpx"));
    const std::string size = BigEndian(800'000'000);
    std::copy_n(size.begin(), 4, &bytes[32]);
    WriteFile(In("bad.dpx"), bytes);
    ExpectRefused({"render", "bad.dpx", "out.png", "-e", "color_balance"}, 3,
                  {"'bad.dpx'", "more user data than it has bytes"});
}

TEST_F(Untrusted, AnExrFileThatClaimsALargeAttribute) {
    using namespace std::string_literals;
    Tool({"oiiotool", "in.png", "--attrib", "owner", "somebody", "-o", "good.exr"});
    const long usual = Render("good.exr", "usual.png").peakKiB;
    Bytes bytes = ReadFile(In("good.exr"));
    const std::string attribute = "owner\0string\0"s + "\x08\0\0\0"s + "somebody";
    const auto at = std::search(bytes.begin(), bytes.end(), attribute.begin(), attribute.end());
    ASSERT_NE(at, bytes.end());
    const std::uint32_t left = static_cast<std::uint32_t>(bytes.end() - at) - 17;
    for (const std::uint32_t claimed : {left + 1, 0x7FFFFFFFu, 0x80000000u, 0xFFFFFFFFu}) {
        SCOPED_TRACE(claimed);
        std::string size = BigEndian(claimed);
        std::ranges::copy(size.rbegin(), size.rend(), at + 13);
        WriteFile(In("bad.exr"), bytes);
        const Words render{"render", "bad.exr", "out.png", "-e", "color_balance"};
        ExpectRefused(render, 3, {"'bad.exr'", "an attribute of more bytes than it has"});
        EXPECT_LT(Zelfx(render).peakKiB, usual + 64 * 1024);
    }
}

// The second attribute claims too much; the type of the first is empty, which the library
// takes.
TEST_F(Untrusted, AnExrFileThatClaimsALargeAttributeBehindAnOddOne) {
    using namespace std::string_literals;
    for (const std::string& version : {"\x02\0\0\0"s, "\x02\x10\0\0"s}) {  // one part, several
        Write("bad.exr", "\x76\x2F\x31\x01" + version + "owner\0\0\x08\0\0\0somebody"s +
                             "next\0string\0\xFF\xFF\xFF\x7Fsome"s);
        ExpectRefused({"render", "bad.exr", "out.png", "-e", "color_balance"}, 3,
                      {"'bad.exr'", "an attribute of more bytes than it has"});
    }
    // In the header of the second part.
    Write("bad.exr", "\x76\x2F\x31\x01\x02\x10\0\0name\0string\0\x03\0\0\0one\0"s +
                         "name\0string\0\xFF\xFF\xFF\x7Ftwo\0\0"s);
    ExpectRefused({"render", "bad.exr", "out.png", "-e", "color_balance"}, 3,
                  {"'bad.exr'", "an attribute of more bytes than it has"});
}

TEST_F(Untrusted, AnExrFileWithValuesOfOddLengths) {
    using namespace std::string_literals;
    const std::string begin = "\x76\x2F\x31\x01\x02\0\0\0name\0"s;
    for (const std::string& attribute :
         {"float\0\x05\0\0\0fiver"s, "box2i\0\0\0\0\0"s, "chlist\0\x03\0\0\0RRR"s,
          "chlist\0\x14\0\0\0R\0sixteen of these.\0+"s, "chlist\0\0\0\0\0"s,
          "preview\0\x08\0\0\0\x01\0\0\0\x01\0\0\0"s, "stringvector\0\x05\0\0\0\x02\0\0\0a"s}) {
        Write("bad.exr", begin + attribute + std::string(64, '\0'));
        ExpectRefused({"render", "bad.exr", "out.png", "-e", "color_balance"}, 3,
                      {"'bad.exr'", "an attribute of other bytes than its type has"});
    }
}

TEST_F(Untrusted, ExrFilesOfManyAttributesAndPartsAreBelieved) {
    Tool({"oiiotool",
          "in.png",
          "--attrib:type=float",
          "a",
          "1",
          "--attrib:type=int",
          "b",
          "2",
          "--attrib:type=matrix",
          "c",
          "1,0,0,0,0,1,0,0,0,0,1,0,0,0,0,1",
          "--attrib:type=timecode",
          "smpte:TimeCode",
          "01:02:03:04",
          "--attrib:type=float[2]",
          "d",
          "1,2",
          "--attrib:type=rational",
          "e",
          "30000/1001",
          "--attrib:type=string[2]",
          "f",
          "g,h",
          "--attrib:type=vector",
          "i",
          "1,2,3",
          "--attrib:type=int[2]",
          "j",
          "5,6",
          "--attrib:type=float[8]",
          "chromaticities",
          ".6,.3,.3,.6,.1,.1,.3,.3",
          "-o",
          "many.exr"});
    Tool({"oiiotool", "in.png", "--attrib", "oiio:subimagename", "one", "in.png", "--attrib",
          "oiio:subimagename", "two", "--siappend", "-o", "parts.exr"});
    Tool({"oiiotool", "in.png", "--tile", "16", "16", "-o", "tiles.exr"});
    for (const std::string name : {"many", "parts", "tiles"}) Render(name + ".exr", name + ".png");
}

// The library would try all of its readers, and one crashes on this.
TEST_F(Untrusted, OnlyTheReaderOfTheTypeIsAsked) {
    Bytes bytes = ReadFile(ZEL_SOURCE_ROOT "/fuzz/corpus/picture_fuzz/not_of_its_type.dpx");
    bytes.erase(bytes.begin());  // the fuzzer's choice of a suffix
    for (const std::string name : {"bad.dpx", "bad.png", "bad"}) {
        WriteFile(In(name), bytes);
        ExpectRefused({"render", name, "out.png", "-e", "color_balance"}, 3,
                      {"'" + name + "'", "damaged or no picture of a known type"});
    }
}

TEST_F(Untrusted, PicturesThatClaimNothing) {
    Render("in.png", "whole.dpx");
    for (const std::ptrdiff_t offset : {772, 776}) {  // width and height
        SCOPED_TRACE(offset);
        auto content = ReadFile(In("whole.dpx"));
        std::fill_n(content.begin() + offset, 4, '\0');
        WriteFile(In("none.dpx"), content);
        ExpectRefused({"render", "none.dpx", "out.png", "-e", "color_balance"}, 3,
                      {"'none.dpx'", offset == 772 ? "0 x 4" : "8 x 0"});
    }
}

TEST_F(Untrusted, TheLimitOfPixelsCanBeMoved) {
    const Words render{"render", "in.png", "out.png", "-e", "color_balance"};
    ExpectRefused(render, 3, {"8 x 4", "31 is the limit"},
                  {.environment = {{"ZELFX_MAX_PIXELS", "31"}}});
    for (const std::string wrong : {"", "many", "-1", "1e9", "99999999999999999999"})
        ExpectRefused(render, 2, {"ZELFX_MAX_PIXELS cannot be '" + wrong + "'"},
                      {.environment = {{"ZELFX_MAX_PIXELS", wrong}}});
    EXPECT_EQ(Zelfx(render, {.environment = {{"ZELFX_MAX_PIXELS", "32"}}}).status, 0);
    Write("big.png", PngClaiming(40000, 25000));
    // Believed now: the file is refused for what it has not.
    ExpectRefused({"scope", "big.png", "-o", "s.png"}, 3, {"big.png", "damaged"},
                  {.environment = {{"ZELFX_MAX_PIXELS", "1000000000"}}});
}

TEST_F(Untrusted, PresetsChooseNoFiles) {
    fs::create_directory(In("else"));
    fs::copy_file(ZELFX_MODULE, In("else/stray.so"));
    const std::string here = In("").string();
    for (const std::string& effect :
         {std::string("else/stray.so"), std::string("./else/stray"), here + "else/stray.so",
          std::string("../") + In("").parent_path().filename().string() + "/else/stray.so",
          std::string("..\\\\else\\\\stray.so")}) {
        Write("look.json", R"({"effect": ")" + effect + R"(", "version": 1})");
        ExpectRefused({"render", "in.png", "out.png", "-p", "look.json"}, 4,
                      {"'look.json'", "there is no effect"});
    }
    for (const char* member : {"output", "file", "path", "save-preset"}) {
        Write("look.json", R"({"effect": "Color Balance", "version": 1, ")" + std::string(member) +
                               R"(": "stray.png"})");
        ExpectRefused({"render", "in.png", "out.png", "-p", "look.json"}, 3,
                      {"'look.json'", std::string("'") + member + "'"});
    }
}

TEST_F(Untrusted, NamesAreNoCommands) {
    for (const std::string name :
         {"$(touch gotcha).png", "`touch gotcha`.png", ";touch gotcha;.png", "|touch gotcha.png",
          "a&touch gotcha&.png", "'\"; touch gotcha;.png", "a\ntouch gotcha\n.png", "~.png",
          "*.png", "%s%n%x.png"}) {
        SCOPED_TRACE(name);
        fs::copy_file(In("in.png"), In(name));
        const Outcome run = Zelfx({"render", name, "out-" + name, "-e", "color_balance", "-q",
                                   "--save-preset", name + ".json"});
        EXPECT_EQ(run.status, 0) << run.err;
        EXPECT_TRUE(fs::exists(In("out-" + name)));
        EXPECT_EQ(Zelfx({"curve", "-p", name + ".json", "-o", name + ".svg"}).status, 0);
        EXPECT_FALSE(fs::exists(In("gotcha")));
    }
}

/// No shell anywhere: programs are started by name and words.
TEST(Sources, CallNoShell) {
    const std::regex shell(R"(\b(system|popen|_popen|wordexp|execlp?|execle)\s*\(|/bin/(ba)?sh)");
    int files = 0;
    for (const char* folder : {"abi", "cli", "effects", "headless", "host", "ip", "lut"})
        for (const auto& entry :
             fs::recursive_directory_iterator(fs::path(ZEL_SOURCE_ROOT) / folder)) {
            const std::string suffix = entry.path().extension().string();
            if (suffix != ".cpp" && suffix != ".h") continue;
            ++files;
            std::ifstream in(entry.path());
            int number = 0;
            for (std::string line; std::getline(in, line);) {
                ++number;
                EXPECT_FALSE(std::regex_search(line, shell))
                    << entry.path() << ":" << number << ": " << line;
            }
        }
    EXPECT_GT(files, 150);
    for (const char* call : {"std::system(\"ls\")", "popen (name, \"r\")", "\"/bin/sh\""})
        EXPECT_TRUE(std::regex_search(call, shell)) << "the check itself: " << call;
}

}  // namespace
