#pragma once

/// Options that take one of a few words.

#include "cli/Options.h"

#include <initializer_list>
#include <string>

namespace zel {

/// Throws Error(Usage): "NAME cannot be 'x': it takes ...".
[[noreturn]] void Reject(const std::string& name, const std::string& given,
                         const std::string& wanted);

/// Throws Error(Usage): "--mode cannot be 'x': it takes side, split or diff".
[[noreturn]] void RejectOption(const std::string& option, const std::string& given,
                               const std::string& wanted);

/// Which of `words` the option was given, upper or lower case; 0 when it is absent.
/// Throws Error(Usage) for another word.
std::size_t Choice(const Arguments& arguments, const std::string& option,
                   std::initializer_list<const char*> words);

}  // namespace zel
