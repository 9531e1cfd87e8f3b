#include "tests/inject/InjectTest.h"

#include <algorithm>
#include <fstream>

namespace zel::test {

namespace {

const std::string kOld = "what was there before";

}  // namespace

const std::vector<WritingCommand>& WritingCommands() {
    // clang-format off
    static const std::vector<WritingCommand> commands = {
        {"RenderPng",   {"render", "in.png", "out.png", "-e", "color_balance"}, "out.png"},
        {"RenderTiff",  {"render", "in.png", "out.tif", "-e", "color_balance"}, "out.tif"},
        {"RenderExr",   {"render", "in.png", "out.exr", "-e", "color_balance"}, "out.exr"},
        {"RenderDpx",   {"render", "in.png", "out.dpx", "-e", "color_balance"}, "out.dpx"},
        {"RenderJpeg",  {"render", "in.png", "out.jpg", "-e", "color_balance"}, "out.jpg"},
        {"SavePreset",  {"curve", "color_balance", "--save-preset", "out.json"}, "out.json"},
        {"CurveSvg",    {"curve", "color_balance", "-o", "out.svg"},            "out.svg"},
        {"CurvePng",    {"curve", "color_balance", "-o", "out.png"},            "out.png"},
        {"CurveCsv",    {"curve", "color_balance", "-o", "out.csv"},            "out.csv"},
        {"ExportCube",  {"export", "color_balance", "-o", "out.cube"},          "out.cube"},
        {"ExportClf",   {"export", "color_balance", "-o", "out.clf"},           "out.clf"},
        {"ExportZlut",  {"export", "color_balance", "-o", "out.zlut"},          "out.zlut"},
        {"Scope",       {"scope", "in.png", "-o", "out.png"},                   "out.png"},
        {"Compare",     {"compare", "in.png", "in.png", "-o", "out.png"},       "out.png"},
        {"Place",       {"place", "in.png", "out.png", "--flip"},               "out.png"},
        {"Convert",     {"convert", "in.bgra", "out.v210", "--from", "BGRA8", "--to", "v210",
                         "--size", "96x64"},                                    "out.v210"},
        {"Pattern",     {"pattern", "out.bgra", "--size", "96x64"},             "out.bgra"},
        {"PatternPng",  {"pattern", "out.png", "--size", "96x64"},              "out.png"},
    };
    // clang-format on
    return commands;
}

void PrintTo(const WritingCommand& command, std::ostream* out) { *out << command.name; }

InjectTest::InjectTest() {
    fs::create_directory(Work());
    std::vector<unsigned char> samples(96 * 64 * 3);
    for (std::size_t i = 0; i < samples.size(); ++i)
        samples[i] = static_cast<unsigned char>(i * i / 7);
    MakeWithMagick("work/in.png", 96, 64, samples);
    samples.resize(96 * 64 * 4);
    WriteFile(Work("in.bgra"), samples);
}

Outcome InjectTest::Limited(const Words& command, RunOptions options) const {
    options.folder = Work();
    return RunProgram(Words{"timeout", "-s", "KILL", "120"} + command, options);
}

InjectTest::FaultyRun InjectTest::Faulty(const Words& arguments, FaultyCall call, const char* error,
                                         long first, long number) const {
    const std::string told = In("told").string();
    fs::remove(told);
    Words command{"env", "LD_PRELOAD=" ZEL_FAULTS, ZELFX_PROGRAM};
    command.insert(command.end(), arguments.begin(), arguments.end());
    const std::string fault = std::string(kFaultyCallNames[static_cast<std::size_t>(call)]) + " " +
                              error + " " + std::to_string(first) + " " + std::to_string(number);
    FaultyRun run{.outcome =
                      Limited(command, {.environment = {{"ZEL_FAULT", fault},
                                                        {"ZEL_FAULT_FOLDER", In("work").string()},
                                                        {"ZEL_FAULT_TOLD", told}}})};
    std::ifstream in(told);
    for (long& calls : run.calls) in >> calls;
    return run;
}

Bytes InjectTest::Expected(const WritingCommand& command) const {
    Words whole{ZELFX_PROGRAM};
    whole.insert(whole.end(), command.arguments.begin(), command.arguments.end());
    const Outcome run = Limited(whole);
    EXPECT_EQ(run.status, 0) << run.err;
    Bytes bytes = ReadFile(Work(command.output));
    fs::remove(Work(command.output));
    return bytes;
}

Words InjectTest::PutOld(const WritingCommand& command) const {
    WriteFile(Work(command.output), kOld.data(), kOld.size());
    return WorkListing();
}

void InjectTest::ExpectAllOrNothing(const WritingCommand& command, const Outcome& outcome,
                                    const Bytes& expected, const Words& before) const {
    EXPECT_EQ(WorkListing(), before);
    const Bytes there = ReadFile(Work(command.output));
    if (outcome.status == 0) {
        EXPECT_TRUE(there == expected || SamePicture(command.output, expected))
            << "status 0, but the file is not as it should be";
        return;
    }
    EXPECT_TRUE(outcome.status == 1 || outcome.status == 3 || outcome.status == 4)
        << "status " << outcome.status << ": " << outcome.err;
    // What fails behind the last step may leave the file as it should be.
    EXPECT_TRUE(std::ranges::equal(there, kOld) || there == expected)
        << "the older file has changed";
    EXPECT_TRUE(outcome.err.starts_with("zelfx: ")) << outcome.err;
    EXPECT_EQ(LinesOf(outcome.err), 1u) << outcome.err;
}

void InjectTest::ExpectTidyCrash(const WritingCommand& command, const Outcome& outcome,
                                 const Words& before) const {
    EXPECT_NE(outcome.err.find("zelfx: crashed (SIG"), std::string::npos) << outcome.err;
    EXPECT_EQ(WorkListing(), before);
    EXPECT_TRUE(std::ranges::equal(ReadFile(Work(command.output)), kOld))
        << "the older file has changed";
}

/// A TIFF file may have its parts in another order, when one of them took two attempts, and
/// an OpenEXR file may lack an attribute that there was no memory for.
bool InjectTest::SamePicture(const std::string& output, const Bytes& expected) const {
    if (!output.ends_with(".tif") && !output.ends_with(".exr")) return false;
    const std::string other = "expected" + output.substr(output.size() - 4);
    WriteFile(In(other), expected);
    return Limited({"oiiotool", "--fail", "0", "../" + other, output, "--diff"}).status == 0;
}

Words InjectTest::WorkListing() const {
    Words names;
    for (const auto& entry : fs::directory_iterator(Work()))
        names.push_back(entry.path().filename().string());
    std::ranges::sort(names);
    return names;
}

}  // namespace zel::test
