// Manifests: what is written, what is read, and what is found wrong.

#include "tests/cli/frames/FramesTest.h"

#include "cli/frames/Manifest.h"
#include "headless/Error.h"

#include <nlohmann/json.hpp>

namespace {

using namespace zel::test;
using nlohmann::json;

class Manifest : public FramesTest {
protected:
    void WriteText(const std::string& name, const std::string& text) {
        WriteFile(In(name), text.data(), text.size());
    }
    json ReadJson(const std::string& name) {
        const Bytes bytes = ReadFile(In(name));
        return json::parse(bytes.begin(), bytes.end());
    }
    /// zelfx verify MANIFEST: the status, and what it prints.
    void ExpectVerified(int status, const std::string& printed) {
        const Outcome run = Zelfx({"verify", "out/m.json"});
        EXPECT_EQ(run.status, status) << run.err;
        EXPECT_EQ(run.out, printed);
    }
};

// Sums of texts, published with the algorithm (FIPS 180-2, and of the empty text).
TEST_F(Manifest, SumsAreSha256) {
    const struct {
        std::string content, sum;
    } cases[] = {
        {"", "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855"},
        {"abc", "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad"},
        {std::string(1'000'000, 'a'),
         "cdc76e5c9914fb9281a1c7e284d73e67f1809a48a497200e046d39ccc7112cd0"},
    };
    for (const auto& c : cases) {
        WriteText("file", c.content);
        const zel::FileFacts facts = zel::FactsOfFile(In("file"));
        EXPECT_EQ(facts.bytes, c.content.size());
        EXPECT_EQ(facts.sum, c.sum);
    }
    EXPECT_THROW(zel::FactsOfFile(In("nowhere")), zel::Error);
    EXPECT_THROW(zel::FactsOfFile(In("out")), zel::Error);
}

TEST_F(Manifest, ListsEveryFrame) {
    MakeFrames(3);
    ASSERT_EQ(RenderFrames("in/shot.####.png", "out/", {"--manifest", "m.json"}).status, 0);
    const json manifest = ReadJson("m.json");
    EXPECT_EQ(manifest["version"], 1);
    ASSERT_EQ(manifest["files"].size(), 3u);
    for (std::size_t i = 0; i < 3; ++i) {
        const json& file = manifest["files"][i];
        const std::string name = "out/shot.000" + std::to_string(i + 1) + ".png";
        EXPECT_EQ(file["frame"], i + 1);
        EXPECT_EQ(file["name"], name);
        EXPECT_EQ(file["size"], fs::file_size(In(name)));
        const std::string sum = Tool({"sha256sum", name}).out.substr(0, 64);
        EXPECT_EQ(file["sha256"], sum);
    }
}

TEST_F(Manifest, FindsWhatIsWrong) {
    MakeFrames(4);
    ASSERT_EQ(RenderFrames("in", "out", {"--manifest", "out/m.json"}).status, 0);
    ExpectVerified(0, "4 files checked, all as they were\n");

    Bytes bytes = ReadFile(In("out/shot.0002.png"));
    bytes[bytes.size() / 2] ^= 1;
    WriteFile(In("out/shot.0002.png"), bytes);
    fs::remove(In("out/shot.0003.png"));
    const auto size = fs::file_size(In("out/shot.0004.png"));
    fs::resize_file(In("out/shot.0004.png"), size - 1);
    ExpectVerified(1,
                   "out/shot.0002.png differs in its checksum\n"
                   "out/shot.0003.png is missing\n"
                   "out/shot.0004.png has " +
                       std::to_string(size - 1) + " bytes, not " + std::to_string(size) +
                       "\n4 files checked, 3 bad\n");
    const json found = json::parse(Zelfx({"verify", "out/m.json", "--json"}).out);
    EXPECT_EQ(found["checked"], 4);
    EXPECT_EQ(found["bad"].size(), 3u);
    EXPECT_EQ(found["bad"][1]["file"], "out/shot.0003.png");
}

TEST_F(Manifest, ARunIsHeldAgainstOne) {
    MakeFrames(3);
    ASSERT_EQ(RenderFrames("in", "out", {"--manifest", "out/m.json"}).status, 0);
    EXPECT_EQ(RenderFrames("in", "out", {"--verify", "out/m.json"}).status, 0);

    // Another setting makes other frames.
    const Outcome other = RenderFrames("in", "out", {"--verify", "out/m.json", "-s", "2=50"});
    EXPECT_EQ(other.status, 1);
    for (int i = 1; i <= 3; ++i)
        EXPECT_NE(other.err.find("shot.000" + std::to_string(i) + ".png'"), std::string::npos);

    // Frames that are none of the manifest's are rendered again, and then are right.
    const Outcome again = RenderFrames("in", "out", {"--verify", "out/m.json", "--skip-existing"});
    EXPECT_EQ(again.status, 0) << again.err;
    EXPECT_EQ(again.out.find("kept"), std::string::npos) << again.out;
    const Outcome kept = RenderFrames("in", "out", {"--verify", "out/m.json", "--skip-existing"});
    EXPECT_EQ(kept.status, 0) << kept.err;
    EXPECT_NE(kept.out.find("3 frames (3 kept)"), std::string::npos) << kept.out;
}

TEST_F(Manifest, RefusesWhatIsNone) {
    const std::string sum(64, 'a');
    const std::string good =
        R"({"frame": 1, "name": "a.png", "size": 3, "sha256": ")" + sum + R"("})";
    const auto with = [&](const std::string& from, const std::string& to) {
        std::string text = good;
        text.replace(text.find(from), from.size(), to);
        return R"({"version": 1, "files": [)" + text + "]}";
    };
    const struct {
        const char* name;
        std::string text;
        Words told;
    } cases[] = {
        {"empty", "", {"no manifest"}},
        {"no JSON", "ba78  a.png\n", {"no manifest"}},
        {"another JSON", R"({"effect": "ZEL Color Balance", "version": 1})", {"no manifest"}},
        {"an array", "[]", {"no manifest"}},
        {"files no array", R"({"version": 1, "files": {}})", {"no manifest"}},
        {"no files", R"({"version": 1, "files": []})", {"lists no files"}},
        {"a later version", R"({"version": 2, "files": []})", {"version 2"}},
        {"no name", with(R"("name": "a.png", )", ""), {"file 1 "}},
        {"a name of another type", with(R"("a.png")", "5"), {"file 1 "}},
        {"a size of another type", with("3,", "-3,"), {"file 1 "}},
        {"a short sum", with("aaa", "aa"), {"file 1 "}},
        {"a sum of other digits", with("aaa", "aaG"), {"file 1 "}},
        {"a name that leads up", with("a.png", "../a.png"), {"'../a.png'", "not below"}},
        {"a name that leads up later", with("a.png", "b/../../a.png"), {"not below"}},
        {"an absolute name", with("a.png", "/etc/passwd"), {"'/etc/passwd'", "not below"}},
        {"an empty name", with("a.png", ""), {"not below"}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        WriteText("m.json", c.text);
        Words told = c.told;
        told.push_back("'m.json'");
        ExpectRefused({"verify", "m.json"}, 3, told);
    }
    WriteText("m.json", with("3,", "3,"));
    EXPECT_EQ(Zelfx({"verify", "m.json"}).out, "a.png is missing\n1 file checked, 1 bad\n");
    ExpectRefused({"verify", "nowhere.json"}, 3, {"'nowhere.json'", "no such file"});
    ExpectRefused({"verify", "out"}, 3, {"'out'", "folder"});
    ExpectRefused({"verify"}, 2, {"MANIFEST is missing"});
}

TEST_F(Manifest, StandsAboveItsFiles) {
    MakeFrames(1);
    fs::create_directory(In("beside"));
    for (const char* manifest : {"beside/m.json", "in/m.json"})
        ExpectRefused(Command("in", "out", {"--manifest", manifest}), 2,
                      {std::string("'") + manifest + "'", "'out'", "above"});
    ExpectRefused(Command("in", "out", {"--manifest", "no/m.json"}), 1, {"no folder 'no'"});
    EXPECT_EQ(OutputFrames(), "");
}

TEST_F(Manifest, IsNoFrame) {
    MakeFrames(2);
    for (const char* option : {"--manifest", "--log"}) {
        const Files before = FilesIn("in");
        ExpectRefused(Command("in", "out", {option, "in/shot.0002.png"}), 2,
                      {"'in/shot.0002.png'", "is a frame"});
        ExpectRefused(Command("in", "out", {option, "out/../out/shot.0009.png"}), 2,
                      {"is a frame"});
        EXPECT_EQ(FilesIn("in"), before);
    }
}

TEST_F(Manifest, NamesNeedToBeText) {
    MakeFrames(1);
    fs::rename(In("in/shot.0001.png"), In("in/\xFF.0001.png"));
    const Outcome run = RenderFrames("in", "out", {"--manifest", "out/m.json"});
    EXPECT_EQ(run.status, 1);
    EXPECT_NE(run.err.find("no UTF-8"), std::string::npos) << run.err;
    EXPECT_FALSE(fs::exists(In("out/m.json")));
}

}  // namespace
