// What goes wrong is said in one line that names the thing, with a status that tells
// the kind, and leaves no file behind.

#include "tests/cli/CliTest.h"

namespace {

using namespace zel::test;

class RenderErrors : public CliTest {
protected:
    void SetUp() override {
        std::vector<std::uint16_t> noise;
        for (std::uint32_t i = 0, v = 1; i < 64 * 64 * 3; ++i) {
            v = v * 1664525 + 1013904223;
            noise.push_back(static_cast<std::uint16_t>(v >> 16));
        }
        MakeWithMagick("good.png", 64, 64, noise, {"-define", "png:bit-depth=16"});
    }

    void ExpectPictureRefused(const std::string& in, const Words& texts) {
        // The PNG library jumps out of its reader past a text, which leak sanitizers see.
        const RunOptions libraryLeaks{.environment = {{"ASAN_OPTIONS", "detect_leaks=0"}}};
        ExpectRefused({"render", in, "out.png", "-e", "color_balance"}, 3, texts, libraryLeaks);
    }
    /// Options refused beside a good picture; an output from before stays as it was.
    void ExpectOptionsRefused(const Words& options, int status, const Words& texts) {
        const Bytes before(100, 'x');
        WriteFile(In("before.png"), before);
        ExpectRefused(Words{"render", "good.png", "before.png"} + options, status, texts);
        EXPECT_EQ(ReadFile(In("before.png")), before);
    }
    void ExpectValueRefused(const std::string& assignment, const Words& texts) {
        ExpectOptionsRefused({"-e", "color_balance", "-s", assignment}, 2, texts);
    }
};

// --- pictures -------------------------------------------------------------------

TEST_F(RenderErrors, NoSuchPicture) {
    ExpectPictureRefused("missing.png", {"'missing.png'", "no such file"});
    ExpectPictureRefused("no/where.exr", {"'no/where.exr'", "no such file"});
    ExpectPictureRefused("", {"''", "no such file"});
}

TEST_F(RenderErrors, AFolderIsNoPicture) {
    fs::create_directory(In("folder.png"));
    ExpectPictureRefused("folder.png", {"'folder.png'", "folder"});
    ExpectPictureRefused(".", {"'.'", "folder"});
}

TEST_F(RenderErrors, ATextIsNoPicture) {
    const std::string text = "These are words.\nAnd more of them.\n";
    for (const char* name :
         {"text.png", "text.txt", "text.dpx", "text.exr", "text.tif", "text.jpg", "text"}) {
        WriteFile(In(name), text.data(), text.size());
        ExpectPictureRefused(name, {std::string("'") + name + "'"});
        WriteFile(In(name), text.data(), 0);
        ExpectPictureRefused(name, {std::string("'") + name + "'"});
    }
}

TEST_F(RenderErrors, PicturesThatBreakOff) {
    const struct {
        const char* file;
        Words make;
    } cases[] = {
        {"a.png", {"convert", "good.png", "a.png"}},
        {"plain.tif", {"oiiotool", "good.png", "--compression", "none", "-o", "plain.tif"}},
        {"zip.tif", {"oiiotool", "good.png", "--compression", "zip", "-o", "zip.tif"}},
        {"magick.tif", {"convert", "good.png", "-compress", "lzw", "magick.tif"}},
        {"tiled.tif", {"oiiotool", "good.png", "--tile", "16", "16", "-o", "tiled.tif"}},
        {"plain.exr",
         {"oiiotool", "good.png", "--compression", "none", "-d", "half", "-o", "plain.exr"}},
        {"zip.exr",
         {"oiiotool", "good.png", "--compression", "zip", "-d", "float", "-o", "zip.exr"}},
        {"a.dpx", {"oiiotool", "good.png", "-d", "uint10", "-o", "a.dpx"}},
        {"ffbe.dpx",
         {"ffmpeg", "-v", "error", "-i", "good.png", "-pix_fmt", "gbrp10be", "ffbe.dpx"}},
        {"ffle.dpx",
         {"ffmpeg", "-v", "error", "-i", "good.png", "-pix_fmt", "gbrp12le", "ffle.dpx"}},
        {"a.jpg", {"convert", "good.png", "-quality", "90", "a.jpg"}},
    };
    for (const auto& c : cases) {
        Tool(c.make);
        const Bytes whole = ReadFile(In(c.file));
        Render(c.file, "whole.png");
        fs::remove(In("whole.png"));
        for (const double part : {0.001, 0.05, 0.3, 0.6, 0.95}) {
            SCOPED_TRACE(part);
            const auto size = static_cast<std::size_t>(part * static_cast<double>(whole.size()));
            WriteFile(In(c.file), whole.data(), size);
            ExpectPictureRefused(c.file, {std::string("'") + c.file + "'", "damaged"});
        }
    }
}

// --- output ---------------------------------------------------------------------

TEST_F(RenderErrors, OutputThatCannotBe) {
    fs::create_directories(In("folder/good.png"));
    WriteFile(In("file"), "x", 1);
    const struct {
        std::string out;
        int status;
        Words texts;
    } cases[] = {
        {"no/such/out.png", 1, {"'no/such/out.png'", "no folder 'no/such'"}},
        {"file/out.png", 1, {"'file/out.png'", "no folder 'file'"}},
        {"/proc/out.png", 1, {"'/proc/out.png'"}},
        {"folder", 1, {"'folder/good.png'", "folder"}},
        {"out.gif", 2, {"'out.gif'", ".png", ".tif", ".exr", ".dpx", ".jpg"}},
        {"out", 2, {"'out'", ".png"}},
        {"", 2, {"''", ".png"}},
        {".png", 2, {"'.png'", "suffix"}},
    };
    for (const auto& c : cases)
        ExpectRefused({"render", "good.png", c.out, "-e", "color_balance"}, c.status, c.texts);
}

TEST_F(RenderErrors, AFullDiskLeavesNoFile) {
    // A limit on the size of files stands for the disk: writing fails half way.
    Tool({"convert", "good.png", "-resize", "512x512!", "big.png"});
    for (const char* out : {"out.tif", "out.png", "out.exr", "out.dpx", "out.jpg"}) {
        SCOPED_TRACE(out);
        const Words before = Listing();
        const Outcome run =
            RunProgram({"sh", "-c", "trap '' XFSZ; ulimit -f 16; exec \"$0\" \"$@\"", ZELFX_PROGRAM,
                        "render", "big.png", out, "-e", "color_balance", "--depth", "16"},
                       {.folder = In("")});
        EXPECT_EQ(run.status, 1) << run.err;
        EXPECT_EQ(run.out, "");
        EXPECT_EQ(LinesOf(run.err), 1u) << run.err;
        EXPECT_NE(run.err.find(std::string("cannot write '") + out + "'"), std::string::npos)
            << run.err;
        EXPECT_EQ(Listing(), before);
    }
}

// --- effects --------------------------------------------------------------------

TEST_F(RenderErrors, NoSuchEffect) {
    WriteFile(In("text.so"), "text", 4);
    ExpectOptionsRefused({"-e", "colour_balance"}, 4, {"'colour_balance'", "color_balance?"});
    ExpectOptionsRefused({"-e", "sharpen"}, 4, {"'sharpen'", "there is", "color_balance"});
    ExpectOptionsRefused({"-e", ""}, 4, {"''"});
    ExpectOptionsRefused({"-e", "./no.so"}, 4, {"'./no.so'", "not there"});
    ExpectOptionsRefused({"-e", "./good.png"}, 4, {"'./good.png'", "cannot be loaded"});
    ExpectOptionsRefused({"-e", "text.so"}, 4, {"'text.so'", "cannot be loaded"});
    ExpectOptionsRefused({"-e", "/"}, 4, {"'/'"});
    ExpectOptionsRefused({"-e", ZELFX_LIBM}, 4, {ZELFX_LIBM, "no effect module", "'main'"});
}

// --- values ---------------------------------------------------------------------

TEST_F(RenderErrors, ValuesThatAreNoNumbers) {
    for (const std::string value :
         {"nan", "inf", "-inf", "abc", "", "1x", "0x10", "1,5", " 1", "--1"})
        ExpectValueRefused("Master/RGB=" + value,
                           {"'Master/RGB'", "'" + value + "'", "no number", "-100 to 100"});
}

TEST_F(RenderErrors, ValuesOutOfRange) {
    for (const std::string value : {"100.00001", "-101", "1e300", "-1e39", "100.0000000001"})
        ExpectValueRefused("Master/RGB=" + value, {"'Master/RGB'", "out of range", "-100 to 100"});
    ExpectValueRefused("Master/RGB=100.0000000001", {"100.0000000001"});
    ExpectValueRefused("ForceRender=2", {"'ForceRender'", "2", "on or off"});
    ExpectValueRefused("ForceRender=0.5", {"'ForceRender'", "0.5", "on or off"});
    ExpectValueRefused("ForceRender=perhaps", {"'ForceRender'", "'perhaps'", "on or off"});
}

TEST_F(RenderErrors, ParametersThatAreNone) {
    ExpectValueRefused("Hilights/Red=1", {"'Hilights/Red'", "did you mean", "Highlights/Red"});
    ExpectValueRefused("Red=1",
                       {"'Red'", "Master/Red", "Highlights/Red", "Midtones/Red", "Shadows/Red"});
    ExpectValueRefused("exposure=1", {"'exposure'", "17"});
    ExpectValueRefused("Master=1", {"'Master'", "Master/RGB"});
    for (const std::string id : {"0", "5", "6", "99", "-1", "1000"})
        ExpectValueRefused(id + "=1", {"id '" + id + "'", "17"});
    ExpectValueRefused("Master/RGB", {"'Master/RGB'", "NAME=VALUE"});
    ExpectValueRefused("=5", {"'=5'", "NAME=VALUE"});
    ExpectValueRefused("", {"''", "NAME=VALUE"});
}

// --- the command line -----------------------------------------------------------

TEST_F(RenderErrors, WrongUsage) {
    const struct {
        Words arguments, texts;
    } cases[] = {
        {{}, {"verb", "list, describe, render,", "--help"}},
        {{"rendre"}, {"'rendre'", "did you mean render?"}},
        {{""}, {"''", "list, describe, render,"}},
        {{"render"}, {"IN", "missing", "zelfx render --help"}},
        {{"render", "good.png"}, {"OUT", "missing", "zelfx render --help"}},
        {{"render", "good.png", "out.png"}, {"effect is missing", "--preset"}},
        {{"render", "good.png", "out.png", "-e"}, {"--effect", "EFFECT"}},
        {{"render", "good.png", "out.png", "-e", "color_balance", "-s"}, {"--set", "NAME=VALUE"}},
        {{"render", "good.png", "out.png", "more.png", "-e", "color_balance"},
         {"'more.png'", "too many"}},
        {{"render", "good.png", "out.png", "-e", "color_balance", "--sett", "1=2"},
         {"'--sett'", "did you mean --set"}},
        {{"render", "good.png", "out.png", "-e", "color_balance", "-x"}, {"'-x'"}},
        {{"describe"}, {"EFFECT", "missing"}},
        {{"describe", "color_balance", "again"}, {"'again'", "too many"}},
        {{"list", "all"}, {"'all'", "too many"}},
        {{"list", "--jsn"}, {"'--jsn'", "--json?"}},
    };
    for (const auto& c : cases) ExpectRefused(c.arguments, 2, c.texts);
}

TEST_F(RenderErrors, OptionsWithWrongValues) {
    const struct {
        std::string option, value;
        Words texts;
    } cases[] = {
        {"--host", "resolve", {"--host", "'resolve'", "premiere or ae"}},
        {"--format", "v210", {"--format", "'v210'", "BGRA8", "ARGBFloat"}},
        {"--depth", "9", {"--depth", "'9'", "half"}},
        {"--alpha", "none", {"--alpha", "'none'", "keep or module"}},
        {"--range16", "half", {"--range16", "'half'", "full or ae"}},
        {"--endian", "big", {"--endian", "DPX", "'before.png'"}},
        {"--transfer", "log", {"--transfer", "DPX", "'before.png'"}},
    };
    for (const auto& c : cases)
        ExpectOptionsRefused({"-e", "color_balance", c.option, c.value}, 2, c.texts);
    ExpectRefused({"render", "good.png", "out.dpx", "-e", "color_balance", "--endian", "middle"}, 2,
                  {"--endian", "'middle'", "little or big"});
    ExpectRefused({"render", "good.png", "out.dpx", "-e", "color_balance", "--transfer", "gamma"},
                  2, {"--transfer", "'gamma'", "log", "rec709"});
}

TEST_F(RenderErrors, FormatsThatTheEffectDoesNotTake) {
    ExpectOptionsRefused({"-e", "color_balance", "--format", "ARGBFloat"}, 4,
                         {"ARGBFloat", "Premiere", "BGRA8, ARGB8, BGRA16, BGRAFloat or ARGB16"});
    ExpectOptionsRefused({"-e", "color_balance", "--host", "ae", "--format", "BGRA16"}, 4,
                         {"BGRA16", "After Effects", "ARGB8 or ARGB16"});
}

}  // namespace
