/// The resources byte for byte against vectors worked out by hand from the format.

#include "packaging/Files.h"
#include "packaging/Pipl.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <iomanip>
#include <sstream>
#include <string>

namespace {

using namespace zel::packaging;

/// Bytes from hex digits; blanks are skipped, and 'text' in quotes stands for itself.
Bytes FromHex(const std::string& text) {
    Bytes bytes;
    for (std::size_t i = 0; i < text.size();) {
        if (text[i] == ' ') {
            ++i;
        } else if (text[i] == '\'') {
            for (++i; text[i] != '\''; ++i) bytes.push_back(static_cast<std::uint8_t>(text[i]));
            ++i;
        } else {
            bytes.push_back(static_cast<std::uint8_t>(std::stoi(text.substr(i, 2), nullptr, 16)));
            i += 2;
        }
    }
    return bytes;
}

testing::AssertionResult Same(const Bytes& expected, const Bytes& got) {
    const auto hex = [](const Bytes& bytes, std::size_t i) {
        std::ostringstream out;
        if (i >= bytes.size()) return std::string("the end");
        out << "0x" << std::hex << std::setw(2) << std::setfill('0') << int{bytes[i]};
        return out.str();
    };
    for (std::size_t i = 0; i < std::max(expected.size(), got.size()); ++i)
        if (i >= expected.size() || i >= got.size() || expected[i] != got[i])
            return testing::AssertionFailure()
                   << "byte " << i << ": expected " << hex(expected, i) << ", got " << hex(got, i);
    return testing::AssertionSuccess();
}

// Four characters are reversed, numbers little-endian, lengths count the padding.
const std::string kWindowsBalance =
    "0100 00000000 0C000000"
    "'MIB8' 'dnik' 00000000 04000000 'TKFe'"
    "'MIB8' 'eman' 00000000 14000000 11 'ZEL Color Balance' 0000"
    "'MIB8' 'gtac' 00000000 04000000 03 'ZEL'"
    "'MIB8' '4668' 00000000 08000000 'main' 00 000000"
    "'MIB8' 'RVPe' 00000000 04000000 0200 0000"
    "'MIB8' 'RVSe' 00000000 04000000 0D00 0000"
    "'MIB8' 'REVe' 00000000 04000000 01002000"
    "'MIB8' 'FNIe' 00000000 04000000 0000 0000"
    "'MIB8' 'OLGe' 00000000 04000000 00040002"
    "'MIB8' '2LGe' 00000000 04000000 00000000"
    "'MIB8' 'ANMe' 00000000 14000000 13 'zelfx.color_balance'"
    "'MIB8' 'LFea' 00000000 04000000 00000000";

/// In reading order and big-endian; lengths leave the padding out. `code` is the entry
/// point for each processor, `spec` the interface's generation.
std::string MacBalance(const std::string& count, const std::string& code, const std::string& spec) {
    return "00000000" + count +
           "'8BIM' 'kind' 00000000 00000004 'eFKT'"
           "'8BIM' 'name' 00000000 00000012 11 'ZEL Color Balance' 0000"
           "'8BIM' 'catg' 00000000 00000004 03 'ZEL'" +
           code + "'8BIM' 'ePVR' 00000000 00000004 0002 0000" + "'8BIM' 'eSVR' 00000000 00000004" +
           spec +
           "'8BIM' 'eVER' 00000000 00000004 00200001"
           "'8BIM' 'eINF' 00000000 00000002 0000 0000"
           "'8BIM' 'eGLO' 00000000 00000004 02000400"
           "'8BIM' 'eGL2' 00000000 00000004 00000000"
           "'8BIM' 'eMNA' 00000000 00000014 13 'zelfx.color_balance'"
           "'8BIM' 'aeFL' 00000000 00000004 00000000";
}
const std::string kMac32Balance =
    MacBalance("0000000C", "'8BIM' 'mi32' 00000000 00000005 04 'main' 000000", "000C 000D");
const std::string kMac64Balance = MacBalance("0000000D",
                                             "'8BIM' 'mi64' 00000000 00000005 04 'main' 000000"
                                             "'8BIM' 'ma64' 00000000 00000005 04 'main' 000000",
                                             "000D 0000");

const Effect& Balance() { return *Find("zel_color_balance"); }

TEST(Pipl, EveryByteOnEachPlatform) {
    EXPECT_TRUE(Same(FromHex(kWindowsBalance), Pipl(Balance(), Platform::Windows64)));
    EXPECT_TRUE(Same(FromHex(kMac32Balance), Pipl(Balance(), Platform::Mac32)));
    EXPECT_TRUE(Same(FromHex(kMac64Balance), Pipl(Balance(), Platform::Mac64)));
}

TEST(Pipl, TextsOfEveryLengthArePaddedToFour) {
    const struct {
        const char *category, *bytes;
    } cases[] = {
        {"A", "'MIB8' 'gtac' 00000000 04000000 01 'A' 0000"},
        {"AB", "'MIB8' 'gtac' 00000000 04000000 02 'AB' 00"},
        {"ABC", "'MIB8' 'gtac' 00000000 04000000 03 'ABC'"},
        {"ABCD", "'MIB8' 'gtac' 00000000 08000000 04 'ABCD' 000000"},
    };
    for (const auto& c : cases) {
        Effect effect = Balance();
        effect.category = c.category;
        EXPECT_TRUE(Same(FromHex(c.bytes), PiplProperties(effect, Platform::Windows64)[2].bytes))
            << c.category;
    }
}

TEST(Pipl, VersionAndFlagsOfTheRow) {
    Effect effect = Balance();
    effect.version = 0x89ABCDEF, effect.flags = 0x01234567, effect.flags2 = 0xFEDCBA98;
    const auto properties = PiplProperties(effect, Platform::Mac64);
    EXPECT_TRUE(Same(FromHex("'8BIM' 'eVER' 00000000 00000004 89ABCDEF"), properties[7].bytes));
    EXPECT_TRUE(Same(FromHex("'8BIM' 'eGLO' 00000000 00000004 01234567"), properties[9].bytes));
    EXPECT_TRUE(Same(FromHex("'8BIM' 'eGL2' 00000000 00000004 FEDCBA98"), properties[10].bytes));
}

TEST(MacResources, EveryByte) {
    const Bytes pipl = FromHex(kMac64Balance);
    ASSERT_EQ(pipl.size(), 0x134u);
    const std::string header = "00000100 00000238 00000138 00000032";
    Bytes expected = FromHex(header);
    expected.resize(256);
    const auto append = [&](const Bytes& bytes) {
        expected.insert(expected.end(), bytes.begin(), bytes.end());
    };
    append(FromHex("00000134"));
    append(pipl);
    append(FromHex(header + "00000000 0000 0000 001C 0032"
                            "0000 'PiPL' 0000 000A"
                            "3E80 FFFF 00 000000 00000000"));
    EXPECT_TRUE(Same(expected, MacResources(Balance(), Platform::Mac64)));
}

TEST(InfoPlist, EveryLine) {
    Effect effect = Balance();
    effect.menuName = "A & <B>";
    EXPECT_EQ(InfoPlist(effect, "1.2.3"),
              R"(<?xml version="1.0" encoding="UTF-8"?>
<!DOCTYPE plist PUBLIC "-//Apple//DTD PLIST 1.0//EN" "http://www.apple.com/DTDs/PropertyList-1.0.dtd">
<plist version="1.0">
<dict>
	<key>CFBundleExecutable</key>
	<string>zel_color_balance</string>
	<key>CFBundleIdentifier</key>
	<string>zelfx.color-balance</string>
	<key>CFBundleInfoDictionaryVersion</key>
	<string>6.0</string>
	<key>CFBundleName</key>
	<string>A &amp; &lt;B&gt;</string>
	<key>CFBundlePackageType</key>
	<string>eFKT</string>
	<key>CFBundleShortVersionString</key>
	<string>1.2.3</string>
	<key>CFBundleSignature</key>
	<string>FXTC</string>
	<key>CFBundleVersion</key>
	<string>1.2.3</string>
	<key>CSResourcesFileMapped</key>
	<true/>
</dict>
</plist>
)");
    EXPECT_EQ(std::string(kPkgInfo), "eFKTFXTC");
}

TEST(WindowsScript, OneLineOfEachPartAndTheVersions) {
    const std::string script = WindowsScript(Balance(), "0.1.0");
    for (const char* const line :
         {"16000 PiPL DISCARDABLE\n", "    0x0001, 0x0000, 0x0000, 0x000c, 0x0000,\n",
          "/* eGLO */ 0x494d, 0x3842, 0x4c4f, 0x6547, 0x0000, 0x0000, 0x0004, 0x0000, 0x0400, "
          "0x0200,\n",
          "FILEVERSION 4,0,0,1\n", "PRODUCTVERSION 0,1,0,0\n",
          "VALUE \"OriginalFilename\", \"zel_color_balance.aex\\0\"\n"})
        EXPECT_NE(script.find(line), std::string::npos) << line << "in\n" << script;
}

}  // namespace
