#include "cli/Choice.h"

#include "headless/Error.h"
#include "headless/Text.h"

#include <algorithm>
#include <vector>

namespace zel {

void Reject(const std::string& name, const std::string& given, const std::string& wanted) {
    throw Error(ErrorKind::Usage, name + " cannot be '" + given + "': it takes " + wanted);
}

void RejectOption(const std::string& option, const std::string& given, const std::string& wanted) {
    Reject("--" + option, given, wanted);
}

std::size_t Choice(const Arguments& arguments, const std::string& option,
                   std::initializer_list<const char*> words) {
    const auto given = arguments.Last(option);
    if (!given) return 0;
    const auto* found = std::ranges::find(words, Lower(*given));
    if (found == words.end())
        RejectOption(option, *given,
                     Alternatives(std::vector<std::string>(words.begin(), words.end())));
    return static_cast<std::size_t>(found - words.begin());
}

}  // namespace zel
