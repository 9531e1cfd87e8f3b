#include "tests/cli/CliTest.h"

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace zel::test {

const Balance kVivid{
    .master = {5, -10, 0, 2.5f},
    .highlights = {-20, 0, 35.5f, 0},
    .midtones = {0, 40, -12.25f, 7},
    .shadows = {30, 0, -60, 15},
};

Words VividOptions() {
    return {"-s", "Master/RGB=5",
            "-s", "Master/Red=-10",
            "-s", "Master/Blue=2.5",
            "-s", "Highlights/RGB=-20",
            "-s", "highlights.green=35.5",
            "-s", "14=40",
            "-s", "Midtones/Green=-12.25",
            "-s", "midtones/blue=7",
            "-s", "Shadows/RGB=30",
            "-s", "SHADOWS/GREEN=-60",
            "-s", "22=15"};
}

std::array<Curve, 3> CurvesOf(const Balance& balance) {
    return {Curve(balance, 0), Curve(balance, 1), Curve(balance, 2)};
}

std::size_t LinesOf(const std::string& text) {
    return static_cast<std::size_t>(std::ranges::count(text, '\n'));
}

Bytes ReadFile(const fs::path& file) {
    std::ifstream in(file, std::ios::binary);
    if (!in) throw std::runtime_error("cannot read " + file.string());
    return {std::istreambuf_iterator<char>(in), {}};
}

void WriteFile(const fs::path& file, const void* data, std::size_t bytes) {
    std::ofstream out(file, std::ios::binary);
    out.write(static_cast<const char*>(data), static_cast<std::streamsize>(bytes));
    if (!out.flush()) throw std::runtime_error("cannot write " + file.string());
}

CliTest::CliTest() {
    std::string name = (fs::temp_directory_path() / "zelfx-test-XXXXXX").string();
    if (!mkdtemp(name.data())) throw std::runtime_error("cannot make a folder like " + name);
    m_folder = name;
}

CliTest::~CliTest() {
    std::error_code ignored;
    fs::remove_all(m_folder, ignored);
}

Outcome CliTest::Zelfx(const Words& arguments, RunOptions options) const {
    if (options.folder.empty()) options.folder = m_folder;
    return RunProgram(Words{ZELFX_PROGRAM} + arguments, options);
}

Outcome CliTest::Render(const std::string& in, const std::string& out, const Words& more) const {
    Outcome outcome = Zelfx(Words{"render", in, out, "--effect", "color_balance"} + more);
    EXPECT_EQ(outcome.status, 0) << in << " to " << out << ": " << outcome.err;
    return outcome;
}

void CliTest::ExpectRefused(const Words& arguments, int status, const Words& texts,
                            const RunOptions& options) const {
    std::string command;
    for (const std::string& word : arguments) command += word + ' ';
    SCOPED_TRACE(command);
    const Words before = Listing();
    const Outcome run = Zelfx(arguments, options);
    EXPECT_EQ(run.status, status);
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(LinesOf(run.err), 1u) << run.err;
    EXPECT_TRUE(run.err.starts_with("zelfx: ")) << run.err;
    for (const std::string& text : texts)
        EXPECT_NE(run.err.find(text), std::string::npos) << "'" << text << "' in " << run.err;
    EXPECT_EQ(Listing(), before);
}

Outcome CliTest::Tool(const Words& command) const {
    Outcome outcome = RunProgram(command, {.folder = m_folder});
    if (outcome.status == 0) return outcome;
    std::string text;
    for (const std::string& word : command) text += word + ' ';
    throw std::runtime_error("status " + std::to_string(outcome.status) + " of: " + text + "\n" +
                             outcome.err + outcome.out);
}

void CliTest::Magick(const std::string& file, int width, int height, int bits, bool alpha,
                     const Words& more) const {
    const std::string size = std::to_string(width) + "x" + std::to_string(height);
    Tool(Words{"convert", "-size", size, "-depth", std::to_string(bits), "-endian", "LSB",
               alpha ? "rgba:made.raw" : "rgb:made.raw", "-strip"} +
         more + Words{file});
    fs::remove(In("made.raw"));
}

void CliTest::MakeExr(const std::string& file, int width, int height,
                      const std::vector<float>& planes, const std::string& depth) const {
    WriteFile(In("made.raw"), planes);
    const bool alpha = planes.size() == 4 * Pixels(width, height);
    Tool({"ffmpeg", "-v", "error", "-y", "-f", "rawvideo", "-pix_fmt",
          alpha ? "gbrapf32le" : "gbrpf32le", "-s",
          std::to_string(width) + "x" + std::to_string(height), "-i", "made.raw", "-format", depth,
          "-update", "1", file});
    fs::remove(In("made.raw"));
}

Words CliTest::Listing() const {
    Words names;
    for (const auto& entry : fs::directory_iterator(m_folder))
        names.push_back(entry.path().filename().string());
    std::ranges::sort(names);
    return names;
}

}  // namespace zel::test
