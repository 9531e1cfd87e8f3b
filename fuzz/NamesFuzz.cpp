/// Names and numbers of frames as a person types them: ranges come out ascending, inside
/// what there is and as they were written; a name with a place finds its own numbers.

#include "cli/frames/FrameName.h"
#include "cli/frames/FrameRange.h"
#include "fuzz/Check.h"
#include "fuzz/Feed.h"
#include "headless/Error.h"

#include <algorithm>
#include <filesystem>

namespace {

using namespace zel;
using namespace zel::fuzz;

void CheckRange(Feed& feed) {
    const auto first = std::int64_t{feed.Any<std::int16_t>()};
    const auto last = first + feed.Any<std::uint16_t>() % 300;
    const std::string text = feed.Rest();
    const FrameRange range = FrameRange::Parse(text);
    const auto numbers = range.Within(first, last);
    Check(std::ranges::adjacent_find(numbers, std::ranges::greater_equal{}) == numbers.end(),
          "frames are not in ascending order");
    for (const std::int64_t n : numbers)
        if (n < first || n > last)
            Check(text.find(std::to_string(n < 0 ? -n : n)) != std::string::npos,
                  "a frame outside of the sequence that was not asked for by its number");
    Check(!RangeText(numbers).empty() || numbers.empty(), "frames without a text");
}

void CheckName(Feed& feed) {
    const std::int64_t number = feed.Any<std::int32_t>();
    const auto name = FrameName::Parse(feed.Rest());
    if (!name) return;
    Check(name->HasPlace(), "a pattern without a place");
    const std::filesystem::path file = name->Of(number);
    Check(file.parent_path() == name->Folder(), "a frame outside of its folder");
    Check(name->NumberOf(file.filename().string()) == number, "a frame that is not found again");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Feed feed(data, size);
    try {
        feed.Flag() ? CheckRange(feed) : CheckName(feed);
    } catch (const Error& e) {
        Check(e.Kind() == ErrorKind::Usage, "a text is no matter of the command line");
    }
    return 0;
}
