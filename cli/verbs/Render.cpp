/// zelfx render: pictures through an effect.

#include "cli/Chain.h"
#include "cli/CpuLevel.h"
#include "cli/RenderPicture.h"
#include "cli/Settings.h"
#include "cli/Words.h"
#include "cli/frames/RenderFrames.h"
#include "cli/frames/SequenceFiles.h"
#include "cli/picture/TemporaryFile.h"
#include "cli/verbs/Verbs.h"
#include "cli/video/RenderVideo.h"
#include "headless/Error.h"
#include "headless/Text.h"

#include <algorithm>
#include <initializer_list>
#include <iostream>

namespace zel {

namespace {

std::vector<std::string> MissingWords() { return {"error", "skip", "nearest"}; }

// clang-format off
constexpr Option kOptions[] = {
    {"IN",              "",            "picture, video, folder, shot.####.dpx, shot.%04d.dpx", Option::Required},
    {"OUT",             "",            ".png .tif .exr .dpx .jpg, or video: .mov .mp4 .mkv", Option::Required},
    Heading("Look"),
    kEffectOption,
    kPresetOption,
    kSetOption,
    kToLinearOption,
    kToLogOption,
    kSavePresetOption,
    kHostOption,
    kIsolateOption,
    kIsolateLimitOption,
    Heading("Picture"),
    {"--format",        "FORMAT",      "pixels for the effect (default: by IN's depth)", Option::Optional, FormatWords},
    {"--depth",         "DEPTH",       "of OUT: 8, 10, 12, 16, half, float (as IN)",     Option::Optional, DepthWords},
    {"--alpha",         "keep|module", "the source's (default) or the module's"},
    {"--range16",       "full|ae",     "16-bit white: 65535 (default) or 32768"},
    {"--endian",        "little|big",  "of a DPX file (default: as IN, else big)"},
    {"--transfer",      "TAG",         "of a DPX file: log, linear, ... (as IN)",        Option::Optional, TransferWords},
    Heading("Sequence"),
    {"--frames",        "FRAMES",      "1-100, 1-100x2, 1-20,40 (default: all)"},
    {"--missing",       "HOW",         "frames not there: error (default), skip, nearest", Option::Optional, MissingWords},
    {"--skip-existing", nullptr,       "keep outputs that are there and whole"},
    {"--manifest",      "FILE",        "list sizes and sums, for 'zelfx verify'"},
    {"--verify",        "MANIFEST",    "hold the outputs against an earlier run's"},
    Heading("Video"),
    {"--codec",         "NAME",        "ffmpeg's encoder (default: by OUT: ProRes, x264)"},
    {"--crf",           "N",           "quality of x264 and its kin (default: 18)"},
    {"--pix-fmt",       "NAME",        "ffmpeg's pixels, yuv420p10le, ... (near IN's)"},
    Heading("Running"),
    {"-j,--jobs",       "N",           "frames at a time (default: one per processor)"},
    {"--log",           "FILE",        "append a line of JSON for every frame"},
    kCpuOption,
    {"-v,--verbose",    nullptr,       "tell of every frame, and of the memory for them"},
    {"-q,--quiet",      nullptr,       "print nothing but errors"},
};
// clang-format on

RenderOptions OptionsFrom(const Arguments& arguments) {
    RenderOptions options;
    if (const auto format = arguments.Last("format")) options.format = FormatNamed(*format);
    options.moduleAlpha = arguments.Is("alpha", "module");
    options.editorRange = arguments.Is("range16", "ae");
    if (const auto depth = arguments.Last("depth")) options.depth = DepthNamed(*depth);
    if (arguments.Has("endian")) options.bigEndian = arguments.Is("endian", "big");
    if (const auto transfer = arguments.Last("transfer"))
        options.transfer = DpxTransferNamed(*transfer);
    return options;
}

/// Options that do nothing here: better said than passed over.
void Refuse(const Arguments& arguments, std::initializer_list<const char*> options,
            const char* whose, const std::filesystem::path& out) {
    for (const char* option : options)
        if (arguments.Has(option))
            throw Error(ErrorKind::Usage, std::string("--") + option + " is for " + whose +
                                              ", and '" + out.string() + "' is none");
}

void PrintNote(const std::string& text) { std::cerr << "zelfx: note: " << text << '\n'; }

void PrintNotes(const RenderReport& report) {
    if (report.effect.code != 0)
        PrintNote("the effect rendered the frame and returned " +
                  std::to_string(report.effect.code) + " (\"" + OneLine(report.effect.message) +
                  "\"), as it does in After Effects");
    if (report.floatNarrowed)
        PrintNote(
            "After Effects hands this effect no float frames: the picture was taken in 16 bits");
    if (report.clipped > 0)
        PrintNote(std::to_string(report.clipped) + " of " + std::to_string(report.samples) +
                  " colour samples lie outside 0..1 and were clipped by the effect");
    if (report.alphaDropped) PrintNote("pictures of this type hold no alpha: it was left out");
}

std::string FramesText(std::int64_t count) {
    return std::to_string(count) + (count == 1 ? " frame" : " frames");
}

/// "through Color Balance as BGRA8".
std::string WayText(const RenderReport& report, const Chain& chain) {
    std::string text = "through " + NamesOf(chain) + " as " + std::string(report.format->name);
    for (const ChainLink& link : chain)
        if (const auto direction = DirectionOf(link.values)) text += ", " + *direction;
    return text;
}

/// "picture.dpx", or "shot.####.dpx: 200 frames (150 kept)".
void PrintResult(const FrameName& out, const FramesReport& frames, const Chain& chain) {
    std::cout << out.Text() << ": ";
    if (out.HasPlace()) {
        std::cout << FramesText(frames.rendered + frames.kept);
        if (frames.kept > 0) std::cout << " (" << frames.kept << " kept)";
    } else if (frames.kept > 0) {
        std::cout << "kept";
    }
    if (frames.rendered > 0) {
        const RenderReport& report = frames.picture;
        std::cout << (out.HasPlace() ? ", " : "") << report.width << " x " << report.height << ", "
                  << NameOf(report.depth) << (report.depth >= Depth::Half ? "" : " bit") << ", "
                  << WayText(report, chain);
    }
    std::cout << '\n';
}

/// Frames that were not there make a status of their own, also where the work was done
/// as well as it could be.
int TellMissing(const std::vector<PlannedFrame>& plan) {
    std::vector<std::int64_t> absent;
    bool nearest = false;
    for (const PlannedFrame& frame : plan) {
        if (frame.fate == Fate::Rendered) continue;
        absent.push_back(frame.number);
        nearest |= frame.fate == Fate::Nearest;
    }
    if (absent.empty()) return 0;
    std::cerr << "zelfx: " << (absent.size() == 1 ? "frame " : "frames ") << RangeText(absent)
              << (absent.size() == 1 ? " was" : " were") << " missing and "
              << (nearest ? "made from the nearest" : "left out") << '\n';
    return static_cast<int>(ErrorKind::Missing);
}

FramesOptions FramesOptionsFrom(const Arguments& arguments) {
    FramesOptions options;
    options.render = OptionsFrom(arguments);
    options.quiet = arguments.Has("quiet");
    options.verbose = arguments.Has("verbose");
    options.log = arguments.Last("log").value_or("");
    const auto jobs = arguments.Last("jobs");
    options.jobs = jobs ? JobsFrom(*jobs) : JobsByDefault();
    return options;
}

/// What the outputs are called: as OUT says, or as the inputs when that is a folder.
FrameName OutputName(const std::string& to, const FrameName& in) {
    std::error_code ignored;
    if (std::filesystem::is_directory(to, ignored)) return in.In(to);
    if (!in.HasPlace()) return FrameName::Literal(to);
    return FrameName::Parse(to).value_or(FrameName::Literal(to));
}

void RequireType(const Arguments& arguments, const std::string& out) {
    if (Lower(std::filesystem::path(out).extension().string()) != ".dpx")
        Refuse(arguments, {"endian", "transfer"}, "DPX files", out);
    DepthFor(out, Depth::U8);
}

/// IN may be one file of a sequence where something else asks for several frames.
Sequence InputSequence(const std::string& in, bool ranged, const std::string& to) {
    std::error_code ignored;
    const bool folder = std::filesystem::is_directory(to, ignored);
    const bool several =
        ranged || (folder && HasFrameNumber(in)) || (FrameName::Parse(to) && !FrameName::Parse(in));
    return FindSequence(in, several);
}

int RunPictures(const Arguments& arguments, FramesOptions options) {
    const std::string to = *arguments.Last("OUT");
    Refuse(arguments, {"codec", "crf", "pix-fmt"}, "videos", to);
    const auto wanted = arguments.Last("frames");
    const FrameRange range = wanted ? FrameRange::Parse(*wanted) : FrameRange();
    const Missing missing = arguments.Is("missing", "skip")      ? Missing::Skip
                            : arguments.Is("missing", "nearest") ? Missing::Nearest
                                                                 : Missing::Error;
    std::error_code ignored;
    // An output that cannot be written is told before anything of the input.
    if (!std::filesystem::is_directory(to, ignored)) {
        if (to.ends_with('/'))
            throw Error(ErrorKind::Other,
                        "cannot write into '" + to + "': there is no such folder");
        RequireType(arguments, to);
    }

    const Sequence sequence = InputSequence(*arguments.Last("IN"), wanted.has_value(), to);
    const FrameName& in = sequence.name;
    const FrameName out = OutputName(to, in);
    const std::vector<PlannedFrame> plan = PlanFrames(sequence, range, missing);
    RequireType(arguments, out.Of(plan.front().number).string());
    RequireOutputs(plan, in, out);
    for (const char* option : {"manifest", "log"})
        if (const auto file = arguments.Last(option)) RequireBeside(*file, in, out);
    std::optional<ExpectedFiles> expected;
    if (const auto manifest = arguments.Last("verify")) expected.emplace(*manifest);
    const Chain chain = ChainFrom(arguments);

    const std::filesystem::path folder = out.Folder().empty() ? "." : out.Folder();
    if (in.HasPlace()) RemoveDeadTemporaryFiles(folder);
    options.total = static_cast<std::int64_t>(plan.size());
    options.jobs = static_cast<int>(std::min<std::int64_t>(options.jobs, options.total));
    const ExpectedFiles* asManifest = expected ? &*expected : nullptr;
    SequenceSource source(plan, in, out, options.render,
                          {.whole = arguments.Has("skip-existing"), .expected = asManifest});
    SequenceSink sink(options.render, asManifest);
    if (const auto manifest = arguments.Last("manifest")) sink.ListIn(*manifest, folder);
    const FramesReport report = RenderFrames(source, sink, chain, options);
    SavePresetIfAsked(arguments, chain);
    if (!options.quiet) {
        PrintNotes(report.picture);
        if (range.GoesBeyond(sequence.numbers.front(), sequence.numbers.back()))
            PrintNote("'" + in.Text() + "' has frames " + std::to_string(sequence.numbers.front()) +
                      " to " + std::to_string(sequence.numbers.back()) +
                      ": the range was clipped to them");
        PrintResult(out, report, chain);
    }
    for (const std::string& fault : sink.Faults()) std::cerr << "zelfx: " << fault << '\n';
    const int status = TellMissing(plan);
    return sink.Faults().empty() ? status : static_cast<int>(ErrorKind::Other);
}

int RunVideo(const Arguments& arguments, const FramesOptions& options) {
    const std::filesystem::path out = *arguments.Last("OUT");
    Refuse(arguments, {"depth", "endian", "transfer"}, "pictures", out);
    Refuse(arguments, {"frames", "missing", "skip-existing", "manifest", "verify"}, "sequences",
           out);
    const EncodingWishes wishes{arguments.Last("codec"), arguments.Last("crf"),
                                arguments.Last("pix-fmt")};
    const Chain chain = ChainFrom(arguments);
    RemoveDeadTemporaryFiles(out.has_parent_path() ? out.parent_path() : ".");
    const VideoReport report = RenderVideo(chain, *arguments.Last("IN"), out, wishes, options,
                                           [&](const std::string& text) {
                                               if (!options.quiet) PrintNote(text);
                                           });
    SavePresetIfAsked(arguments, chain);
    if (options.quiet) return 0;
    const RenderReport& picture = report.frames.picture;
    PrintNotes(picture);
    std::cout << out.string() << ": " << FramesText(report.frames.rendered) << ", " << picture.width
              << " x " << picture.height << ", " << report.rate << " a second, " << report.codec
              << ' ' << report.pixels << ", " << WayText(picture, chain) << '\n';
    return 0;
}

int Run(const Arguments& arguments) {
    const FramesOptions options = FramesOptionsFrom(arguments);
    ChooseCpuLevel(arguments);
    const std::string in = *arguments.Last("IN"), out = *arguments.Last("OUT");
    if (IsVideoName(out)) return RunVideo(arguments, options);
    if (IsVideoName(in))
        throw Error(ErrorKind::Usage, "'" + in + "' is a video, and '" + out +
                                          "' is none: its suffix must be " + VideoSuffixes());
    return RunPictures(arguments, options);
}

}  // namespace

Verb RenderVerb() {
    return {"render", "Take pictures through an effect, or a chain of them", kOptions,
            "Examples:\n"
            "  zelfx render in.dpx out.dpx -e color_balance -s highlights.red=12.5\n"
            "  zelfx render shot.####.dpx out/shot.####.dpx -p look.json --skip-existing\n"
            "Exit: 0 done, 1 failed, 2 usage, 3 input, 4 effect, 5 missing, 130 interrupted",
            Run};
}

}  // namespace zel
