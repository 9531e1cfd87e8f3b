#pragma once

/// The one exception of the host side. Its text is one line that names the thing,
/// the value given and the value wanted; its kind is the program's exit status.

#include <stdexcept>
#include <string>

namespace zel {

enum class ErrorKind : int {
    Other = 1,    // output, memory, the machine
    Usage = 2,    // the command line
    Input = 3,    // a picture or preset that cannot be read
    Module = 4,   // no effect there, or the effect failed
    Missing = 5,  // a frame that is wanted is not there
};

class Error : public std::runtime_error {
public:
    Error(ErrorKind kind, const std::string& text) : std::runtime_error(text), m_kind(kind) {}

    ErrorKind Kind() const { return m_kind; }

private:
    ErrorKind m_kind;
};

}  // namespace zel
