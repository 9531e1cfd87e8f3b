#include "cli/frames/Sequence.h"

#include "cli/picture/Picture.h"
#include "headless/Error.h"
#include "headless/Text.h"

#include <algorithm>
#include <map>
#include <tuple>

namespace zel {

namespace fs = std::filesystem;

namespace {

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

/// A file name around the last digits in front of its suffix.
struct NumberedName {
    std::string before, digits, behind;
};

std::optional<NumberedName> Numbered(const fs::path& file) {
    const std::string name = file.filename().string();
    std::size_t end = file.stem().string().size();
    while (end > 0 && !IsDigit(name[end - 1])) --end;
    std::size_t begin = end;
    while (begin > 0 && IsDigit(name[begin - 1])) --begin;
    if (begin == end || end - begin > kMostDigits) return std::nullopt;
    return NumberedName{name.substr(0, begin), name.substr(begin, end - begin), name.substr(end)};
}

template <class Fn>
void ForEachFile(const fs::path& folder, Fn fn) {
    std::error_code error;
    fs::directory_iterator files(folder.empty() ? fs::path(".") : folder, error);
    if (error)
        throw Error(ErrorKind::Input,
                    "cannot read the folder '" + folder.string() + "': " + error.message());
    for (const auto& entry : files) {
        const std::string name = entry.path().filename().string();
        if (!name.starts_with('.')) fn(name);
    }
}

/// All sequences of a folder. Numbers with leading zeros tell how wide those of their
/// sequence are; longer ones without belong to it as well, shorter ones to another.
std::vector<Sequence> SequencesIn(const fs::path& folder) {
    using Key = std::tuple<std::string, std::string, std::size_t>;  // before, behind, digits
    std::map<Key, std::vector<std::int64_t>> padded, plain;
    ForEachFile(folder, [&](const std::string& name) {
        const auto numbered = IsPictureName(name) ? Numbered(name) : std::nullopt;
        if (!numbered) return;
        const auto& [before, digits, behind] = *numbered;
        const bool zeros = digits.size() > 1 && digits[0] == '0';
        (zeros ? padded : plain)[{before, behind, digits.size()}].push_back(std::stoll(digits));
    });
    for (const auto& [key, numbers] : plain) {
        const auto& [before, behind, digits] = key;
        std::size_t width = digits;
        while (width > 1 && !padded.contains({before, behind, width})) --width;
        auto& all = padded[{before, behind, width}];
        all.insert(all.end(), numbers.begin(), numbers.end());
    }
    std::vector<Sequence> sequences;
    for (auto& [key, numbers] : padded) {
        const auto& [before, behind, digits] = key;
        std::ranges::sort(numbers);
        sequences.push_back(
            {FrameName(folder, before, static_cast<int>(digits), behind), std::move(numbers)});
    }
    return sequences;
}

Sequence OnlySequenceIn(const fs::path& folder) {
    std::vector<Sequence> found = SequencesIn(folder);
    // A number in the name of a single picture makes no sequence beside a real one.
    if (std::ranges::any_of(found, [](const Sequence& s) { return s.numbers.size() > 1; }))
        std::erase_if(found, [](const Sequence& s) { return s.numbers.size() == 1; });
    if (found.empty())
        throw Error(ErrorKind::Input,
                    "there is no sequence of pictures in the folder '" + folder.string() + "'");
    if (found.size() == 1) return std::move(found.front());
    std::vector<std::string> names;
    for (const Sequence& s : found) names.push_back("'" + s.name.Text() + "'");
    throw Error(ErrorKind::Usage, "there are " + std::to_string(found.size()) +
                                      " sequences in the folder '" + folder.string() + "': name " +
                                      Alternatives(names));
}

Sequence SequenceOfFile(const fs::path& file) {
    const std::string name = file.filename().string();
    if (!Numbered(file))
        throw Error(ErrorKind::Usage, "'" + file.string() + "' has no frame number in its name, " +
                                          "which --frames needs");
    for (Sequence& s : SequencesIn(file.parent_path()))
        if (s.name.NumberOf(name)) return std::move(s);
    throw Error(ErrorKind::Input, "'" + file.string() + "' is no picture of a sequence");
}

Sequence SequenceOfPattern(const FrameName& name) {
    Sequence sequence{name, {}};
    ForEachFile(name.Folder(), [&](const std::string& file) {
        if (const auto number = name.NumberOf(file)) sequence.numbers.push_back(*number);
    });
    if (sequence.numbers.empty())
        throw Error(ErrorKind::Input, "there is no file of the sequence '" + name.Text() + "'");
    std::ranges::sort(sequence.numbers);
    return sequence;
}

std::int64_t NearestTo(std::int64_t number, const std::vector<std::int64_t>& numbers) {
    const auto above = std::ranges::lower_bound(numbers, number);
    if (above == numbers.begin()) return *above;
    const std::int64_t below = *(above - 1);
    return above == numbers.end() || number - below <= *above - number ? below : *above;
}

}  // namespace

bool HasFrameNumber(const fs::path& file) { return Numbered(file).has_value(); }

Sequence FindSequence(const fs::path& in, bool several) {
    std::error_code ignored;
    if (fs::is_directory(in, ignored)) return OnlySequenceIn(in);
    const bool exists = fs::exists(in, ignored);
    if (exists && !several) return {FrameName::Literal(in), {1}};
    if (const auto pattern = FrameName::Parse(in)) return SequenceOfPattern(*pattern);
    if (exists) return SequenceOfFile(in);
    throw Error(ErrorKind::Input, "cannot read '" + in.string() + "': there is no such file");
}

std::vector<PlannedFrame> PlanFrames(const Sequence& sequence, const FrameRange& wanted,
                                     Missing missing) {
    const std::int64_t first = sequence.numbers.front(), last = sequence.numbers.back();
    std::vector<PlannedFrame> plan;
    std::vector<std::int64_t> absent;
    for (const std::int64_t number : wanted.Within(first, last)) {
        if (std::ranges::binary_search(sequence.numbers, number)) {
            plan.push_back({number, number, Fate::Rendered});
        } else {
            absent.push_back(number);
            if (missing == Missing::Nearest)
                plan.push_back({number, NearestTo(number, sequence.numbers), Fate::Nearest});
            else
                plan.push_back({number, number, Fate::Missing});
        }
    }
    const std::string of = " of '" + sequence.name.Text() + "'";
    if (plan.empty())
        throw Error(ErrorKind::Missing, "none of the wanted frames is there: the files" + of +
                                            " go from " + std::to_string(first) + " to " +
                                            std::to_string(last));
    if (missing == Missing::Error && !absent.empty())
        throw Error(ErrorKind::Missing, (absent.size() == 1 ? "frame " : "frames ") +
                                            RangeText(absent) + of +
                                            (absent.size() == 1 ? " is" : " are") +
                                            " missing: see --missing, or leave out with --frames");
    return plan;
}

}  // namespace zel
